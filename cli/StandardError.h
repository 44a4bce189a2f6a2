// What the command says on standard error, each line in the form "meshvane-cli: FILE: message".
#pragma once

#include <string>

// A line feed or an escape sequence in a name would spoil the line: control characters become "?".
std::string visibleName(const std::string &file);

// Each line of the message gets its prefix; empty lines are left out.
void complain(const std::string &message);
void complainOf(const std::string &file, const std::string &message);

// Takes no memory itself.
void complainOfMissingMemory();
