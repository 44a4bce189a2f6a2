#include "cli/HelpText.h"

#include <algorithm>

namespace {

constexpr std::size_t briefColumn = 26;

std::string spelled(const CliOption &option)
{
    std::string text = option.shortName != '\0' ? std::string("-") + option.shortName + ", --" : "--";
    text += nameOf(option);
    if (option.kind != ValueKind::none)
        text += std::string(" ") + option.valueName;
    return text;
}

// One option and what it does, or several with that of each.
std::string rowText(const std::vector<OptionId> &ids)
{
    std::string names;
    std::string briefs;
    for (const OptionId id : ids) {
        names += (names.empty() ? "  " : ", ") + spelled(cliOption(id));
        briefs += (briefs.empty() ? "" : "; ") + std::string(cliOption(id).brief);
    }
    names.resize(std::max(names.size() + 2, briefColumn), ' ');
    return names + briefs + "\n";
}

} // namespace

const std::vector<std::vector<OptionId>> &helpRows()
{
    static const std::vector<std::vector<OptionId>> rows{
        {OptionId::scale},
        {OptionId::offsetBefore},
        {OptionId::offsetAfter},
        {OptionId::length},
        {OptionId::lengthOf},
        {OptionId::originToZero},
        {OptionId::rotate},
        {OptionId::repeat},
        {OptionId::log},
        {OptionId::keepTemporary},
        {OptionId::temporaryFolder},
        {OptionId::allowDegenerate},
        {OptionId::force},
        {OptionId::quiet},
        {OptionId::summary, OptionId::json},
        {OptionId::help, OptionId::version},
    };
    return rows;
}

const std::vector<std::string> &helpExamples()
{
    static const std::vector<std::string> examples{
        "meshvane-cli --x-scale 25.4 --y-scale 25.4 --z-scale 25.4 inch.stl mm.stl",
        "meshvane-cli --z-length 100 --z-origin-to-zero part.stl placed.stl",
        "meshvane-cli --repeat meshvane.log --force part.stl again.stl",
    };
    return examples;
}

std::string helpText()
{
    std::string text = "Usage: meshvane-cli [options] INPUT OUTPUT   scale, shift and turn an STL mesh\n"
                       "       meshvane-cli info [--json] FILE...    tell what a mesh is\n"
                       "For x, and likewise for y and z:\n";
    for (const std::vector<OptionId> &row : helpRows()) {
        if (row.front() == OptionId::repeat)
            text += "For the run:\n";
        text += rowText(row);
    }
    for (const std::string &example : helpExamples())
        text += (&example == &helpExamples().front() ? "Try: " : "     ") + example + "\n";
    return text;
}

std::string versionText() { return std::string("meshvane-cli ") + MESHVANE_VERSION + "\n"; }
