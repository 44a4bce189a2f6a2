// What the tests of missing memory expect of a process.
#pragma once

#include "tests/support/DyingProcess.h"
#include "tests/support/Verdict.h"

// Empty if the process outlived its action and reported on standard error, twice, that the facets did not fit
// into memory, and nothing else. AddressSanitizer adds lines of its own.
Verdict verdictOnMissingMemory(const ProcessOutcome &outcome);
