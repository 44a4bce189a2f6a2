// The two ways in which a command can end without having done its work.
#pragma once

#include <stdexcept>
#include <string>

// The command line is wrong, whatever the files hold: exit status 2.
struct WrongUse : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A file cannot be read or written, or does not hold what the command needs: exit status 1.
struct Failure : std::runtime_error {
    Failure(std::string file_, const std::string &message)
        : std::runtime_error(message),
          file(std::move(file_))
    {}

    std::string file; // as the user named it
};
