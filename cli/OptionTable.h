// Every option of meshvane-cli, once. The reader of the command line, the help, the manual page and the
// completions of the shells are all made from this table.
#pragma once

#include <string>
#include <vector>

enum class OptionId {
    scale,
    offsetBefore,
    offsetAfter,
    length,
    lengthOf,
    originToZero,
    rotate,
    repeat,
    log,
    keepTemporary,
    temporaryFolder,
    allowDegenerate,
    force,
    summary,
    json,
    quiet,
    help,
    version
};

enum class ValueKind { none, number, axis, file, folder };

enum class UsedBy { run, info, both };

struct CliOption {
    OptionId id;
    const char *name; // without dashes; a "?" stands for the letter of an axis
    char shortName;   // '\0': none
    ValueKind kind;
    const char *valueName; // as the help shows it
    UsedBy usedBy;
    const char *brief;  // for the help and the completions, as a command
    const char *manual; // for the manual page: whole sentences, in the source language of manual pages
};

const std::vector<CliOption> &cliOptions();
const CliOption &cliOption(OptionId id);

constexpr int axisCount = 3;
constexpr char axisLetters[axisCount + 1] = "xyz";

bool isPerAxis(const CliOption &option);

// The names of an option, without dashes: three for one that belongs to an axis, else one.
std::vector<std::string> namesOf(const CliOption &option);

// The name for one axis, 0 to 2; options without an axis ignore it.
std::string nameOf(const CliOption &option, int axis = 0);

// The axes that the option's axis can take the length of, as "y or z".
std::string otherAxes(int axis);
