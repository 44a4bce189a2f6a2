#include "stl/StlFatal.h"

#include <cstdio>
#include <cstdlib>

void stlFatal(const std::string &line)
{
    std::fputs(line.c_str(), stderr);
    std::exit(EXIT_FAILURE);
}

void stlFatalWithSystemError(const std::string &text)
{
    std::perror(text.c_str());
    std::exit(EXIT_FAILURE);
}
