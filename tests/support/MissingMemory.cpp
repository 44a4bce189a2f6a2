#include "tests/support/MissingMemory.h"

#include "tests/support/Occurrences.h"
#include "tests/support/Sanitizers.h"

Verdict verdictOnMissingMemory(const ProcessOutcome &outcome)
{
    const std::string report = "stl_initialize: Cannot allocate memory\n";
    Verdict verdict;
    verdict.expect(outcome.exited && outcome.status == survivedStatus,
                   "the process did not survive: " + outcome.standardError);
    if (underAddressSanitizer)
        verdict.expect(occurrences(outcome.standardError, report) == 2, outcome.standardError);
    else
        verdict.expectSameText(outcome.standardError, report + report, "standard error");
    return verdict;
}
