// A stream on a device with a bad spot.
#pragma once

#include "stl/Stream.h"

#include <string_view>

// Holds these bytes, which can be read and sought in; reading what lies behind them fails. Throws
// std::system_error if there is no such stream to be had. Uses fopencookie, so it needs glibc or a library
// like it.
Stream streamFailingBehind(std::string_view bytes);
