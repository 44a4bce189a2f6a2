// Whole files under the names that the user gave.
#pragma once

#include "cli/PrivateFolder.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

// The file that a name stands for once links are followed, so that a link stays and its file is replaced.
// Absolute. Throws Failure in the file's name if there can be no file of this name: its folder is missing, or
// something else has the name; or, without force, if there is one already.
std::string placeForFile(const std::string &file, bool force);

// Gives the results of a run their names, all or none. Each gets its name at once: who looks finds the old
// file, none, or the whole new one.
class Publication {
public:
    explicit Publication(bool force)
        : m_force(force)
    {}

    // Brings a file close to `place`, a name from placeForFile: into a private folder beside it. Does all
    // that takes time, room or memory. Throws Failure in the name of `file` if that fails.
    void stage(const std::string &from, const std::string &place, const std::string &file);

    // Gives the staged files their names, in the order in which they came. If one cannot have its name, also
    // because such a file has come into being since and there is no force, those before it lose theirs again,
    // where they replaced nothing, and Failure is thrown in its name.
    void publish();

private:
    struct Staged {
        std::unique_ptr<PrivateFolder> folder; // null: the file was beside its place already
        std::filesystem::path from;
        std::filesystem::path place;
        std::string file;
        bool isNew = false;
    };

    void withdraw(const Staged &failed);

    bool m_force;
    std::vector<Staged> m_staged;
};
