// A transformation's options, read from the last bytes of a file.
#pragma once

#include "tests/support/PlainTwin.h"

#include <string_view>

struct RunOptions {
    explicit RunOptions(std::string_view bytes);

    plain::Placement placement; // without rotations
    plain::Request request;
};
