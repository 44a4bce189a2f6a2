// Reads the log of a run back: the bytes of RunLogText.
#pragma once

#include "cli/RunValues.h"

#include <string>
#include <string_view>

// The values of the run that wrote these bytes, with line ends of either kind. Nothing is guessed: written
// again, the values give the same bytes. Throws Failure in the name of the log if it is no run log, or tells
// of a value that no run can be given: infinite, undefined, a negative length.
LoggedRun readRunLog(std::string_view bytes, const std::string &log);
