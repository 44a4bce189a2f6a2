// Measures processor time and memory.
#pragma once

#include <functional>

// User and system seconds of this process so far.
double cpuSeconds();

// User and system seconds of one call.
double cpuSecondsOf(const std::function<void()> &work);

// What the work takes in a process of its own, which is forked for it.
struct Usage {
    double cpuSeconds = 0.0;
    double systemSeconds = 0.0; // the part of them spent in the kernel
    double peakBytes = 0.0;     // resident memory
    bool succeeded = false;
};
Usage usageOf(const std::function<void()> &work);
