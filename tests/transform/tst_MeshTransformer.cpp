#include "stl/StlLimits.h"
#include "tests/support/CaseNames.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/OpenDescriptors.h"
#include "tests/support/RunParameters.h"
#include "tests/support/RunTexts.h"
#include "tests/support/SameBytes.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "tests/support/TransformCall.h"
#include "transform/RunFiles.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace {

using P = TransformParameters;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double undefined = -notANumber;        // made from other numbers, on every processor
constexpr double radiansPerDegree = 0.017453293; // not pi / 180: the program's own factor
constexpr double cos90 = -4.32051034E-08;        // of 90 degrees by this factor; by pi / 180 it is 6e-17

// The unit vectors, and the third one as the normal.
constexpr FacetNumbers unitFacet = {{0, 0, 1}, {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
const std::string boxText = writtenMesh(box);
const std::string oneFacetMessage = "\n" + totals(9, 1);

// Only as a copy the facet line keeps its surplus blanks; the rest is what rewriting makes of it as well.
std::string boxTextWithOddFacetLine()
{
    std::string text = boxText;
    return text.insert(text.find("normal"), "  ");
}

struct Outcome {
    int result = 99;
    std::string message;
    std::string output;
};

class MeshTransformation : public ::testing::Test {
protected:
    // Passes the given file as input. Whatever comes of it, no stream may stay open.
    Outcome transformFileAgain(const std::string &path, const std::string &outputPath = "out.stl")
    {
        const long descriptors = openDescriptors();
        std::FILE *input = openStream(path, "r").release();
        std::FILE *output = openStream(outputPath, "w+").release();
        const int inputDescriptor = fileno(input);
        const int outputDescriptor = fileno(output);

        Outcome outcome;
        char message[stlMessageCapacity] = "\n";
        outcome.result = callTransform(transformer, message, input, output, parameters);
        outcome.message = message;

        EXPECT_FALSE(isOpen(inputDescriptor));
        EXPECT_FALSE(isOpen(outputDescriptor));
        EXPECT_EQ(openDescriptors(), descriptors);
        return outcome;
    }

    // With a new transformer, as each run has.
    Outcome transformFile(const std::string &path)
    {
        transformer = makeTransformer(parameters);
        Outcome outcome = transformFileAgain(path);
        outcome.output = readBytes("out.stl");
        return outcome;
    }

    Outcome transformText(const std::string &temporaryFile)
    {
        writeBytes(temporaryFileName, temporaryFile);
        return transformFile(temporaryFileName);
    }

    void expectSuccess(const std::string &temporaryFile, const FacetNumbers &expected)
    {
        const Outcome outcome = transformText(temporaryFile);
        EXPECT_EQ(outcome.result, 0);
        EXPECT_EQ(outcome.message, oneFacetMessage);
        EXPECT_EQ(outcome.output, writtenMesh(expected));
    }

    void expectFailure(const Outcome &outcome, const std::string &message)
    {
        EXPECT_EQ(outcome.result, -1);
        EXPECT_EQ(outcome.message, message);
        EXPECT_EQ(outcome.output, "");
    }

    void expectExtents(double xMin, double xMax, double yMin, double yMax, double zMin, double zMax)
    {
        EXPECT_EQ(transformer.xMin, xMin);
        EXPECT_EQ(transformer.xMax, xMax);
        EXPECT_EQ(transformer.yMin, yMin);
        EXPECT_EQ(transformer.yMax, yMax);
        EXPECT_EQ(transformer.zMin, zMin);
        EXPECT_EQ(transformer.zMax, zMax);
    }
    void expectExtentsOfTheBox() { expectExtents(1, 11, 2, 22, 3, 33); }
    void expectNothingMeasured() { expectExtents(0, 0, 0, 0, 0, 0); }

    TemporaryFolder folder;
    TransformParameters parameters = unchanging();
    MeshTransformer transformer = makeTransformer(parameters);
};

// ---------------------------------------------------------------------------------------------- the record

TEST(MeshTransformerRecord, TakesScalesThenOffsetsBeforeThenOffsetsAfter)
{
    const MeshTransformer t(1, 2, 3, 4, 5, 6, 7, 8, 9);
    double expected = 1;
    for (const double value : {t.xScl, t.yScl, t.zScl, t.xOfsB, t.yOfsB, t.zOfsB, t.xOfsA, t.yOfsA, t.zOfsA})
        EXPECT_EQ(value, expected++);
}

TEST(MeshTransformerRecord, StartsWithoutRotation)
{
    const MeshTransformer t(1, 1, 1, 0, 0, 0, 0, 0, 0);
    for (const RotationMatrix &matrix : {t.rotX, t.rotY, t.rotZ})
        EXPECT_FALSE(matrix.inUse());
}

// ------------------------------------------------------------------------------------- scales and offsets

struct OptionCase {
    const char *name;
    Settings settings;
    Corners corners;
};

class BoxWithOptions : public MeshTransformation, public ::testing::WithParamInterface<OptionCase> {};

TEST_P(BoxWithOptions, HasItsCornersRewrittenAndItsNormalKept)
{
    parameters = with(parameters, GetParam().settings);
    expectSuccess(boxText, {box.normal, GetParam().corners});
}

const OptionCase optionCases[] = {
    {"OffsetBeforeThenScaleThenOffsetAfter",
     {{scales, 2, -3, 0.5}, {offsetsBefore, 1, 2, 3}, {offsetsAfter, 10, 20, 30}},
     {{14, 8, 33}, {34, -52, 33}, {14, 8, 48}}},
    {"ScalesOfZero", {{scales, 0, 0, 0}}, {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}},
    {"AnglesAndLengthsWithoutTheirFlags", {{angles, 90, 90, 90}, {lengths, 9, 9, 9}}, box.corners},

    {"OriginX", {{&P::xSet0, 1}}, {{0, 2, 3}, {10, 22, 3}, {0, 2, 33}}},
    {"OriginY", {{&P::ySet0, 1}}, {{1, 0, 3}, {11, 20, 3}, {1, 0, 33}}},
    {"OriginZ", {{&P::zSet0, 1}}, {{1, 2, 0}, {11, 22, 0}, {1, 2, 30}}},
    {"OriginReplacesTheOffsetBeforeAndKeepsScaleAndOffsetAfter",
     {{&P::xSet0, 1}, {&P::xScl, 2}, {&P::xOfsB, 1000}, {&P::xOfsA, 5}},
     {{5, 2, 3}, {25, 22, 3}, {5, 2, 33}}},

    {"XSameY", {{&P::xSameY, 1}}, {{2, 2, 3}, {22, 22, 3}, {2, 2, 33}}},
    {"XSameZ", {{&P::xSameZ, 1}}, {{3, 2, 3}, {33, 22, 3}, {3, 2, 33}}},
    {"YSameXTakesTheLengthOfZ", {{&P::ySameX, 1}}, {{1, 3, 3}, {11, 33, 3}, {1, 3, 33}}}, // 30 / 20
    {"YSameZTakesTheLengthOfX", {{&P::ySameZ, 1}}, {{1, 1, 3}, {11, 11, 3}, {1, 1, 33}}}, // 10 / 20
    {"ZSameX", {{&P::zSameX, 1}}, {{1, 2, 1}, {11, 22, 1}, {1, 2, 11}}},
    {"ZSameY", {{&P::zSameY, 1}}, {{1, 2, 2}, {11, 22, 2}, {1, 2, 22}}},
    {"XSameZWinsOverXSameY", {{&P::xSameY, 1}, {&P::xSameZ, 1}}, {{3, 2, 3}, {33, 22, 3}, {3, 2, 33}}},
    {"YSameZWinsOverYSameX", {{&P::ySameX, 1}, {&P::ySameZ, 1}}, {{1, 1, 3}, {11, 11, 3}, {1, 1, 33}}},
    {"ZSameYWinsOverZSameX", {{&P::zSameX, 1}, {&P::zSameY, 1}}, {{1, 2, 2}, {11, 22, 2}, {1, 2, 22}}},
    {"SameLengthReplacesTheScaleAndKeepsTheOffsets",
     {{&P::xSameY, 1}, {&P::xScl, 7}, {&P::xOfsB, 1}, {&P::xOfsA, 0.5}},
     {{4.5, 2, 3}, {24.5, 22, 3}, {4.5, 2, 33}}},
    {"SameLengthMeasuresTheInputWhateverTheOtherScale",
     {{&P::xSameY, 1}, {&P::yScl, 10}},
     {{2, 20, 3}, {22, 220, 3}, {2, 20, 33}}},

    {"LengthX", {{&P::xSetL, 1}, {&P::xLength, 100}}, {{10, 2, 3}, {110, 22, 3}, {10, 2, 33}}},
    {"LengthY", {{&P::ySetL, 1}, {&P::yLength, 100}}, {{1, 10, 3}, {11, 110, 3}, {1, 10, 33}}},
    {"LengthZ", {{&P::zSetL, 1}, {&P::zLength, 90}}, {{1, 2, 9}, {11, 22, 9}, {1, 2, 99}}},
    {"AllLengthsReplaceTheScales",
     {{scales, 7, 7, 7}, {setLengths, 1, 1, 1}, {lengths, 5, 5, 15}},
     {{0.5, 0.5, 1.5}, {5.5, 5.5, 1.5}, {0.5, 0.5, 16.5}}},
    {"LengthOfZero", {{&P::xSetL, 1}}, {{0, 2, 3}, {0, 22, 3}, {0, 2, 33}}},
    {"LengthDoesNotDependOnTheOffsets",
     {{&P::xSetL, 1}, {&P::xLength, 100}, {&P::xOfsB, 1}, {&P::xOfsA, 3}},
     {{23, 2, 3}, {123, 22, 3}, {23, 2, 33}}},
    {"LengthWinsOverSameLength",
     {{&P::xSameY, 1}, {&P::xSameZ, 1}, {&P::xSetL, 1}, {&P::xLength, 100}},
     {{10, 2, 3}, {110, 22, 3}, {10, 2, 33}}},
    {"LengthOfOneAxisLeavesSameLengthOfAnother",
     {{&P::ySameX, 1}, {&P::xSetL, 1}, {&P::xLength, 100}},
     {{10, 3, 3}, {110, 33, 3}, {10, 3, 33}}},
    {"LengthAndOriginTogether",
     {{&P::xSet0, 1}, {&P::xSetL, 1}, {&P::xLength, 100}},
     {{0, 2, 3}, {100, 22, 3}, {0, 2, 33}}},

    // Only a flag of exactly one has an effect. Whether any of the nine is considered depends on their sum.
    {"FlagsOfTwo",
     {{origins, 2, 2, 2}, {&P::xSameY, 2}, {&P::xSameZ, 2}, {&P::ySameX, 2}, {&P::zSameY, 2}},
     box.corners},
    {"FlagsWhoseSumIsZero", {{&P::xSet0, 1}, {&P::zSameY, -1}}, box.corners},
    {"OneNegativeFlagOfThree",
     {{&P::xSet0, 1}, {&P::zSet0, 1}, {&P::ySet0, -1}},
     {{0, 2, 0}, {10, 22, 0}, {0, 2, 30}}},
};

INSTANTIATE_TEST_SUITE_P(, BoxWithOptions, ::testing::ValuesIn(optionCases), nameOfCase);

TEST_F(MeshTransformation, CopiesEveryLineButTheVertexLinesUpToItsLineEnd)
{
    const Outcome outcome = transformText("my label \r\n"
                                          "\x20   facet   normal -0 abc 1e99   \r\n"
                                          "outer  anything\r\n"
                                          "vertex 1 2 3 4\r\n"
                                          "vertex -0.00000000E+00 -1e-310 1.5abc\n"
                                          " vertex 1e300 -1E-99 0x10\n"
                                          " endloop \t \n"
                                          "endfacet\r\n"
                                          "endsolid  my label\r\n"
                                          "not read\n");
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.message, oneFacetMessage);
    EXPECT_EQ(outcome.output, "my label \r\n"
                              "\x20   facet   normal -0 abc 1e99   \n"
                              "outer  anything\n"
                              "      vertex  1.00000000E+00  2.00000000E+00  3.00000000E+00\n"
                              "      vertex  0.00000000E+00 -1.00000000E-310  1.50000000E+00\n"
                              "      vertex 1.00000000E+300 -1.00000000E-99  1.60000000E+01\n"
                              " endloop \t \n"
                              "endfacet\n"
                              "endsolid  my label\n");
}

TEST_F(MeshTransformation, MinusZeroBecomesPlusZeroInVertexLinesOnly)
{
    const Point normal = {-0.0, 0, 1};
    expectSuccess(writtenMesh({normal, {{-0.0, -0.0, -0.0}, {-0.0, 1, -0.0}, {1, -0.0, -1}}}),
                  {normal, {{0, 0, 0}, {0, 1, 0}, {1, 0, -1}}});
}

TEST_F(MeshTransformation, AMissingCoordinateIsTheLastWrittenOneTransformedOnceMore)
{
    parameters = with(parameters, {{&P::xScl, 2}, {&P::zOfsA, 1}});
    const Outcome outcome = transformText(temporaryFileOf(asciiFacet({"0 0 1", "1 2", "x 5 6", "3 4 5"})));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.output,
              temporaryFileOf(asciiFacet({"0 0 1", " 2.00000000E+00  2.00000000E+00  1.00000000E+00",
                                          " 4.00000000E+00  2.00000000E+00  2.00000000E+00",
                                          " 6.00000000E+00  4.00000000E+00  6.00000000E+00"})));
}

TEST_F(MeshTransformation, ArithmeticIsDoneInDoublePrecision)
{
    parameters = with(parameters, {{&P::xScl, 1.0 / 3.0}, {&P::xOfsB, 1e-9}});
    expectSuccess(writtenMesh({box.normal, {{0, 0, 0}, {1.00000001, 0, 0}, {16777217, 0, 0}}}),
                  {box.normal, {{3.33333333E-10, 0, 0}, {3.33333337E-01, 0, 0}, {5.59240567E+06, 0, 0}}});
}

// ----------------------------------------------------------------------------------------------- rotations

struct RotationCase {
    const char *name;
    Settings settings;
    FacetNumbers input;
    FacetNumbers expected;
};

class Rotation : public MeshTransformation, public ::testing::WithParamInterface<RotationCase> {};

TEST_P(Rotation, RotatesNormalsAndCorners)
{
    parameters = with(parameters, GetParam().settings);
    expectSuccess(writtenMesh(GetParam().input), GetParam().expected);
}

constexpr Point minusZeroNormal = {-0.0, 3, -400};

const RotationCase rotationCases[] = {
    {"AboutXBy90",
     {{&P::xRotate, 1}, {&P::xAngle, 90}},
     unitFacet,
     {{0, -1, cos90}, {{1, 0, 0}, {0, cos90, 1}, {0, -1, cos90}}}},
    // A positive angle turns +X towards +Z.
    {"AboutYBy90",
     {{&P::yRotate, 1}, {&P::yAngle, 90}},
     unitFacet,
     {{-1, 0, cos90}, {{cos90, 0, 1}, {0, 1, 0}, {-1, 0, cos90}}}},
    {"AboutZBy90",
     {{&P::zRotate, 1}, {&P::zAngle, 90}},
     unitFacet,
     {{0, 0, 1}, {{cos90, 1, 0}, {-1, cos90, 0}, {0, 0, 1}}}},
    {"AboutXByMoreThanATurnBackwards",
     {{&P::xRotate, 1}, {&P::xAngle, -450}},
     box,
     {{0, 1, -2.16025518E-07},
      {{1, 2.99999957, -2.00000065}, {11, 2.99999525, -22.0000006}, {1, 32.9999996, -2.00000713}}}},
    {"AboutXThenYThenZ",
     {{rotations, 1, 1, 1}, {angles, 30, 60, 90}},
     box,
     {{0.500000045, -0.749999985, 0.433012677},
      {{-0.232050643, -2.61602549, 2.66506344},
       {-17.5525584, -6.27628089, 16.3253175},
       {14.7679507, -25.1160250, 15.6554437}}}},
    {"AfterScaleAndOffsetsWhichLeaveTheNormalAlone",
     {{&P::zRotate, 1}, {&P::zAngle, 90}, {&P::xOfsB, 1}, {&P::xScl, 2}, {&P::xOfsA, 10}},
     {{1, 0, 0}, box.corners},
     {{cos90, 1, 0},
      {{-2.00000060, 13.9999999, 3}, {-22.0000015, 33.9999990, 3}, {-2.00000060, 13.9999999, 33}}}},
    {"AfterALengthMeasuredOnTheUnrotatedMesh",
     {{&P::zRotate, 1}, {&P::xSetL, 1}, {&P::zAngle, 90}, {&P::xLength, 100}},
     box,
     {{0, 0, 1},
      {{-2.00000043, 9.99999991, 3}, {-22.0000048, 109.999999, 3}, {-2.00000043, 9.99999991, 33}}}},
    // An angle of zero is a rotation, too: the normal is read and written. About Z, every product of its
    // first row is a minus zero.
    {"AboutXByZero", {{&P::xRotate, 1}}, {minusZeroNormal, box.corners}, {{0, 3, -400}, box.corners}},
    {"AboutYByZero", {{&P::yRotate, 1}}, {minusZeroNormal, box.corners}, {{0, 3, -400}, box.corners}},
    {"AboutZByZero", {{&P::zRotate, 1}}, {minusZeroNormal, box.corners}, {minusZeroNormal, box.corners}},
};

INSTANTIATE_TEST_SUITE_P(, Rotation, ::testing::ValuesIn(rotationCases), nameOfCase);

TEST_F(MeshTransformation, ARotatedNormalIsRewrittenInTheLayoutOfTheFile)
{
    parameters.xRotate = 1;
    EXPECT_EQ(transformText(temporaryFileOf(asciiFacet({"1 2 -4e2", "1 2 3", "11 22 3", "1 2 33"}))).output,
              writtenMesh({{1, 2, -400}, box.corners}));
}

// The first corner takes its missing z from the normal, whose own missing z is zero.
TEST_F(MeshTransformation, RotatedNormalAndCornersShareTheirNumbers)
{
    parameters.xRotate = 1;
    expectSuccess(temporaryFileOf(asciiFacet({"7 8", "1 2", "11", "nothing"})),
                  {{7, 8, 0}, {{1, 2, 0}, {11, 2, 0}, {11, 2, 0}}});
}

TEST_F(MeshTransformation, EachMatrixIsThatOfItsAxisAndAngle)
{
    parameters = with(parameters, {{rotations, 1, 1, 1}, {angles, 30, 45, -60}});
    transformText(boxText);
    EXPECT_TRUE(sameBytes(transformer.rotX, RotationMatrix::aboutX(30 * radiansPerDegree)));
    EXPECT_TRUE(sameBytes(transformer.rotY, RotationMatrix::aboutY(45 * radiansPerDegree)));
    EXPECT_TRUE(sameBytes(transformer.rotZ, RotationMatrix::aboutZ(-60 * radiansPerDegree)));
}

TEST_F(MeshTransformation, RotationsNotAskedForAreMarkedAsNotInUse)
{
    parameters.yRotate = 1;
    transformText(boxText);
    EXPECT_EQ(transformer.rotX[0][0], RotationMatrix::unusedMarker);
    EXPECT_EQ(transformer.rotY[0][0], 1.0);
    EXPECT_EQ(transformer.rotZ[0][0], RotationMatrix::unusedMarker);
}

TEST_F(MeshTransformation, RotationsOfAnEarlierCallAreForgotten)
{
    parameters = with(parameters, {{rotations, 1, 1, 1}});
    transformText(boxTextWithOddFacetLine());
    parameters = unchanging();
    transformFileAgain(temporaryFileName);
    for (const RotationMatrix &matrix : {transformer.rotX, transformer.rotY, transformer.rotZ})
        EXPECT_EQ(matrix[0][0], RotationMatrix::unusedMarker);
    EXPECT_EQ(readBytes("out.stl"), boxTextWithOddFacetLine());
}

TEST_F(MeshTransformation, AngleIsTheOneConvertedLast)
{
    const auto angleWith = [this](const Settings &flags) {
        parameters = with(with(unchanging(), {{angles, 30, 60, 120}}), flags);
        transformText(boxText);
        return transformer.angle;
    };
    EXPECT_EQ(angleWith({{&P::xRotate, 1}}), 30 * radiansPerDegree);
    EXPECT_EQ(angleWith({{&P::xRotate, 1}, {&P::yRotate, 1}}), 60 * radiansPerDegree);
    EXPECT_EQ(angleWith({{rotations, 1, 1, 1}}), 120 * radiansPerDegree);
    EXPECT_EQ(angleWith({{&P::yRotate, 1}}), 60 * radiansPerDegree);
}

struct OddAngle {
    const char *name;
    double angle;
};

class AngleWithoutCosine : public MeshTransformation, public ::testing::WithParamInterface<OddAngle> {};

// Matrices about Y and Z have the cosine as their top-left element, and no comparison with a NaN holds.
TEST_P(AngleWithoutCosine, SwitchesTheRotationsAboutYAndZOff)
{
    const double angle = GetParam().angle;
    parameters =
        with(parameters, {{&P::yRotate, 1}, {&P::zRotate, 1}, {&P::yAngle, angle}, {&P::zAngle, angle}});
    const Outcome outcome = transformText(boxTextWithOddFacetLine());
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.output, boxTextWithOddFacetLine());
}

TEST_P(AngleWithoutCosine, LeavesTheOtherRotationsOn)
{
    parameters = with(parameters, {{rotations, 1, 1, 1}, {&P::yAngle, GetParam().angle}, {&P::zAngle, 90}});
    expectSuccess(writtenMesh(unitFacet), {{0, 0, 1}, {{cos90, 1, 0}, {-1, cos90, 0}, {0, 0, 1}}});
}

// About X the top-left element is 1, whatever the angle.
TEST_P(AngleWithoutCosine, KeepsTheRotationAboutXOn)
{
    parameters = with(parameters, {{&P::xRotate, 1}, {&P::xAngle, GetParam().angle}});
    const double expected = std::isnan(GetParam().angle) ? notANumber : undefined;
    const auto undefinedBut = [expected](double x) { return Point{x, expected, expected}; };
    expectSuccess(writtenMesh({{0, 0, 1}, {{1, 2, 3}, {11, 22, 3}, {-0.0, 0, 0}}}),
                  {undefinedBut(0), {undefinedBut(1), undefinedBut(11), undefinedBut(0)}});
}

constexpr OddAngle anglesWithoutCosine[] = {
    {"Infinite", infinity}, {"MinusInfinite", -infinity}, {"NotANumber", notANumber}};

INSTANTIATE_TEST_SUITE_P(, AngleWithoutCosine, ::testing::ValuesIn(anglesWithoutCosine), nameOfCase);

// ------------------------------------------------------------------------------------------- zero extents

class FlatMesh : public MeshTransformation, public ::testing::WithParamInterface<OptionCase> {};

TEST_P(FlatMesh, IsScaledByWhatTheDivisionGives)
{
    parameters = with(parameters, GetParam().settings);
    expectSuccess(writtenMesh({{0, 1, 0}, {{1, 0, 3}, {11, 0, 3}, {1, 0, 33}}}),
                  {{0, 1, 0}, GetParam().corners});
}

constexpr Corners flatCornersAt(double y) { return {{1, y, 3}, {11, y, 3}, {1, y, 33}}; }

const OptionCase flatCases[] = {
    {"AnInfiniteScaleOfAPositiveCoordinate", {{&P::ySameX, 1}, {&P::yOfsB, 0.25}}, flatCornersAt(infinity)},
    {"AnInfiniteScaleOfANegativeCoordinate", {{&P::ySameZ, 1}, {&P::yOfsB, -0.25}}, flatCornersAt(-infinity)},
    {"AnInfiniteScaleOfZero", {{&P::ySameZ, 1}}, flatCornersAt(undefined)},
    {"ALengthForTheFlatAxis", {{&P::ySetL, 1}, {&P::yLength, 5}, {&P::yOfsB, 1}}, flatCornersAt(infinity)},
    {"ALengthOfZeroForTheFlatAxis", {{&P::ySetL, 1}, {&P::yOfsB, 1}}, flatCornersAt(undefined)},
    {"TheLengthOfTheFlatAxisForTheOthers",
     {{&P::zSameY, 1}, {&P::xSameY, 1}},
     {{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}},
};

INSTANTIATE_TEST_SUITE_P(, FlatMesh, ::testing::ValuesIn(flatCases), nameOfCase);

TEST_F(MeshTransformation, AMeshWithoutAnyExtentHasUndefinedScales)
{
    parameters = with(parameters, {{&P::xSameY, 1}, {&P::ySameZ, 1}, {&P::zSameX, 1}});
    const Point corner = {undefined, undefined, undefined};
    expectSuccess(writtenMesh({box.normal, {{1, 2, 3}, {1, 2, 3}, {1, 2, 3}}}),
                  {box.normal, {corner, corner, corner}});
}

// --------------------------------------------------------------------------------------- scans and streams

TEST_F(MeshTransformation, WithoutSuchOptionsNothingIsMeasured)
{
    parameters.zRotate = 1;
    transformText(boxText);
    expectNothingMeasured();
}

TEST_F(MeshTransformation, ExtentsOfTheUntransformedInputAreKept)
{
    parameters = with(scaling(5), {{&P::xOfsB, 100}, {&P::yOfsA, 100}, {&P::xRotate, 1}, {&P::xAngle, 45}});
    parameters.ySet0 = 1;
    transformText(boxText);
    expectExtentsOfTheBox();
    EXPECT_EQ(transformer.yOfsB, -2.0);
    EXPECT_EQ(transformer.xOfsB, 100.0);
    EXPECT_EQ(transformer.yOfsA, 100.0);
}

TEST_F(MeshTransformation, AFlagWithoutEffectStillHasTheMeshMeasured)
{
    parameters.ySameZ = 2;
    transformText(boxText);
    expectExtentsOfTheBox();
}

TEST_F(MeshTransformation, FlagsWithANegativeSumDoNotHaveTheMeshMeasured)
{
    parameters = with(parameters, {{&P::xSet0, 1}, {&P::zSameX, -2}});
    transformText(boxText);
    expectNothingMeasured();
}

TEST_F(MeshTransformation, AnyLengthFlagThatIsNotZeroHasTheMeshMeasured)
{
    for (int P::*flag : {&P::xSetL, &P::ySetL, &P::zSetL}) {
        parameters = with(unchanging(), {{flag, -1}});
        transformText(boxText);
        expectExtentsOfTheBox();
    }
}

TEST_F(MeshTransformation, OptionsReplaceTheValuesOfTheTransformer)
{
    parameters =
        with(parameters,
             {{origins, 1, 1, 1}, {&P::xSameY, 1}, {&P::ySameX, 1}, {&P::zSetL, 1}, {&P::zLength, 15}});
    transformText(boxText);
    EXPECT_EQ(transformer.xOfsB, -1.0);
    EXPECT_EQ(transformer.yOfsB, -2.0);
    EXPECT_EQ(transformer.zOfsB, -3.0);
    EXPECT_EQ(transformer.xScl, 2.0);
    EXPECT_EQ(transformer.yScl, 1.5);
    EXPECT_EQ(transformer.zScl, 0.5);
    for (const double offsetAfter : {transformer.xOfsA, transformer.yOfsA, transformer.zOfsA})
        EXPECT_EQ(offsetAfter, 0.0);
}

TEST_F(MeshTransformation, AFileWithoutFacetsHasTheExtentsOfNothing)
{
    parameters = with(parameters, {{&P::xSet0, 1}, {&P::ySameX, 1}, {&P::zSetL, 1}, {&P::zLength, 5}});
    const Outcome outcome = transformText("label\n");
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.message, "\n" + totals(1, 0));
    EXPECT_EQ(outcome.output, "label\n");
    expectExtents(1e25, -1e25, 1e25, -1e25, 1e25, -1e25);
    EXPECT_EQ(transformer.xOfsB, -1e25);
    EXPECT_EQ(transformer.yScl, 1.0);
    EXPECT_EQ(transformer.zScl, 5.0 / -2e25);
}

TEST_F(MeshTransformation, TheTotalsAreAppendedToTheMessage)
{
    writeBytes(temporaryFileName, "label\nendsolid\n");
    char message[stlMessageCapacity] = "before";
    EXPECT_EQ(callTransform(transformer, message, openStream(temporaryFileName, "r").release(),
                            openStream("out.stl", "w+").release(), parameters),
              0);
    EXPECT_EQ(message, "before" + totals(2, 0));
}

class TwoFiles : public MeshTransformation {
protected:
    TwoFiles()
    {
        writeBytes(temporaryFileName, boxText);
        writeBytes("other.stl", writtenMesh(other));
    }

    const FacetNumbers other = {{0, 0, 1}, {{100, 0, 0}, {104, 0, 0}, {100, 5, 6}}};
};

TEST_F(TwoFiles, WithoutAScanTheGivenStreamIsRewritten)
{
    EXPECT_EQ(transformFile("other.stl").output, writtenMesh(other));
}

TEST_F(TwoFiles, AfterTheFirstScanTheTemporaryFileReplacesTheGivenStream)
{
    parameters.xSet0 = 1;
    const Outcome outcome = transformFile("other.stl");
    EXPECT_EQ(outcome.result, 0);
    expectExtents(100, 104, 0, 5, 0, 6);
    EXPECT_EQ(outcome.output, writtenMesh({{0, 0, 1}, {{-99, 2, 3}, {-89, 22, 3}, {-99, 2, 33}}}));
}

TEST_F(TwoFiles, TheSecondScanReadsTheTemporaryFile)
{
    parameters = with(parameters, {{&P::xSet0, 1}, {&P::xSetL, 1}, {&P::xLength, 100}});
    const Outcome outcome = transformFile("other.stl");
    EXPECT_EQ(outcome.result, 0);
    expectExtentsOfTheBox();
    EXPECT_EQ(transformer.xOfsB, -100.0);
    EXPECT_EQ(transformer.xScl, 10.0);
    EXPECT_EQ(outcome.output, writtenMesh({{0, 0, 1}, {{-990, 2, 3}, {-890, 22, 3}, {-990, 2, 33}}}));
}

TEST_F(TwoFiles, AFailedSecondScanKeepsWhatTheOptionsReplaced)
{
    writeBytes(temporaryFileName, "label\nfacets\n");
    parameters = with(parameters, {{&P::xSet0, 1}, {&P::xSetL, 1}});
    expectFailure(transformFile("other.stl"), "\nLine 2. Not facet: facets\n");
    EXPECT_EQ(transformer.xOfsB, -100.0);
    EXPECT_EQ(transformer.xScl, 1.0);
}

// A temporary file that no longer exists is read as one without a first line.
TEST_F(TwoFiles, ATemporaryFileThatIsGoneFailsTheStepThatReadsIt)
{
    std::filesystem::remove(temporaryFileName);
    parameters = with(unchanging(), {{&P::xSet0, 1}});
    expectFailure(transformFile("other.stl"), "\n");
    parameters = with(unchanging(), {{&P::xSetL, 1}});
    expectFailure(transformFile("other.stl"), "\n");
    parameters = with(unchanging(), {{&P::xSet0, 1}, {&P::xSetL, 1}});
    expectFailure(transformFile("other.stl"), "\nError reading stl file\n");
}

TEST_F(MeshTransformation, AStreamIsReadFromItsPosition)
{
    const std::string skipped = "this is no label\n";
    writeBytes(temporaryFileName, skipped + boxText);
    std::FILE *input = openStream(temporaryFileName, "r").release();
    std::fseek(input, static_cast<long>(skipped.size()), SEEK_SET);
    char message[stlMessageCapacity] = "\n";
    EXPECT_EQ(callTransform(transformer, message, input, openStream("out.stl", "w+").release(), parameters),
              0);
    EXPECT_EQ(message, oneFacetMessage);
}

// ------------------------------------------------------------------------------------------------ failures

TEST_F(MeshTransformation, WithoutInputOrOutputNothingIsTouched)
{
    parameters = with(parameters, {{&P::xRotate, 1}, {&P::xSet0, 1}, {&P::xSetL, 1}});
    const Stream stream = streamOf(boxText);
    std::fseek(stream.get(), 2, SEEK_SET);
    char message[stlMessageCapacity] = "as before";
    EXPECT_EQ(callTransform(transformer, message, nullptr, stream.get(), parameters), -1);
    EXPECT_EQ(callTransform(transformer, message, stream.get(), nullptr, parameters), -1);
    EXPECT_EQ(callTransform(transformer, message, nullptr, nullptr, parameters), -1);
    EXPECT_STREQ(message, "as before");
    EXPECT_EQ(std::ftell(stream.get()), 2);
    EXPECT_EQ(bytesOf(stream), boxText);
}

TEST_F(MeshTransformation, AnEmptyFileFailsAndLeavesTheMessageAlone)
{
    expectFailure(transformText(""), "\n");
}

struct BrokenCase {
    const char *name;
    Settings settings;
    std::string message;
    std::string output;
};

class BrokenTemporaryFile : public MeshTransformation, public ::testing::WithParamInterface<BrokenCase> {};

TEST_P(BrokenTemporaryFile, FailsInThePassThatReadsItFirst)
{
    parameters = with(parameters, GetParam().settings);
    const Outcome outcome =
        transformText("label\n" + writtenFacet(box) + "  facet normal 0 0 1\nouter\nvert 1\n");
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, GetParam().message);
    EXPECT_EQ(outcome.output, GetParam().output);
}

const BrokenCase brokenCases[] = {
    {"TheTransformingPassHasWrittenTheLinesBefore",
     {},
     "Line 11. Not vertex: vert 1\n",
     "label\n" + writtenFacet(box) + "  facet normal 0 0 1\nouter\n"},
    {"TheScanForTheOptionsWritesNothing", {{&P::zSameX, 1}}, "\nLine 11. Not vertex: vert 1\n", ""},
    {"TheScanForTheLengthsWritesNothing", {{&P::ySetL, 1}}, "\nLine 11. Not vertex: vert 1\n", ""},
};

INSTANTIATE_TEST_SUITE_P(, BrokenTemporaryFile, ::testing::ValuesIn(brokenCases), nameOfCase);

TEST_F(MeshTransformation, AFailedFirstScanReplacesNothing)
{
    parameters = with(parameters, {{&P::xSet0, 1}, {&P::xSameY, 1}, {&P::xSetL, 1}});
    expectFailure(transformText(""), "\nError reading stl file\n");
    EXPECT_EQ(transformer.xOfsB, 0.0);
    EXPECT_EQ(transformer.xScl, 1.0);
}

TEST_F(MeshTransformation, AnOutputThatCannotBeWrittenWholeIsAFailure)
{
    writeBytes(temporaryFileName, boxText);
    expectFailure(transformFileAgain(temporaryFileName, "/dev/full"), "\nError writing stl file\n");
}

} // namespace
