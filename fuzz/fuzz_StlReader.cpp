// Any bytes as an input file, all the way to the output file.
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
    return demand(checkInputFile(asText(data, size)));
}
