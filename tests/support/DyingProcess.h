// What a piece of code does to the process that runs it: exit status and standard error.
#pragma once

#include "tests/support/TextFile.h"

#include <functional>
#include <string>

struct ProcessOutcome {
    bool exited = false; // false: ended by a signal
    int status = -1;
    std::string standardError;
};

// Runs the deed in a child process of its own, which shares the current directory but neither memory nor
// streams. If the deed returns or throws, the child ends with these, without cleaning up.
constexpr int survivedStatus = 77;
constexpr int thrownStatus = 78;
ProcessOutcome outcomeOf(const std::function<void()> &deed);

// Collects what is written to standard error while it lives.
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
