// How much processor time and memory things take.
#pragma once

#include <functional>

// User and system seconds of this process so far.
double cpuSeconds();

// Of one call.
double cpuSecondsOf(const std::function<void()> &work);

// What a process of its own needs for some work: it is forked for it.
struct Usage {
    double cpuSeconds = 0.0;
    double systemSeconds = 0.0; // of them spent in the system
    double peakBytes = 0.0;     // of resident memory
    bool succeeded = false;
};
Usage usageOf(const std::function<void()> &work);
