// How many cases a test takes: few by default, more if an environment variable says so.
#pragma once

#include <cstdlib>

inline int amount(const char *variable, int ordinary)
{
    const char *value = std::getenv(variable);
    return value != nullptr ? std::atoi(value) : ordinary;
}
