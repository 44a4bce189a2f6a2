// meshvane-cli INPUT OUTPUT
#pragma once

#include "cli/CommandLine.h"

// Does one run through RunPipeline in a private folder, and gives the output its name when it is whole.
// Returns the exit status; a run that has failed has said why on standard error. Throws Failure if it cannot
// begin or end. Input that cannot be read ends the process, as it does in the window. Changes the current
// directory.
int runCommand(const RunRequest &request);
