// The lower limit of a run's cost: moving its bytes and nothing else.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Reads the input (ASCII twice, since its lines must be counted first), writes a file of the temporary file's
// size, reads it once per scan, and copies it to "moved.out". All in the working folder.
class ByteMover {
public:
    void move(const std::string &input, int readings, int scans, std::uintmax_t temporarySize);

private:
    void read(const std::string &path);
    void write(const std::string &path, std::uintmax_t size);
    void copy(const std::string &from, const std::string &to);

    std::vector<char> m_block = std::vector<char>(std::size_t{256} * 1024, ' ');
};
