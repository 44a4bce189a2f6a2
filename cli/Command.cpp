#include "cli/Command.h"

#include "cli/CommandLine.h"
#include "cli/Complaints.h"
#include "cli/HelpText.h"
#include "cli/InfoCommand.h"
#include "cli/Reports.h"
#include "cli/RunCommand.h"
#include "cli/StandardError.h"

#include <cstdlib>
#include <new>

namespace {

int doCommand(const CommandLine &line)
{
    switch (line.kind) {
    case CommandLine::Kind::help:
        printToStandardOutput(helpText());
        return EXIT_SUCCESS;
    case CommandLine::Kind::version:
        printToStandardOutput(versionText());
        return EXIT_SUCCESS;
    case CommandLine::Kind::info:
        return infoCommand(line.info);
    default:
        return runCommand(line.run);
    }
}

} // namespace

int meshvaneCommand(const std::vector<std::string> &arguments)
{
    try {
        return doCommand(readCommandLine(arguments));
    } catch (const WrongUse &wrong) {
        complain(wrong.what());
        return wrongUseStatus;
    } catch (const Failure &failure) {
        complainOf(failure.file, failure.what());
    } catch (const std::bad_alloc &) {
        complainOfMissingMemory();
    } catch (const std::exception &other) {
        complain(other.what());
    }
    return EXIT_FAILURE;
}
