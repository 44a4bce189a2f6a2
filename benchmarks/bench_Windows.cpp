// Times a run of the command for Windows under Wine against the same run of the command for this system.
//
//   bench_Windows WINE COMMAND_FOR_WINDOWS COMMAND [facets [rounds]]

#include "benchmarks/BenchMesh.h"
#include "benchmarks/BenchShapes.h"
#include "benchmarks/CpuTime.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

std::function<void()> programStarter(std::vector<std::string> arguments)
{
    return [arguments]() mutable {
        std::vector<char *> pointers;
        pointers.reserve(arguments.size() + 1);
        for (std::string &argument : arguments)
            pointers.push_back(argument.data());
        pointers.push_back(nullptr);
        dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
        execv(pointers[0], pointers.data());
        std::_Exit(EXIT_FAILURE);
    };
}

Contestant contestant(std::vector<std::string> command, const std::vector<std::string> &arguments)
{
    command.insert(command.end(), arguments.begin(), arguments.end());
    return {programStarter(command), 1, {}};
}

void printRow(const NamedShape &shape, int facets, int rounds, const std::vector<std::string> &windows,
              const std::vector<std::string> &native)
{
    writeBinary("in.stl", facetsOf(shape.shape, facets));
    const std::vector<std::string> run = {"--force",          "--quiet", "--x-scale", "1.5",
                                          "--y-offset-after", "2",       "in.stl",    "out.stl"};
    const std::vector<std::string> nothing = {"--version"};
    std::vector<Contestant> contestants = {contestant(windows, run), contestant(native, run),
                                           contestant(windows, nothing), contestant(native, nothing)};
    measureInTurn(contestants, rounds);
    const double windowsRun = contestants[0].least.cpuSeconds - contestants[2].least.cpuSeconds;
    const double nativeRun = contestants[1].least.cpuSeconds - contestants[3].least.cpuSeconds;
    std::printf("| %s | %s | %s | %.2f |\n", shape.name, secondsPerMillion(contestants[0].least, 1.0).c_str(),
                secondsPerMillion(contestants[1].least, 1.0).c_str(), windowsRun / nativeRun);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 4) {
        std::fputs("usage: bench_Windows WINE COMMAND_FOR_WINDOWS COMMAND [facets [rounds]]\n", stderr);
        return 2;
    }
    const std::vector<std::string> windows = {argv[1], std::filesystem::absolute(argv[2])};
    const std::vector<std::string> native = {std::filesystem::absolute(argv[3])};
    const int facets = argc > 4 ? std::atoi(argv[4]) : 1000000;
    const int rounds = argc > 5 ? std::atoi(argv[5]) : 5;
    const TemporaryFolder folder;
    std::printf(
        "CPU seconds, user + system, of a run over %d facets from a binary file, scale and offset; least of "
        "%d alternating rounds. The ratio leaves out the start of the process.\n\n"
        "| mesh | under Wine | on this system | Wine / this system |\n|---|---|---|---|\n",
        facets, rounds);
    for (const NamedShape &shape : benchShapes)
        printRow(shape, facets, rounds, windows, native);
}
