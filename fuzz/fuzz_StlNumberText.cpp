// Any bytes as a word to read and as numbers to write.
#include "fuzz/FuzzVerdict.h"
#include "tests/corpus/RunProperties.h"
#include "tests/support/TemporaryFolder.h"

int LLVMFuzzerInitialize(int *, char ***)
{
    static const TemporaryFolder folder;
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    return demand(checkNumberText(asText(data, size)));
}
