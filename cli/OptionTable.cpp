#include "cli/OptionTable.h"

#include <cstring>
#include <stdexcept>

const std::vector<CliOption> &cliOptions()
{
    static const std::vector<CliOption> options{
        {OptionId::scale, "?-scale", '\0', ValueKind::number, "N", UsedBy::run, "multiply by N",
         "Multiply by\n.IR N ,\nwhich must not be 0.\nA negative number mirrors the mesh.\nThe default is "
         "1."},
        {OptionId::offsetBefore, "?-offset-before", '\0', ValueKind::number, "N", UsedBy::run,
         "add N before scaling", "Add\n.I N\nbefore scaling.\nThe default is 0."},
        {OptionId::offsetAfter, "?-offset-after", '\0', ValueKind::number, "N", UsedBy::run,
         "add N after scaling", "Add\n.I N\nafter scaling.\nThe default is 0."},
        {OptionId::length, "?-length", '\0', ValueKind::number, "N", UsedBy::run, "scale to a length of N",
         "Scale so that the mesh is\n.I N\nlong on this axis, as measured before the rotations.\n"
         "A length of 0 makes it flat."},
        {OptionId::lengthOf, "?-length-of", '\0', ValueKind::axis, "AXIS", UsedBy::run,
         "scale to the length of AXIS in INPUT",
         "Scale this axis to the length that\n.I AXIS\n(one of the other two letters) has in\n.IR INPUT ."},
        {OptionId::originToZero, "?-origin-to-zero", '\0', ValueKind::none, "", UsedBy::run,
         "shift the mesh so that it begins at 0",
         "Shift the mesh before scaling, so that its smallest coordinate on this axis is 0.\n"
         "The offset after scaling still applies."},
        {OptionId::rotate, "rotate-?", '\0', ValueKind::number, "DEGREES", UsedBy::run,
         "turn about the axis, after all else",
         "Turn the mesh and its normals about this axis through the origin, after scaling and shifting.\n"
         "Rotations are done in the order x, y, z.\n"
         "A positive angle turns y towards z about x, x towards z about y, and x towards y about z."},
        {OptionId::repeat, "repeat", '\0', ValueKind::file, "LOG", UsedBy::run,
         "take the values of a run log; options beside it win",
         "Take the values of a run log,\n.I meshvane.log\nor what\n.B \\-\\-log\nhas kept.\n"
         "An option beside it replaces what the log says of the same thing: size, place or rotation of an "
         "axis.\n"
         "What the log does not tell is not guessed; see\n.BR \"REPEATING A RUN\" ."},
        {OptionId::log, "log", '\0', ValueKind::file, "FILE", UsedBy::run, "keep the run log",
         "Keep the log of the run under this name.\nIt is the log that the window writes."},
        {OptionId::keepTemporary, "keep-temporary", '\0', ValueKind::none, "", UsedBy::run,
         "keep the input as text, in OUTPUT._tmp_stl_",
         "Keep the input as ASCII STL, from which the output is made, in\n.IR OUTPUT ._tmp_stl_ .\n"
         "It is kept after a failed run, too, if it is whole."},
        {OptionId::temporaryFolder, "temporary-folder", '\0', ValueKind::folder, "DIR", UsedBy::run,
         "work there, not beside OUTPUT",
         "Make the private folder of the run there, and not beside\n.I OUTPUT\nor in\n.BR $TMPDIR ."},
        {OptionId::allowDegenerate, "allow-degenerate", '\0', ValueKind::none, "", UsedBy::run,
         "allow a length for a flat axis, as the window does",
         "Run even if the mesh has no extent on an axis that a length is wanted for.\n"
         "The scale is then infinite or undefined, and so are the numbers of the output, as with the "
         "window."},
        {OptionId::force, "force", 'f', ValueKind::none, "", UsedBy::run, "replace files that exist",
         "Replace files that exist.\nWithout it a run that would replace one is refused."},
        {OptionId::summary, "summary", '\0', ValueKind::none, "", UsedBy::run, "sum up the run",
         "Print one line about the run on standard output: facets, lines, extents before and after, "
         "seconds."},
        {OptionId::json, "json", '\0', ValueKind::none, "", UsedBy::both, "print that, or info, as JSON",
         "Print the summary, or what\n.B info\ntells, as JSON."},
        {OptionId::quiet, "quiet", 'q', ValueKind::none, "", UsedBy::run, "show no progress",
         "Show no progress bar.\nThere is none either where standard error is no terminal,\n"
         "and for runs that take less than a second."},
        {OptionId::help, "help", 'h', ValueKind::none, "", UsedBy::both, "print this help",
         "Print a page of help."},
        {OptionId::version, "version", '\0', ValueKind::none, "", UsedBy::both, "print the version",
         "Print the version."},
    };
    return options;
}

const CliOption &cliOption(OptionId id)
{
    for (const CliOption &option : cliOptions()) {
        if (option.id == id)
            return option;
    }
    throw std::logic_error("an option without a row");
}

bool isPerAxis(const CliOption &option) { return std::strchr(option.name, '?') != nullptr; }

std::vector<std::string> namesOf(const CliOption &option)
{
    if (!isPerAxis(option))
        return {option.name};
    return {nameOf(option, 0), nameOf(option, 1), nameOf(option, 2)};
}

std::string nameOf(const CliOption &option, int axis)
{
    std::string name = option.name;
    const std::size_t at = name.find('?');
    if (at != std::string::npos)
        name[at] = axisLetters[axis];
    return name;
}

std::string otherAxes(int axis)
{
    std::string others;
    for (int other = 0; other < axisCount; ++other) {
        if (other != axis)
            others += (others.empty() ? "" : " or ") + std::string(1, axisLetters[other]);
    }
    return others;
}
