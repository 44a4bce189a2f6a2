// Writes the manual page and the completions when the program is built: make_texts <template of the page>
// <folder>.

#include "cli/ShellTexts.h"

#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace {

std::string read(const std::string &name)
{
    const std::ifstream file(name, std::ios::binary);
    std::ostringstream text;
    if (!file || !(text << file.rdbuf()))
        throw std::runtime_error("cannot read " + name);
    return text.str();
}

void write(const std::string &name, const std::string &text)
{
    std::ofstream file(name, std::ios::binary);
    if (!(file << text << std::flush))
        throw std::runtime_error("cannot write " + name);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::cerr << "make_texts <template of the page> <folder>\n";
        return 2;
    }
    try {
        const std::string folder = argv[2];
        write(folder + "/meshvane-cli.1", manualPage(read(argv[1])));
        write(folder + "/meshvane-cli.bash", bashCompletion());
        write(folder + "/meshvane-cli.zsh", zshCompletion());
        write(folder + "/meshvane-cli.fish", fishCompletion());
        return 0;
    } catch (const std::exception &failure) {
        std::cerr << "make_texts: " << failure.what() << '\n';
        return 1;
    }
}
