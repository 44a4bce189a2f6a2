// The order of bytes in the machine and in files.
#pragma once

#include <cstdint>
#include <cstring>

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
constexpr bool hostIsBigEndian = true;
#else
constexpr bool hostIsBigEndian = false;
#endif

template <typename Word>
constexpr Word withBytesReversed(Word word)
{
    Word reversed = 0;
    for (unsigned i = 0; i < sizeof word; ++i)
        reversed |= (word >> (8U * i) & 0xFFU) << (8U * (sizeof word - 1 - i));
    return reversed;
}

// The unsigned number whose lowest byte comes first.
template <typename Word>
Word loadLittleEndian(const char *bytes)
{
    Word word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return hostIsBigEndian ? withBytesReversed(word) : word;
}

template <typename Word>
void storeLittleEndian(char *bytes, Word word)
{
    if (hostIsBigEndian)
        word = withBytesReversed(word);
    std::memcpy(bytes, &word, sizeof word);
}
