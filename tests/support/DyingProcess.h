// How code that may end its process ends it: exit status and standard error.
#pragma once

#include <functional>
#include <string>

struct ProcessOutcome {
    bool exited = false; // false: ended by a signal
    int status = -1;
    std::string standardError;
};

// Runs the action in a child process, which starts in the same current directory but shares neither memory
// nor streams. If the action returns or throws, the child ends with one of these, without cleaning up.
constexpr int survivedStatus = 77;
constexpr int thrownStatus = 78;
ProcessOutcome outcomeOf(const std::function<void()> &action);
