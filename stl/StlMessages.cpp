#include "stl/StlMessages.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

void stlWarn(const std::string &lines)
{
    if (stlMessageHandlers.warning != nullptr)
        stlMessageHandlers.warning(lines);
    else
        std::fputs(lines.c_str(), stderr);
}

void stlWarnWithSystemError(const char *text)
{
    if (stlMessageHandlers.warning != nullptr)
        stlWarn(std::string(text) + ": " + std::strerror(errno) + "\n");
    else
        std::perror(text); // without a string: memory may be what is missing
}
