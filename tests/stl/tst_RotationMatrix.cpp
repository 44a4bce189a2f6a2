#include "stl/RotationMatrix.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double cosOfHalf = 0.8775825618903728;
constexpr double sinOfHalf = 0.479425538604203;

using Rows = std::array<std::array<double, 3>, 3>;

Rows rowsOf(const RotationMatrix &matrix)
{
    Rows rows{};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            rows[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)] = matrix[i][j];
    return rows;
}

std::array<double, 3> turned(const RotationMatrix &matrix, std::array<double, 3> point)
{
    matrix.apply(point[0], point[1], point[2]);
    return point;
}

void expectNear(const RotationMatrix &matrix, const Rows &expected)
{
    const Rows rows = rowsOf(matrix);
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j)
            EXPECT_DOUBLE_EQ(rows[i][j], expected[i][j]) << "row " << i << ", column " << j;
}

TEST(RotationMatrix, ANewMatrixIsMarkedAsNotInUse)
{
    const RotationMatrix matrix;
    EXPECT_EQ(matrix[0][0], 999.0);
    EXPECT_FALSE(matrix.inUse());
}

TEST(RotationMatrix, TheTopLeftElementDecidesWhetherAMatrixIsInUse)
{
    struct Row {
        double topLeft;
        bool inUse;
    };
    const Row rows[] = {{1.0, true},       {0.0, true},         {-1.0, true},
                        {-infinity, true}, {-999.0, true},      {999.0, false},
                        {infinity, false}, {notANumber, false}, {1.0000000000000002, false}};
    for (const Row &row : rows) {
        SCOPED_TRACE(row.topLeft);
        RotationMatrix matrix;
        matrix[0][0] = row.topLeft;
        EXPECT_EQ(matrix.inUse(), row.inUse);
    }
}

TEST(RotationMatrix, ARotationByZeroIsInUse)
{
    const Rows identity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    for (const RotationMatrix &matrix :
         {RotationMatrix::aboutX(0.0), RotationMatrix::aboutY(0.0), RotationMatrix::aboutZ(0.0)}) {
        EXPECT_TRUE(matrix.inUse());
        EXPECT_EQ(rowsOf(matrix), identity);
    }
}

TEST(RotationMatrix, RowsForEachAxis)
{
    expectNear(RotationMatrix::aboutX(0.5),
               {{{1, 0, 0}, {0, cosOfHalf, -sinOfHalf}, {0, sinOfHalf, cosOfHalf}}});
    expectNear(RotationMatrix::aboutY(0.5),
               {{{cosOfHalf, 0, -sinOfHalf}, {0, 1, 0}, {sinOfHalf, 0, cosOfHalf}}});
    expectNear(RotationMatrix::aboutZ(0.5),
               {{{cosOfHalf, -sinOfHalf, 0}, {sinOfHalf, cosOfHalf, 0}, {0, 0, 1}}});
}

TEST(RotationMatrix, NinetyDegreesAreNotQuiteARightAngle)
{
    const double angle = 90.0 * 0.017453293;
    constexpr double c = -4.320510343363759e-08;
    const auto aboutZ = turned(RotationMatrix::aboutZ(angle), {1, 0, 0});
    EXPECT_DOUBLE_EQ(aboutZ[0], c);
    EXPECT_DOUBLE_EQ(aboutZ[1], 0.9999999999999991);
    EXPECT_EQ(aboutZ[2], 0.0);

    const auto aboutY = turned(RotationMatrix::aboutY(angle), {1, 0, 0});
    EXPECT_DOUBLE_EQ(aboutY[0], c);
    EXPECT_EQ(aboutY[1], 0.0);
    EXPECT_DOUBLE_EQ(aboutY[2], 0.9999999999999991) << "+X turns towards +Z";

    const auto aboutX = turned(RotationMatrix::aboutX(angle), {0, 1, 0});
    EXPECT_EQ(aboutX[0], 0.0);
    EXPECT_DOUBLE_EQ(aboutX[1], c);
    EXPECT_DOUBLE_EQ(aboutX[2], 0.9999999999999991);
}

TEST(RotationMatrix, AnAngleWithoutCosineSwitchesYAndZOff)
{
    for (const double angle : {notANumber, infinity, -infinity}) {
        SCOPED_TRACE(angle);
        EXPECT_TRUE(RotationMatrix::aboutX(angle).inUse());
        EXPECT_FALSE(RotationMatrix::aboutY(angle).inUse());
        EXPECT_FALSE(RotationMatrix::aboutZ(angle).inUse());
    }
}

TEST(RotationMatrix, AnInfiniteAngleTakesTheSignsOfItsNansFromTheRows)
{
    const RotationMatrix matrix = RotationMatrix::aboutX(infinity);
    const bool expected[2][2] = {{true, false}, {true, true}};
    for (int i = 0; i < 2; ++i)
        for (int j = 0; j < 2; ++j)
            EXPECT_EQ(std::signbit(matrix[i + 1][j + 1]), expected[i][j]) << i << ", " << j;
}

// The C library of a machine with fused multiplication and addition rounds these two the other way.
TEST(RotationMatrix, SineAndCosineDoNotDependOnTheMachine)
{
    const RotationMatrix back = RotationMatrix::aboutZ(-338.0 * 0.017453293);
    const RotationMatrix forth = RotationMatrix::aboutZ(338.0 * 0.017453293);
    EXPECT_EQ(back[1][0], 0x1.7f98d4d5bd535p-2);
    EXPECT_EQ(forth[1][0], -0x1.7f98d4d5bd535p-2);
    EXPECT_EQ(forth[0][0], 0x1.dab7d9a39cb0cp-1);
}

TEST(RotationMatrix, APointIsAColumnVector)
{
    const RotationMatrix matrix = {{{1, 10, 100}, {2, 20, 200}, {3, 30, 300}}};
    EXPECT_EQ(turned(matrix, {1, 1, 1}), (std::array<double, 3>{111, 222, 333}));
    EXPECT_EQ(turned(matrix, {1, 2, 3}), (std::array<double, 3>{321, 642, 963}));
}

TEST(RotationMatrix, ProductsAndSumsAreRoundedOneByOne)
{
    // A fused multiply-add would not round the product of the two neighbours of one.
    constexpr double above = 1.0 + 0x1p-52;
    constexpr double below = 1.0 - 0x1p-53;
    const RotationMatrix matrix = {{{-1, above, 0}, {0, 0, 0}, {0, 0, 0}}};
    volatile double product = above * below; // rounded
    EXPECT_EQ(turned(matrix, {product, below, 0})[0], 0.0);
}

TEST(RotationMatrix, ZeroTimesInfinityIsNotANumber)
{
    const auto point = turned(RotationMatrix::aboutX(0.0), {infinity, 1, 2});
    EXPECT_EQ(point[0], infinity);
    EXPECT_TRUE(std::isnan(point[1]));
    EXPECT_TRUE(std::isnan(point[2]));
}

} // namespace
