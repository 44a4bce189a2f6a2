// How a fuzzer treats the answer of a property.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

inline std::string_view asText(const std::uint8_t *data, std::size_t size)
{
    return {reinterpret_cast<const char *>(data), size};
}

// Any answer but an empty one is a finding: the fuzzer keeps the bytes that led to it.
inline int demand(const std::string &differences)
{
    if (differences.empty())
        return 0;
    std::fprintf(stderr, "The property does not hold:\n%s", differences.c_str());
    std::abort();
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);
