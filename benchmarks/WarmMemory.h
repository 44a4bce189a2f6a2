// Free memory that is available at once, for measuring large runs on a virtual machine.
#pragma once

#include <sys/types.h>

// A virtual machine may return free memory to its host, which must supply it again, page fault by page fault,
// when a program next writes to it. That costs seven times as much as reusing memory the guest still has, and
// the guest counts it as the program's system time.
//
// While an object of this class lives, a second process holds all free memory, with every page written to,
// and releases a piece whenever other programs have used up what is free. So no program is given memory that
// the host has to supply first. Reads /proc/meminfo, so it needs Linux. If memory runs short, the system
// kills the holder first.
class WarmMemory {
public:
    WarmMemory(); // returns when the memory is held: half a minute for 20 GB
    ~WarmMemory();
    WarmMemory(const WarmMemory &) = delete;
    WarmMemory &operator=(const WarmMemory &) = delete;

private:
    pid_t m_holder;
};
