#include "cli/InfoCommand.h"

#include "cli/Complaints.h"
#include "cli/MeshFacts.h"
#include "cli/Reports.h"
#include "cli/StandardError.h"

#include <cstdlib>

int infoCommand(const InfoRequest &request)
{
    int status = EXIT_SUCCESS;
    for (const std::string &file : request.files) {
        std::string text;
        try {
            const MeshFacts facts = readMeshFacts(file, Warnings::tell);
            text = request.json ? factsJson(file, facts) : factsText(file, facts);
        } catch (const Failure &failure) {
            complainOf(failure.file, failure.what());
            status = EXIT_FAILURE;
            continue;
        }
        printToStandardOutput(text);
    }
    return status;
}
