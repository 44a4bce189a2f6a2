// The whole command.
#pragma once

#include <string>
#include <vector>

// Wrong use of the command line; failures have EXIT_FAILURE.
constexpr int wrongUseStatus = 2;

// Takes the arguments without the name of the program, does what they say and returns the exit status.
// Everything that went wrong is on standard error then.
int meshvaneCommand(const std::vector<std::string> &arguments);
