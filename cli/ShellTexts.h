// What is made from the table of options for the manual page and the shells, when the program is built.
#pragma once

#include <string>

// The list of options in the source language of manual pages.
std::string manualOptions();

// The whole page from its template: "@OPTIONS@" and "@VERSION@" are replaced.
std::string manualPage(std::string page);

std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();
