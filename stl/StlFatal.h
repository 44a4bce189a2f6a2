// Ends the process, for input that cannot be read and a temporary file that cannot be created. Nothing else
// calls exit.
#pragma once

#include <string>

// Both print one line on standard error, or hand it to the handler of StlMessages.h, and exit with status 1.
[[noreturn]] void stlFatal(const std::string &line); // the text as it stands, line feed included
[[noreturn]] void stlFatalWithSystemError(const std::string &text); // text, ": " and the words for errno
