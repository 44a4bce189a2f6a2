// The real meshvane-cli in a process of its own.
#pragma once

#include "tests/cli/FolderEntries.h"

#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

struct CommandResult {
    bool exited = false; // false: ended by a signal
    int status = -1;     // or the signal's number
    std::string standardOutput;
    std::string standardError;
};

// The variables are added to the environment, in which TMPDIR is never set otherwise.
using Variables = std::vector<std::pair<std::string, std::string>>;

CommandResult runMeshvane(const std::vector<std::string> &arguments, const Variables &variables = {});

// Starts it and returns at once; what it prints is lost.
pid_t startMeshvane(const std::vector<std::string> &arguments);

// Waits for its end. Throws std::system_error if there is no such process.
CommandResult endOf(pid_t process);
