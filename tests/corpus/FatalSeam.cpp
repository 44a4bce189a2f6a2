// Stands in for stl/StlFatal.cpp, which the linker then leaves in its library: the end of the process becomes
// an exception that carries the text for standard error.
#include "stl/StlFatal.h"
#include "tests/support/PlainRoad.h"

#include <cerrno>
#include <cstring>

void stlFatal(const std::string &line) { throw plain::FatalEnd(line); }

void stlFatalWithSystemError(const std::string &text)
{
    throw plain::FatalEnd(text + ": " + std::strerror(errno) + "\n");
}
