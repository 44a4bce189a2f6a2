// A stream on a device with a bad spot.
#pragma once

#include "stl/Stream.h"

#include <string_view>

// Holds these bytes; reading past them fails with EIO. Throws std::system_error if there is no such stream.
// Uses fopencookie, so it needs glibc or a library like it.
Stream streamFailingAfter(std::string_view bytes);

// The same without positions, as a pipe.
Stream pipeFailingAfter(std::string_view bytes);
