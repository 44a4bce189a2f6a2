// Whole files and streams as strings of bytes.
#pragma once

#include "stl/Stream.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

// All of these throw std::system_error if the system refuses.
std::string readBytes(const std::string &path);
void writeBytes(const std::string &path, std::string_view bytes);
std::string readText(const std::string &path); // line feeds instead of the system's line ends
Stream openStream(const std::string &path, const char *mode);

// A file with these bytes, open at its start for reading and writing. Nothing of it stays when it is closed.
Stream streamOf(std::string_view bytes);

// One before each line feed.
std::string withCarriageReturns(std::string_view text);

// All bytes of a stream, whatever its position, which is at the end afterwards.
std::string bytesOf(const Stream &stream);
