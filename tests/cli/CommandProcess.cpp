#include "tests/cli/CommandProcess.h"

#include "tests/support/TextFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace {

constexpr int notStarted = 127;

int checked(int result, const char *what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

pid_t start(std::vector<std::string> arguments, const Variables &variables, int out, int error)
{
    arguments.insert(arguments.begin(), MESHVANE_CLI);
    std::vector<char *> pointers;
    for (std::string &argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);

    const pid_t child = checked(fork(), "fork");
    if (child != 0)
        return child;
    unsetenv("TMPDIR");
    for (const auto &[name, value] : variables)
        setenv(name.c_str(), value.c_str(), 1);
    dup2(out, STDOUT_FILENO);
    dup2(error, STDERR_FILENO);
    execv(MESHVANE_CLI, pointers.data());
    _exit(notStarted);
}

} // namespace

CommandResult runMeshvane(const std::vector<std::string> &arguments, const Variables &variables)
{
    const Stream out = streamOf("");
    const Stream error = streamOf("");
    CommandResult result = endOf(start(arguments, variables, fileno(out.get()), fileno(error.get())));
    result.standardOutput = bytesOf(out);
    result.standardError = bytesOf(error);
    return result;
}

pid_t startMeshvane(const std::vector<std::string> &arguments)
{
    const Stream nowhere = openStream("/dev/null", "w");
    return start(arguments, {}, fileno(nowhere.get()), fileno(nowhere.get()));
}

CommandResult endOf(pid_t process)
{
    int status = 0;
    checked(waitpid(process, &status, 0), "waitpid");
    CommandResult result;
    result.exited = WIFEXITED(status);
    result.status = result.exited ? WEXITSTATUS(status) : WTERMSIG(status);
    return result;
}

std::vector<std::string> entriesOf(const std::string &folder)
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}
