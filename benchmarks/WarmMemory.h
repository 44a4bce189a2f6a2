// Free memory that is there at once, for measuring large runs on a virtual machine.
#pragma once

#include <sys/types.h>

// A virtual machine may give free memory back to its host, which then has to find it anew, one page fault
// after the other, when a program next writes to it: seven times the price of the same memory taken again at
// once. The guest counts that as the program's system time.
//
// While an object of this class lives, a process of its own holds all free memory, every page of it written
// to, and lets go of a piece whenever another program has used up what is free: nobody is then given memory
// that the host has to find. Reads /proc/meminfo, so it needs Linux. The holder is the first to be ended if
// memory is short.
class WarmMemory {
public:
    WarmMemory(); // returns when the memory is held; half a minute for 20 GB
    ~WarmMemory();
    WarmMemory(const WarmMemory &) = delete;
    WarmMemory &operator=(const WarmMemory &) = delete;

private:
    pid_t m_holder;
};
