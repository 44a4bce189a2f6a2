#include "benchmarks/WarmMemory.h"

#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

constexpr std::size_t pieceSize = std::size_t{64} << 20U;
// Little, because what stays free may return to the host. A run uses it up in a quarter of a second, so the
// holder checks every few milliseconds.
constexpr std::uintmax_t freeWhenHeld = std::uintmax_t{160} << 20U;
constexpr std::uintmax_t freeForOthers = std::uintmax_t{320} << 20U;
// Cached files count as available: the system drops them as the holder grows, but needs some of them to work.
constexpr std::uintmax_t availableWhenHeld = std::uintmax_t{1} << 30U;

struct MemoryState {
    std::uintmax_t freeBytes = 0;
    std::uintmax_t availableBytes = 0;
};

MemoryState memoryState()
{
    MemoryState state;
    std::ifstream in("/proc/meminfo");
    std::string name;
    std::string unit;
    std::uintmax_t kibibytes = 0;
    while (state.availableBytes == 0 && in >> name >> kibibytes >> unit) {
        if (name == "MemFree:")
            state.freeBytes = kibibytes * 1024;
        if (name == "MemAvailable:")
            state.availableBytes = kibibytes * 1024;
    }
    return state;
}

bool moreCanBeHeld()
{
    const MemoryState state = memoryState();
    return state.freeBytes > freeWhenHeld && state.availableBytes > availableWhenHeld;
}

class Pieces {
public:
    bool add()
    {
        void *piece = mmap(nullptr, pieceSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (piece == MAP_FAILED)
            return false;
        madvise(piece, pieceSize, MADV_HUGEPAGE); // quick to release, and in one piece
        const auto pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        for (std::size_t i = 0; i < pieceSize; i += pageSize)
            static_cast<volatile char *>(piece)[i] = 1;
        m_pieces.push_back(piece);
        return true;
    }
    void releaseOne()
    {
        munmap(m_pieces.back(), pieceSize);
        m_pieces.pop_back();
    }
    bool none() const { return m_pieces.empty(); }

private:
    std::vector<void *> m_pieces;
};

[[noreturn]] void hold(pid_t parent, int readiness)
{
    std::ofstream("/proc/self/oom_score_adj") << 1000;
    Pieces pieces;
    while (moreCanBeHeld() && pieces.add()) {
    }
    close(readiness);
    while (!pieces.none() && getppid() == parent) {
        if (memoryState().freeBytes < freeForOthers)
            pieces.releaseOne();
        else
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    _exit(0);
}

} // namespace

WarmMemory::WarmMemory()
{
    const pid_t parent = getpid();
    int ends[2];
    if (pipe(ends) != 0)
        std::abort();
    m_holder = fork();
    if (m_holder < 0)
        std::abort();
    if (m_holder == 0) {
        close(ends[0]);
        hold(parent, ends[1]);
    }
    close(ends[1]);
    char nothing = 0;
    while (read(ends[0], &nothing, 1) > 0) { // ends when the holder closes its end
    }
    close(ends[0]);
}

WarmMemory::~WarmMemory()
{
    kill(m_holder, SIGKILL);
    waitpid(m_holder, nullptr, 0);
}
