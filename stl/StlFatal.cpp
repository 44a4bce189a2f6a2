#include "stl/StlFatal.h"

#include "stl/StlMessages.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

void stlFatal(const std::string &line)
{
    if (stlMessageHandlers.fatal != nullptr)
        stlMessageHandlers.fatal(line);
    else
        std::fputs(line.c_str(), stderr);
    std::exit(EXIT_FAILURE);
}

void stlFatalWithSystemError(const std::string &text) { stlFatal(text + ": " + std::strerror(errno) + "\n"); }
