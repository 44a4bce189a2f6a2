#include "tests/cli/CommandProcess.h"

#include "tests/support/TextFile.h"

#include <cerrno>
#include <cstring>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace {

int checked(int result, const char *what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

std::vector<char *> pointersTo(std::vector<std::string> &texts)
{
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentWith(const Variables &variables)
{
    std::vector<std::string> environment;
    for (char **variable = environ; *variable != nullptr; ++variable) {
        if (std::strncmp(*variable, "TMPDIR=", 7) != 0)
            environment.emplace_back(*variable);
    }
    // The first of two counts.
    for (const auto &[name, value] : variables)
        environment.insert(environment.begin(), std::string(name).append("=").append(value));
    return environment;
}

// Not by fork, which would copy the whole process of a window thousands of times.
pid_t start(std::vector<std::string> arguments, const Variables &variables, int out, int error)
{
    arguments.insert(arguments.begin(), MESHVANE_CLI);
    std::vector<std::string> environment = environmentWith(variables);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, error, STDERR_FILENO);
    pid_t child = -1;
    const int failure = posix_spawn(&child, MESHVANE_CLI, &actions, nullptr, pointersTo(arguments).data(),
                                    pointersTo(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failure != 0)
        throw std::system_error(failure, std::generic_category(), MESHVANE_CLI);
    return child;
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
