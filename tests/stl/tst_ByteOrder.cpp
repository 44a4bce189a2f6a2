#include "stl/ByteOrder.h"

#include <cstdint>
#include <gtest/gtest.h>

namespace {

TEST(ByteOrder, TheLowestByteComesFirst)
{
    EXPECT_EQ(loadLittleEndian<std::uint32_t>("\x78\x56\x34\x92"), 0x92345678U);
    EXPECT_EQ(loadLittleEndian<std::uint64_t>("\xF0\xDE\xBC\x9A\x78\x56\x34\x12"), 0x123456789ABCDEF0U);
}

TEST(ByteOrder, ReversedBytesAreThoseOfTheOtherOrder)
{
    EXPECT_EQ(withBytesReversed(std::uint32_t{0x12345678U}), 0x78563412U);
    EXPECT_EQ(withBytesReversed(std::uint64_t{0x123456789ABCDEF0U}), 0xF0DEBC9A78563412U);
}

TEST(ByteOrder, TheHostIsWhatItsMemoryShows)
{
    const std::uint16_t one = 1;
    const bool lowestIsFirst = *reinterpret_cast<const unsigned char *>(&one) == 1;
    EXPECT_EQ(hostIsBigEndian, !lowestIsFirst);
}

} // namespace
