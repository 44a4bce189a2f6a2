// Any bytes as the log that --repeat is given.
#include "fuzz/FuzzVerdict.h"
#include "tests/corpus/RunLogProperty.h"

int LLVMFuzzerInitialize(int *, char ***) { return 0; }

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    return demand(checkRunLog(asText(data, size)));
}
