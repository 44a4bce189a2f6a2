#include "cli/SystemCalls.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGXCPU};

void (*tidyUpBeforeEnd)() = nullptr;

sigset_t signalsBefore;

extern "C" void endBySignal(int number)
{
    tidyUpBeforeEnd();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

} // namespace

bool makeNewFolder(std::string &path) { return mkdtemp(path.data()) != nullptr; }

void removeFile(const char *file) { unlink(file); }

void removeEmptyFolder(const char *folder) { rmdir(folder); }

void callAtTheEnd(void (*tidyUp)())
{
    tidyUpBeforeEnd = tidyUp;
    std::atexit(tidyUp);
    for (const int number : endingSignals) {
        if (std::signal(number, endBySignal) == SIG_IGN)
            std::signal(number, SIG_IGN);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}

EndHeldBack::EndHeldBack()
{
    sigset_t held;
    sigemptyset(&held);
    for (const int number : endingSignals)
        sigaddset(&held, number);
    sigprocmask(SIG_BLOCK, &held, &signalsBefore);
}

EndHeldBack::~EndHeldBack() { sigprocmask(SIG_SETMASK, &signalsBefore, nullptr); }

bool standardErrorIsTerminal() { return isatty(fileno(stderr)) != 0; }

bool isSamePlace(const std::string &place, const std::string &other) { return place == other; }
