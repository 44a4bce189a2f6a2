// Measures processor time and memory.
#pragma once

#include <functional>
#include <string>
#include <vector>

// User and system seconds of this process so far.
double cpuSeconds();

// User and system seconds of one call.
double cpuSecondsOf(const std::function<void()> &work);

// What the work takes in a process of its own, which is forked for it.
struct Usage {
    double cpuSeconds = 0.0;
    double systemSeconds = 0.0; // the part of them spent in the kernel
    double peakBytes = 0.0;     // resident memory
    bool succeeded = false;     // the process ended with status 0
};
Usage usageOf(const std::function<void()> &work);

double userSeconds(const Usage &usage);

// "user + system" per million facets.
std::string secondsPerMillion(const Usage &usage, double millions);

// One of several ways to do a job.
struct Contestant {
    std::function<void()> work;
    int step = 1; // 1: takes part in each round, 2: in every second one
    Usage least;  // of the round that took the least processor time
};

// Lets them work in turn, each time in a process of its own, and fills in `least`. Ends the program if one of
// them fails. Needs at least one round.
void measureInTurn(std::vector<Contestant> &contestants, int rounds);
