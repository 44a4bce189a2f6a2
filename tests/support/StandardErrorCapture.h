// What this process writes to standard error.
#pragma once

#include "stl/Stream.h"

#include <string>

// Collects it while the object lives.
class StandardErrorCapture {
public:
    StandardErrorCapture();
    ~StandardErrorCapture();
    StandardErrorCapture(const StandardErrorCapture &) = delete;
    StandardErrorCapture &operator=(const StandardErrorCapture &) = delete;

    std::string text() const;

private:
    int m_before = -1;
    Stream m_collector;
};
