// Replaces stl/StlFatal.cpp, which the linker then does not take from its library: instead of ending the
// process it throws an exception with the text for standard error.
#include "stl/StlFatal.h"
#include "tests/support/PlainTwin.h"

#include <cerrno>
#include <cstring>

void stlFatal(const std::string &line) { throw plain::FatalEnd(line); }

void stlFatalWithSystemError(const std::string &text)
{
    throw plain::FatalEnd(text + ": " + std::strerror(errno) + "\n");
}
