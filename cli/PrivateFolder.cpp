#include "cli/PrivateFolder.h"

#include "cli/Complaints.h"
#include "transform/RunFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

constexpr const char *privateNames[] = {temporaryFileName, logFileName, privateOutputName, privateTextName,
                                        privateInputLink};
constexpr std::size_t nameCount = std::size(privateNames);
constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGXCPU};

// What a signal handler needs to remove a folder: whole paths, made before.
struct Slot {
    std::string folder;
    std::array<std::string, nameCount> files;
    volatile std::sig_atomic_t isUsed = 0;
};

std::array<Slot, 4> slots;

// Calls nothing that a signal handler may not call.
void removeFolder(Slot &slot)
{
    if (slot.isUsed == 0)
        return;
    for (const std::string &file : slot.files)
        unlink(file.c_str());
    rmdir(slot.folder.c_str());
    slot.isUsed = 0;
}

void removeFolders()
{
    for (Slot &slot : slots)
        removeFolder(slot);
}

extern "C" void endBySignal(int number)
{
    removeFolders();
    std::signal(number, SIG_DFL);
    std::raise(number);
}

// Between the making of a folder and its entry in the slot no signal may end the process.
class SignalsHeldBack {
public:
    SignalsHeldBack()
    {
        sigset_t held;
        sigemptyset(&held);
        for (const int number : endingSignals)
            sigaddset(&held, number);
        sigprocmask(SIG_BLOCK, &held, &m_before);
    }
    ~SignalsHeldBack() { sigprocmask(SIG_SETMASK, &m_before, nullptr); }
    SignalsHeldBack(const SignalsHeldBack &) = delete;
    SignalsHeldBack &operator=(const SignalsHeldBack &) = delete;

private:
    sigset_t m_before{};
};

int freeSlot()
{
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (slots[i].isUsed == 0)
            return static_cast<int>(i);
    }
    throw std::logic_error("too many private folders");
}

void fillSlot(Slot &slot, const std::string &pattern)
{
    slot.folder = pattern;
    for (std::size_t i = 0; i < nameCount; ++i)
        slot.files[i] = pattern + "/" + privateNames[i];
}

// Needs no memory: a folder that has been made must get into its slot.
void useSlot(Slot &slot, const std::string &folder)
{
    std::copy(folder.begin(), folder.end(), slot.folder.begin());
    for (std::string &file : slot.files)
        std::copy(folder.begin(), folder.end(), file.begin());
    slot.isUsed = 1;
}

} // namespace

PrivateFolder::PrivateFolder(const std::string &parent)
    : m_slot(freeSlot()),
      m_path(parent + "/.meshvane-XXXXXX")
{
    Slot &slot = slots[static_cast<std::size_t>(m_slot)];
    fillSlot(slot, m_path);
    const SignalsHeldBack held;
    if (mkdtemp(m_path.data()) == nullptr)
        throw Failure(parent, std::string("no folder can be made in it: ") + std::strerror(errno));
    useSlot(slot, m_path);
}

PrivateFolder::~PrivateFolder()
{
    const SignalsHeldBack held;
    removeFolder(slots[static_cast<std::size_t>(m_slot)]);
}

void watchSignals()
{
    std::atexit(removeFolders);
    for (const int number : endingSignals) {
        if (std::signal(number, endBySignal) == SIG_IGN)
            std::signal(number, SIG_IGN);
    }
    std::signal(SIGXFSZ, SIG_IGN);
}
