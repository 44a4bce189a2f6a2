#include "cli/StandardError.h"

#include <cstdio>

namespace {

void printLines(const std::string &prefix, const std::string &message)
{
    std::size_t begin = 0;
    while (begin < message.size()) {
        const std::size_t end = message.find('\n', begin);
        const std::string line = message.substr(begin, end == std::string::npos ? end : end - begin);
        if (!line.empty())
            std::fputs((prefix + line + "\n").c_str(), stderr);
        begin = end == std::string::npos ? end : end + 1;
    }
    std::fflush(stderr); // which has a buffer on some systems
}

} // namespace

std::string visibleName(const std::string &file)
{
    std::string name = file;
    for (char &character : name) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < 0x20U || byte == 0x7FU)
            character = '?';
    }
    return name;
}

void complain(const std::string &message) { printLines("meshvane-cli: ", message); }

void complainOf(const std::string &file, const std::string &message)
{
    printLines("meshvane-cli: " + visibleName(file) + ": ", message);
}

void complainOfMissingMemory()
{
    std::fputs("meshvane-cli: not enough memory\n", stderr);
    std::fflush(stderr);
}
