// From the arguments of the process to what the command is to do.
#pragma once

#include "cli/RunValues.h"

#include <string>
#include <vector>

enum class Report { none, line, json };

struct RunRequest {
    RunValues values;
    std::string repeatedLog; // empty: none, as below
    std::string input;       // names are the bytes that were given
    std::string output;
    std::string log;
    std::string temporaryFolder;
    bool keepTemporary = false;
    bool allowDegenerate = false;
    bool force = false;
    bool quiet = false;
    Report report = Report::none;
};

struct InfoRequest {
    std::vector<std::string> files;
    bool json = false;
};

struct CommandLine {
    enum class Kind { run, info, help, version };
    Kind kind = Kind::run;
    RunRequest run;   // for a run
    InfoRequest info; // for info
};

// Takes the arguments without the name of the program. Of an option that is given twice the last value
// counts, but each must be a good one. Throws WrongUse with the option, the value and what would be right.
// Opens no file. Ends the process with status 1 if memory is missing.
CommandLine readCommandLine(const std::vector<std::string> &arguments);
