#include "cli/ShellTexts.h"

#include "cli/OptionTable.h"

#include <functional>
#include <stdexcept>

namespace {

constexpr const char *infoBrief = "tell what a mesh is";

void replaceOnce(std::string &text, const std::string &old, const std::string &replacement)
{
    const std::size_t at = text.find(old);
    if (at == std::string::npos)
        throw std::runtime_error("no " + old + " in the template");
    text.replace(at, old.size(), replacement);
}

std::string withEscapedDashes(const std::string &name)
{
    std::string text;
    for (const char character : name)
        text += character == '-' ? std::string("\\-") : std::string(1, character);
    return text;
}

// Calls back with each option under each of its names.
void forEachName(const std::function<void(const CliOption &option, const std::string &name, int axis)> &call)
{
    for (const CliOption &option : cliOptions()) {
        const std::vector<std::string> names = namesOf(option);
        for (std::size_t i = 0; i < names.size(); ++i)
            call(option, names[i], static_cast<int>(i));
    }
}

// As words: "y z".
std::string axisWords(int axis)
{
    std::string words;
    for (int other = 0; other < axisCount; ++other) {
        if (other != axis)
            words += (words.empty() ? "" : " ") + std::string(1, axisLetters[other]);
    }
    return words;
}

std::string manualTag(const CliOption &option)
{
    std::string tag = ".TP\n.B ";
    if (option.shortName != '\0')
        tag += std::string("\\-") + option.shortName + "\\fR, \\fB";
    const char *separator = "";
    for (const std::string &name : namesOf(option)) {
        tag += separator + withEscapedDashes("--" + name);
        separator = "\\fR, \\fB";
    }
    if (option.kind != ValueKind::none)
        tag += std::string(" \\fI") + option.valueName;
    return tag + "\n";
}

// What bash does after an option: a line of a case.
std::string bashCase(const CliOption &option, const std::string &name, int axis)
{
    const std::string pattern = "    --" + name + ")\n";
    switch (option.kind) {
    case ValueKind::number:
        return pattern + "        compopt +o default\n        return\n        ;;\n";
    case ValueKind::axis:
        return pattern + "        mapfile -t COMPREPLY < <(compgen -W '" + axisWords(axis) +
               "' -- \"$current\")\n        return\n        ;;\n";
    case ValueKind::folder:
        return pattern + "        compopt +o default -o dirnames\n        return\n        ;;\n";
    case ValueKind::file:
        return pattern + "        return\n        ;;\n";
    default:
        return {};
    }
}

std::string zshValue(const CliOption &option, int axis)
{
    const std::string name = std::string(":") + option.valueName;
    switch (option.kind) {
    case ValueKind::number:
        return name + ": ";
    case ValueKind::axis:
        return name + ":(" + axisWords(axis) + ")";
    case ValueKind::folder:
        return name + ":_files -/";
    case ValueKind::file:
        return name + ":_files";
    default:
        return {};
    }
}

std::string fishValue(const CliOption &option, int axis)
{
    switch (option.kind) {
    case ValueKind::number:
        return " -x";
    case ValueKind::axis:
        return " -x -a '" + axisWords(axis) + "'";
    case ValueKind::folder:
        return " -x -a '(__fish_complete_directories)'";
    case ValueKind::file:
        return " -r -F";
    default:
        return {};
    }
}

} // namespace

std::string manualOptions()
{
    std::string text;
    for (const CliOption &option : cliOptions())
        text += manualTag(option) + option.manual + "\n";
    return text;
}

std::string manualPage(std::string page)
{
    replaceOnce(page, "@VERSION@", MESHVANE_VERSION);
    replaceOnce(page, "@OPTIONS@\n", manualOptions());
    return page;
}

std::string bashCompletion()
{
    std::string cases;
    std::string words;
    forEachName([&cases, &words](const CliOption &option, const std::string &name, int axis) {
        cases += bashCase(option, name, axis);
        words += (words.empty() ? "--" : " --") + name;
        if (option.shortName != '\0')
            words += std::string(" -") + option.shortName;
    });
    return "# Completion of meshvane-cli in bash. Made from its table of options.\n"
           "_meshvane_cli() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}\n"
           "    COMPREPLY=()\n"
           "    case $previous in\n" +
           cases +
           "    esac\n"
           "    if [[ $current == -* ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W '" +
           words +
           "' -- \"$current\")\n"
           "    elif ((COMP_CWORD == 1)) && [[ -n $current && info == \"$current\"* ]]; then\n"
           "        mapfile -t COMPREPLY < <(compgen -W info -f -- \"$current\")\n"
           "    fi\n"
           "}\n"
           "complete -o default -F _meshvane_cli meshvane-cli\n";
}

std::string zshCompletion()
{
    std::string text = "#compdef meshvane-cli\n"
                       "# Completion of meshvane-cli in zsh. Made from its table of options.\n"
                       "_arguments -s \\\n";
    forEachName([&text](const CliOption &option, const std::string &name, int axis) {
        const std::string brief = std::string("[") + option.brief + "]";
        if (option.shortName != '\0') {
            const std::string both = std::string("-") + option.shortName + ",--" + name;
            text += "    {" + both + "}'" + brief + "' \\\n";
        } else {
            text += "    '--" + name + (option.kind == ValueKind::none ? "" : "=") + brief +
                    zshValue(option, axis) + "' \\\n";
        }
    });
    return text + "    '1: :_alternative \"commands:command:((info\\:\\\"" + infoBrief +
           "\\\"))\" \"files:file:_files\"' \\\n"
           "    '*:file:_files'\n";
}

std::string fishCompletion()
{
    std::string text = "# Completion of meshvane-cli in fish. Made from its table of options.\n";
    forEachName([&text](const CliOption &option, const std::string &name, int axis) {
        text += "complete -c meshvane-cli -l " + name;
        if (option.shortName != '\0')
            text += std::string(" -s ") + option.shortName;
        text += fishValue(option, axis) + " -d '" + option.brief + "'\n";
    });
    return text + "complete -c meshvane-cli -n __fish_is_first_arg -a info -d '" + infoBrief + "'\n";
}
