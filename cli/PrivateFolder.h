// A folder of the process's own, for the files that a run leaves in the current directory and for results
// that are not whole yet.
#pragma once

#include <string>

// The files that may be in it.
constexpr const char *privateOutputName = "output.stl";
constexpr const char *privateTextName = "text.stl";
constexpr const char *privateInputLink = "input.stl";

// Removed with its files when the object dies, but also, after removePrivateFoldersAtTheEnd(), when the
// process ends by exit() or on request. Only a process that is killed or crashes leaves it. There may be four
// at the same time.
class PrivateFolder {
public:
    // Throws Failure in the name of `parent` if there can be none in it.
    explicit PrivateFolder(const std::string &parent);
    ~PrivateFolder();
    PrivateFolder(const PrivateFolder &) = delete;
    PrivateFolder &operator=(const PrivateFolder &) = delete;

    // Absolute, if the parent's is.
    const std::string &path() const { return m_path; }
    std::string file(const std::string &name) const { return m_path + "/" + name; }

private:
    int m_slot = 0;
    std::string m_path;
};

// From now on the end of the process removes the private folders, as callAtTheEnd() in SystemCalls.h says.
void removePrivateFoldersAtTheEnd();
