// Whole files under the names that the user gave.
#pragma once

#include <string>
#include <vector>

// The file that a name stands for once links are followed, so that a link stays and its file is replaced.
// Absolute. Throws Failure in the file's name if there can be no file of this name: its folder is missing, or
// something else has the name; or, without force, if there is one already.
std::string placeForFile(const std::string &file, bool force);

// Gives files their names, each at once: who looks finds the old file, none, or the whole new one. What it
// has given a new name goes again unless keep() is called.
class Publication {
public:
    explicit Publication(bool force)
        : m_force(force)
    {}
    ~Publication();
    Publication(const Publication &) = delete;
    Publication &operator=(const Publication &) = delete;

    // Moves `from` to `place`, a name from placeForFile. Throws Failure in the name of `file` if that fails,
    // also because such a file has come into being since and there is no force.
    void publish(const std::string &from, const std::string &place, const std::string &file);

    void keep() { m_new.clear(); }

private:
    bool m_force;
    std::vector<std::string> m_new;
};
