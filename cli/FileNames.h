// Names of files as the user gives them, and as the library's paths. On POSIX a name is any bytes and stays
// what it is; on Windows it is UTF-8, but a path made of it directly would take each byte for a letter.
#pragma once

#include <filesystem>
#include <string>

inline std::filesystem::path pathOf(const std::string &name) { return std::filesystem::u8path(name); }
inline std::string fileName(const std::filesystem::path &path) { return path.u8string(); }
