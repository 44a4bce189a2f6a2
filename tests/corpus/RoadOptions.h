// A transformation's options, read from the last bytes of a file.
#pragma once

#include "tests/support/PlainRoad.h"

#include <string_view>

struct RoadOptions {
    explicit RoadOptions(std::string_view bytes);

    plain::Placement placement; // without rotations
    plain::Request request;
};
