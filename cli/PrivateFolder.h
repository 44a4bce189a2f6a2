// A folder of the process's own, for the files that a run leaves in the current directory and for results
// that are not whole yet. This is the only place, beside the terminal, where the command speaks to the system
// itself (POSIX).
#pragma once

#include <string>

// The files that may be in it.
constexpr const char *privateOutputName = "output.stl";
constexpr const char *privateTextName = "text.stl";
constexpr const char *privateInputLink = "input.stl";

// Removed with its files when the object dies, but also when the process ends in another way: by exit() or by
// a signal that ends processes on request, for want of a reader, or of time. Only a process that is killed or
// crashes leaves it. There may be four at the same time.
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

// The signals above remove the private folders and then end the process, as they do without us; those that
// the process was started to ignore stay ignored. A file that grows beyond the limit of the system is a
// failed write, and not the end.
void watchSignals();
