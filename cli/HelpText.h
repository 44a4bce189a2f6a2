// What --help and --version print.
#pragma once

#include "cli/OptionTable.h"

#include <string>
#include <vector>

// Fits a screen of 24 lines of 80 characters, with a line left for the prompt.
std::string helpText();
std::string versionText();

// The options in the order and in the rows of the help; each is in one of them.
const std::vector<std::vector<OptionId>> &helpRows();

// The command lines of the help, as one types them.
const std::vector<std::string> &helpExamples();
