// meshvane-cli info FILE...
#pragma once

#include "cli/CommandLine.h"

// Tells what each mesh is. A file that cannot be read is told of on standard error, and the others are still
// read; the exit status is 1 then.
int infoCommand(const InfoRequest &request);
