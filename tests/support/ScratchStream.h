// A stream on a file that nobody else sees.
#pragma once

#include "stl/Stream.h"

// Empty, open for reading and writing bytes; nothing of it stays when it is closed. Throws std::system_error
// if the system refuses.
Stream scratchStream();
