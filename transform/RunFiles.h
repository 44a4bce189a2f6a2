// The program's own two files, relative to the current directory.
#pragma once

constexpr const char *temporaryFileName = "_tmp_stl_";
constexpr const char *logFileName = "meshvane.log";
