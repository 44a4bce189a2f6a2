#include "cli/PrivateFolder.h"

#include "cli/Complaints.h"
#include "cli/SystemCalls.h"
#include "transform/RunFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace {

constexpr const char *privateNames[] = {temporaryFileName, logFileName, privateOutputName, privateTextName,
                                        privateInputLink};
constexpr std::size_t nameCount = std::size(privateNames);

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
        removeFile(file.c_str());
    removeEmptyFolder(slot.folder.c_str());
    slot.isUsed = 0;
}

void removeFolders()
{
    for (Slot &slot : slots)
        removeFolder(slot);
}

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
    const EndHeldBack held; // until the folder is in its slot
    if (!makeNewFolder(m_path))
        throw Failure(parent, std::string("no folder can be made in it: ") + std::strerror(errno));
    useSlot(slot, m_path);
}

PrivateFolder::~PrivateFolder()
{
    const EndHeldBack held;
    removeFolder(slots[static_cast<std::size_t>(m_slot)]);
}

void removePrivateFoldersAtTheEnd() { callAtTheEnd(removeFolders); }
