// Byte-by-byte comparison: the two zeros differ, and a NaN equals itself.
#pragma once

#include <algorithm>

template <typename A, typename B>
bool sameBytes(const A &a, const B &b)
{
    static_assert(sizeof a == sizeof b);
    const auto *first = reinterpret_cast<const unsigned char *>(&a);
    return std::equal(first, first + sizeof a, reinterpret_cast<const unsigned char *>(&b));
}
