#include "stl/StlPointMemory.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

// The number of the call that made it.
using Made = int;

constexpr bool declined = false;

StlVertex corner(float x, float y = 0.0F, float z = 0.0F) { return {x, y, z}; }

// Asks a memory, and shows whether it made the answer or found it.
template <typename Memory>
class Asking {
public:
    // The number of the call of make() that the answer comes from.
    template <typename Point>
    Made ask(const Point &point)
    {
        Made made = -1;
        EXPECT_TRUE(m_memory.findOrMake(point, &made, [this, &made] {
            made = ++m_calls;
            return true;
        }));
        return made;
    }

    template <typename Point>
    void askInVain(const Point &point)
    {
        Made made = -1;
        EXPECT_FALSE(m_memory.findOrMake(point, &made, [this, &made] {
            made = ++m_calls;
            return declined;
        }));
    }

    int calls() const { return m_calls; }

private:
    Memory m_memory;
    int m_calls = 0;
};

using AskingByBits = Asking<StlPointMemory<StlPointBits, Made>>;
using AskingByText = Asking<StlPointMemory<StlPointText, Made>>;
using AskingOneSlot = Asking<StlPointMemory<StlPointBits, Made, 1>>;
using AskingLast = Asking<StlLastPoint<StlPointBits, Made>>;

TEST(StlPointMemory, APointIsMadeOnceAndFoundAgain)
{
    AskingByBits memory;
    EXPECT_EQ(memory.ask(corner(1, 2, 3)), 1);
    EXPECT_EQ(memory.ask(corner(4, 5, 6)), 2);
    EXPECT_EQ(memory.ask(corner(1, 2, 3)), 1);
    EXPECT_EQ(memory.ask(corner(4, 5, 6)), 2);
}

TEST(StlPointMemory, APointIsItsBits)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    AskingByBits memory;
    const StlVertex points[] = {
        corner(0.0F),    corner(-0.0F),   corner(0.0F, -0.0F), corner(0, 0, -0.0F),     corner(nan),
        corner(-nan),    corner(0, nan),  corner(0, 0, nan),   corner(1, 2, 3),         corner(2, 1, 3),
        corner(1, 3, 2), corner(3, 2, 1), corner(1, 2, -3),    corner(1.0000001F, 2, 3)};
    int call = 0;
    for (const StlVertex &point : points)
        EXPECT_EQ(memory.ask(point), ++call);
    for (const StlVertex &point : {points[0], points[4]})
        EXPECT_LE(memory.ask(point), call) << "the zeros and the NaN equal themselves";
}

TEST(StlPointMemory, TheFirstPointIsNeverFound)
{
    EXPECT_EQ(AskingByBits().ask(corner(0)), 1) << "its bits are those of an unused slot, except for one";
    EXPECT_EQ(AskingLast().ask(corner(0)), 1);
}

std::string textOf(double x, double y, double z)
{
    char text[64];
    std::snprintf(text, sizeof text, "% .8E % .8E % .8E\n", x, y, z);
    return text;
}

TEST(StlPointMemory, APointOfTextIsAllOfItsCharacters)
{
    AskingByText memory;
    const std::string point = textOf(1, -2, 3e-5);
    ASSERT_EQ(point.size(), stlCommonPointSize);
    EXPECT_EQ(memory.ask(point.data()), 1);
    for (std::size_t at = 0; at < point.size(); ++at) {
        std::string other = point;
        other[at] = static_cast<char>(other[at] + 1);
        EXPECT_GT(memory.ask(other.data()), 1) << at;
        memory.ask(point.data());
    }
    const int calls = memory.calls();
    const std::string copy(point.data(), point.size());
    memory.ask(copy.data());
    EXPECT_EQ(memory.calls(), calls) << "found, wherever the characters are";
}

TEST(StlPointMemory, APointThatWasDeclinedIsNotRemembered)
{
    AskingByBits memory;
    memory.askInVain(corner(1));
    memory.askInVain(corner(1));
    EXPECT_EQ(memory.ask(corner(1)), 3);
    EXPECT_EQ(memory.ask(corner(1)), 3);
}

TEST(StlPointMemory, APointThatWasDeclinedLeavesTheOneInItsSlot)
{
    AskingOneSlot memory;
    memory.ask(corner(0));
    for (int i = 1; i < 20; ++i)
        memory.askInVain(corner(static_cast<float>(i)));
    EXPECT_EQ(memory.ask(corner(0)), 1);
}

TEST(StlPointMemory, ASlotHoldsTheLatestOfItsPoints)
{
    AskingOneSlot memory; // two slots for three points
    for (int round = 0; round < 3; ++round) {
        for (const float x : {1.0F, 2.0F, 3.0F}) {
            const Made made = memory.ask(corner(x));
            EXPECT_EQ(memory.ask(corner(x)), made);
        }
    }
    EXPECT_GT(memory.calls(), 3);
}

TEST(StlPointMemory, TheLastPointAloneIsFoundAgain)
{
    AskingLast memory;
    EXPECT_EQ(memory.ask(corner(1)), 1);
    EXPECT_EQ(memory.ask(corner(1)), 1);
    memory.askInVain(corner(2));
    EXPECT_EQ(memory.ask(corner(1)), 1) << "a point that was declined leaves it";
    EXPECT_EQ(memory.ask(corner(2)), 3);
    EXPECT_EQ(memory.ask(corner(1)), 4);
}

// If no point recurs, the memory stops looking for a while.
TEST(StlPointMemory, AMemoryThatFindsNothingRestsAndTriesAgain)
{
    AskingByBits memory;
    float x = 0.0F;
    for (int i = 0; i < 5000; ++i)
        memory.ask(corner(++x));
    EXPECT_EQ(memory.calls(), 5000);
    memory.ask(corner(x));
    EXPECT_EQ(memory.calls(), 5001) << "the memory rests, so it does not know the previous point";

    for (int i = 0; i < 60000; ++i)
        memory.ask(corner(x));
    EXPECT_LT(memory.calls(), 5001 + 30000) << "once rested, it finds the point again";
    EXPECT_GT(memory.calls(), 5001 + 10000);
}

TEST(StlPointMemory, AMemoryThatFindsAThirdNeverRests)
{
    AskingByBits memory;
    float x = 0.0F;
    for (int i = 0; i < 20000; ++i) {
        x += 1.0F;
        memory.ask(corner(x));
        memory.ask(corner(x + 0.5F));
        memory.ask(corner(x));
    }
    EXPECT_EQ(memory.calls(), 40000);
}

// Every answer of a long mixture is the one that was made for the same point.
TEST(StlPointMemory, NoAnswerIsThatOfAnotherPoint)
{
    StlPointMemory<StlPointBits, StlVertex, 4> memory;
    unsigned random = 1;
    int found = 0;
    constexpr int all = 100000;
    for (int i = 0; i < all; ++i) {
        random = random * 1664525U + 1013904223U;
        const int slow = i / 5000;
        const StlVertex point = corner(static_cast<float>(random >> 28U), static_cast<float>(slow), 0.5F);
        StlVertex answer;
        bool made = false;
        ASSERT_TRUE(memory.findOrMake(point, &answer, [&] {
            made = true;
            answer = point;
            return true;
        }));
        ASSERT_EQ(answer.x, point.x);
        ASSERT_EQ(answer.y, point.y);
        found += made ? 0 : 1;
    }
    EXPECT_GT(found, all / 4);
    EXPECT_LT(found, all);
}

} // namespace
