// The lines that this library has for the user: warnings, and the last words of a process.
#pragma once

#include <string>

// Each is called with whole lines, line feeds included. A command that puts a file's name in front of each
// line sets its own; null means standard error.
struct StlMessageHandlers {
    void (*warning)(const std::string &lines) = nullptr;
    void (*fatal)(const std::string &lines) = nullptr; // may throw; the process ends if it returns
};
inline StlMessageHandlers stlMessageHandlers;

void stlWarn(const std::string &lines);
void stlWarnWithSystemError(const char *text); // text, ": " and the words for errno
