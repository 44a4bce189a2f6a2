#include "tests/support/MeshFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TextFile.h"
#include "tests/transform/Transforming.h"
#include "transform/MeshTransformer.h"

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Names the cases of a table.
constexpr auto nameOfCase = [](const auto &instance) { return std::string(instance.param.name); };

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Ten long, twenty wide, thirty high.
const std::array<std::string_view, 4> box = {"0 0 1", "1 2 3", "11 22 3", "1 2 33"};
const std::string oneFacetTotals =
    "\n\nNumber lines read from stl file = 9\nNumber triangles read from stl file = 1\n";

std::string meshOf(const std::array<std::string_view, 4> &numbers)
{
    return "solid  (null)\n" + asciiFacet(numbers) + "endsolid  \n";
}

// The sign of a NaN is the processor's.
std::string withoutNanSigns(std::string text)
{
    for (std::size_t at = text.find("-NAN"); at != std::string::npos; at = text.find("-NAN"))
        text[at] = ' ';
    return text;
}

bool isOpen(int descriptor) { return fcntl(descriptor, F_GETFD) != -1 || errno != EBADF; }

long openDescriptors()
{
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator());
}

struct Outcome {
    int result = 99;
    std::string message;
    std::string output;
};

class MeshTransformation : public ::testing::Test {
protected:
    // The given file is passed as input; whatever comes of it, both streams must be closed afterwards, and
    // so must every stream that was opened in between.
    Outcome transformFile(const std::string &path)
    {
        const long descriptors = openDescriptors();
        std::FILE *input = openStream(path, "r").release();
        std::FILE *output = openStream("out.stl", "w+").release();
        const int inputDescriptor = fileno(input);
        const int outputDescriptor = fileno(output);

        Outcome outcome;
        char message[2048] = "\n";
        outcome.result = transform(transformer, message, input, output, parameters);
        outcome.message = message;

        EXPECT_FALSE(isOpen(inputDescriptor));
        EXPECT_FALSE(isOpen(outputDescriptor));
        EXPECT_EQ(openDescriptors(), descriptors);
        outcome.output = readBytes("out.stl");
        return outcome;
    }

    Outcome transformText(const std::string &temporaryFile)
    {
        writeBytes("_tmp_stl_", temporaryFile);
        return transformFile("_tmp_stl_");
    }

    Outcome transformFreshly(const std::string &temporaryFile)
    {
        transformer = transformerFor(parameters);
        return transformText(temporaryFile);
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

    TemporaryFolder folder;
    TransformParameters parameters = unchanging();
    MeshTransformer transformer = transformerFor(parameters);
};

// ---------------------------------------------------------------------------------------------- the record

TEST(MeshTransformerRecord, TakesScalesThenOffsetsBeforeThenOffsetsAfter)
{
    const MeshTransformer t(1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0);
    EXPECT_EQ(t.xScl, 1.0);
    EXPECT_EQ(t.yScl, 2.0);
    EXPECT_EQ(t.zScl, 3.0);
    EXPECT_EQ(t.xOfsB, 4.0);
    EXPECT_EQ(t.yOfsB, 5.0);
    EXPECT_EQ(t.zOfsB, 6.0);
    EXPECT_EQ(t.xOfsA, 7.0);
    EXPECT_EQ(t.yOfsA, 8.0);
    EXPECT_EQ(t.zOfsA, 9.0);
}

TEST(MeshTransformerRecord, StartsWithoutRotation)
{
    const MeshTransformer t(1.0, 1.0, 1.0, 0.0, 0.0, 0.0, 0.0, 0.0, 0.0);
    EXPECT_FALSE(t.rotX.inUse());
    EXPECT_FALSE(t.rotY.inUse());
    EXPECT_FALSE(t.rotZ.inUse());
}

// ------------------------------------------------------------------------------------- scales and offsets

struct PlacementCase {
    const char *name;
    void (*set)(TransformParameters &);
    std::array<std::string_view, 3> corners;
};

class BoxPlacement : public MeshTransformation, public ::testing::WithParamInterface<PlacementCase> {};

TEST_P(BoxPlacement, RewritesTheCornersAndCopiesTheRest)
{
    GetParam().set(parameters);
    const Outcome outcome = transformFreshly(meshOf(box));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.message, oneFacetTotals);
    const auto &corners = GetParam().corners;
    EXPECT_EQ(outcome.output, meshOf({"0 0 1", corners[0], corners[1], corners[2]}));
}

using Parameters = TransformParameters;

const PlacementCase placementCases[] = {
    {"NothingAsked",
     [](Parameters &) {},
     {" 1.00000000E+00  2.00000000E+00  3.00000000E+00", " 1.10000000E+01  2.20000000E+01  3.00000000E+00",
      " 1.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    {"OffsetBeforeThenScaleThenOffsetAfter",
     [](Parameters &p) {
         p.xScl = 2.0;
         p.yScl = -3.0;
         p.zScl = 0.5;
         p.xOfsB = 1.0;
         p.yOfsB = 2.0;
         p.zOfsB = 3.0;
         p.xOfsA = 10.0;
         p.yOfsA = 20.0;
         p.zOfsA = 30.0;
     },
     {" 1.40000000E+01  8.00000000E+00  3.30000000E+01", " 3.40000000E+01 -5.20000000E+01  3.30000000E+01",
      " 1.40000000E+01  8.00000000E+00  4.80000000E+01"}},
    {"ScalesOfZero",
     [](Parameters &p) { p = Parameters(); },
     {" 0.00000000E+00  0.00000000E+00  0.00000000E+00", " 0.00000000E+00  0.00000000E+00  0.00000000E+00",
      " 0.00000000E+00  0.00000000E+00  0.00000000E+00"}},
    {"AnglesAndLengthsWithoutTheirFlags",
     [](Parameters &p) { p.xAngle = p.yAngle = p.zAngle = p.xLength = p.yLength = p.zLength = 90.0; },
     {" 1.00000000E+00  2.00000000E+00  3.00000000E+00", " 1.10000000E+01  2.20000000E+01  3.00000000E+00",
      " 1.00000000E+00  2.00000000E+00  3.30000000E+01"}},

    {"OriginX",
     [](Parameters &p) { p.xSet0 = 1; },
     {" 0.00000000E+00  2.00000000E+00  3.00000000E+00", " 1.00000000E+01  2.20000000E+01  3.00000000E+00",
      " 0.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    {"OriginY",
     [](Parameters &p) { p.ySet0 = 1; },
     {" 1.00000000E+00  0.00000000E+00  3.00000000E+00", " 1.10000000E+01  2.00000000E+01  3.00000000E+00",
      " 1.00000000E+00  0.00000000E+00  3.30000000E+01"}},
    {"OriginZ",
     [](Parameters &p) { p.zSet0 = 1; },
     {" 1.00000000E+00  2.00000000E+00  0.00000000E+00", " 1.10000000E+01  2.20000000E+01  0.00000000E+00",
      " 1.00000000E+00  2.00000000E+00  3.00000000E+01"}},
    {"OriginReplacesTheOffsetBeforeAndKeepsScaleAndOffsetAfter",
     [](Parameters &p) {
         p.xSet0 = 1;
         p.xScl = 2.0;
         p.xOfsB = 1000.0;
         p.xOfsA = 5.0;
     },
     {" 5.00000000E+00  2.00000000E+00  3.00000000E+00", " 2.50000000E+01  2.20000000E+01  3.00000000E+00",
      " 5.00000000E+00  2.00000000E+00  3.30000000E+01"}},

    {"XSameY",
     [](Parameters &p) { p.xSameY = 1; },
     {" 2.00000000E+00  2.00000000E+00  3.00000000E+00", " 2.20000000E+01  2.20000000E+01  3.00000000E+00",
      " 2.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    {"XSameZ",
     [](Parameters &p) { p.xSameZ = 1; },
     {" 3.00000000E+00  2.00000000E+00  3.00000000E+00", " 3.30000000E+01  2.20000000E+01  3.00000000E+00",
      " 3.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    // Crossed: the length of Z, so 30 / 20.
    {"YSameXTakesTheLengthOfZ",
     [](Parameters &p) { p.ySameX = 1; },
     {" 1.00000000E+00  3.00000000E+00  3.00000000E+00", " 1.10000000E+01  3.30000000E+01  3.00000000E+00",
      " 1.00000000E+00  3.00000000E+00  3.30000000E+01"}},
    // Crossed: the length of X, so 10 / 20.
    {"YSameZTakesTheLengthOfX",
     [](Parameters &p) { p.ySameZ = 1; },
     {" 1.00000000E+00  1.00000000E+00  3.00000000E+00", " 1.10000000E+01  1.10000000E+01  3.00000000E+00",
      " 1.00000000E+00  1.00000000E+00  3.30000000E+01"}},
    {"ZSameX",
     [](Parameters &p) { p.zSameX = 1; },
     {" 1.00000000E+00  2.00000000E+00  1.00000000E+00", " 1.10000000E+01  2.20000000E+01  1.00000000E+00",
      " 1.00000000E+00  2.00000000E+00  1.10000000E+01"}},
    {"ZSameY",
     [](Parameters &p) { p.zSameY = 1; },
     {" 1.00000000E+00  2.00000000E+00  2.00000000E+00", " 1.10000000E+01  2.20000000E+01  2.00000000E+00",
      " 1.00000000E+00  2.00000000E+00  2.20000000E+01"}},
    {"XSameZWinsOverXSameY",
     [](Parameters &p) { p.xSameY = p.xSameZ = 1; },
     {" 3.00000000E+00  2.00000000E+00  3.00000000E+00", " 3.30000000E+01  2.20000000E+01  3.00000000E+00",
      " 3.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    {"YSameZWinsOverYSameX",
     [](Parameters &p) { p.ySameX = p.ySameZ = 1; },
     {" 1.00000000E+00  1.00000000E+00  3.00000000E+00", " 1.10000000E+01  1.10000000E+01  3.00000000E+00",
      " 1.00000000E+00  1.00000000E+00  3.30000000E+01"}},
    {"ZSameYWinsOverZSameX",
     [](Parameters &p) { p.zSameX = p.zSameY = 1; },
     {" 1.00000000E+00  2.00000000E+00  2.00000000E+00", " 1.10000000E+01  2.20000000E+01  2.00000000E+00",
      " 1.00000000E+00  2.00000000E+00  2.20000000E+01"}},
    {"SameLengthReplacesTheScaleAndKeepsTheOffsets",
     [](Parameters &p) {
         p.xSameY = 1;
         p.xScl = 7.0;
         p.xOfsB = 1.0;
         p.xOfsA = 0.5;
     },
     {" 4.50000000E+00  2.00000000E+00  3.00000000E+00", " 2.45000000E+01  2.20000000E+01  3.00000000E+00",
      " 4.50000000E+00  2.00000000E+00  3.30000000E+01"}},
    {"SameLengthMeasuresTheInputWhateverTheOtherScale",
     [](Parameters &p) {
         p.xSameY = 1;
         p.yScl = 10.0;
     },
     {" 2.00000000E+00  2.00000000E+01  3.00000000E+00", " 2.20000000E+01  2.20000000E+02  3.00000000E+00",
      " 2.00000000E+00  2.00000000E+01  3.30000000E+01"}},

    {"LengthX",
     [](Parameters &p) {
         p.xSetL = 1;
         p.xLength = 100.0;
     },
     {" 1.00000000E+01  2.00000000E+00  3.00000000E+00", " 1.10000000E+02  2.20000000E+01  3.00000000E+00",
      " 1.00000000E+01  2.00000000E+00  3.30000000E+01"}},
    {"LengthY",
     [](Parameters &p) {
         p.ySetL = 1;
         p.yLength = 100.0;
     },
     {" 1.00000000E+00  1.00000000E+01  3.00000000E+00", " 1.10000000E+01  1.10000000E+02  3.00000000E+00",
      " 1.00000000E+00  1.00000000E+01  3.30000000E+01"}},
    {"LengthZ",
     [](Parameters &p) {
         p.zSetL = 1;
         p.zLength = 90.0;
     },
     {" 1.00000000E+00  2.00000000E+00  9.00000000E+00", " 1.10000000E+01  2.20000000E+01  9.00000000E+00",
      " 1.00000000E+00  2.00000000E+00  9.90000000E+01"}},
    {"AllLengthsReplaceTheScales",
     [](Parameters &p) {
         p.xScl = p.yScl = p.zScl = 7.0;
         p.xSetL = p.ySetL = p.zSetL = 1;
         p.xLength = 5.0;
         p.yLength = 5.0;
         p.zLength = 15.0;
     },
     {" 5.00000000E-01  5.00000000E-01  1.50000000E+00", " 5.50000000E+00  5.50000000E+00  1.50000000E+00",
      " 5.00000000E-01  5.00000000E-01  1.65000000E+01"}},
    {"LengthOfZero",
     [](Parameters &p) { p.xSetL = 1; },
     {" 0.00000000E+00  2.00000000E+00  3.00000000E+00", " 0.00000000E+00  2.20000000E+01  3.00000000E+00",
      " 0.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    {"LengthDoesNotDependOnTheOffsets",
     [](Parameters &p) {
         p.xSetL = 1;
         p.xLength = 100.0;
         p.xOfsB = 1.0;
         p.xOfsA = 3.0;
     },
     {" 2.30000000E+01  2.00000000E+00  3.00000000E+00", " 1.23000000E+02  2.20000000E+01  3.00000000E+00",
      " 2.30000000E+01  2.00000000E+00  3.30000000E+01"}},
    {"LengthWinsOverSameLength",
     [](Parameters &p) {
         p.xSameY = p.xSameZ = p.xSetL = 1;
         p.xLength = 100.0;
     },
     {" 1.00000000E+01  2.00000000E+00  3.00000000E+00", " 1.10000000E+02  2.20000000E+01  3.00000000E+00",
      " 1.00000000E+01  2.00000000E+00  3.30000000E+01"}},
    {"LengthOfOneAxisLeavesSameLengthOfAnother",
     [](Parameters &p) {
         p.ySameX = p.xSetL = 1;
         p.xLength = 100.0;
     },
     {" 1.00000000E+01  3.00000000E+00  3.00000000E+00", " 1.10000000E+02  3.30000000E+01  3.00000000E+00",
      " 1.00000000E+01  3.00000000E+00  3.30000000E+01"}},
    {"LengthAndOriginTogether",
     [](Parameters &p) {
         p.xSet0 = p.xSetL = 1;
         p.xLength = 100.0;
     },
     {" 0.00000000E+00  2.00000000E+00  3.00000000E+00", " 1.00000000E+02  2.20000000E+01  3.00000000E+00",
      " 0.00000000E+00  2.00000000E+00  3.30000000E+01"}},

    // Only a flag of exactly one acts; the sum of the nine decides whether any is looked at.
    {"FlagsOfTwo",
     [](Parameters &p) { p.xSet0 = p.ySet0 = p.zSet0 = p.xSameY = p.xSameZ = p.ySameX = p.zSameY = 2; },
     {" 1.00000000E+00  2.00000000E+00  3.00000000E+00", " 1.10000000E+01  2.20000000E+01  3.00000000E+00",
      " 1.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    {"FlagsWhoseSumIsZero",
     [](Parameters &p) {
         p.xSet0 = 1;
         p.zSameY = -1;
     },
     {" 1.00000000E+00  2.00000000E+00  3.00000000E+00", " 1.10000000E+01  2.20000000E+01  3.00000000E+00",
      " 1.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    {"FlagsOneOfThemNegative",
     [](Parameters &p) {
         p.xSet0 = p.zSet0 = 1;
         p.ySet0 = -1;
     },
     {" 0.00000000E+00  2.00000000E+00  0.00000000E+00", " 1.00000000E+01  2.20000000E+01  0.00000000E+00",
      " 0.00000000E+00  2.00000000E+00  3.00000000E+01"}},
};

INSTANTIATE_TEST_SUITE_P(, BoxPlacement, ::testing::ValuesIn(placementCases), nameOfCase);

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
    EXPECT_EQ(outcome.message, oneFacetTotals);
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
    const Outcome outcome = transformText(meshOf(
        {"-0.00000000E+00 0 1", "-0.00000000E+00 -0.00000000E+00 -0.00000000E+00", "-0 1 -0", "1 -0 -1"}));
    EXPECT_EQ(outcome.output,
              meshOf({"-0.00000000E+00 0 1", " 0.00000000E+00  0.00000000E+00  0.00000000E+00",
                      " 0.00000000E+00  1.00000000E+00  0.00000000E+00",
                      " 1.00000000E+00  0.00000000E+00 -1.00000000E+00"}));
}

TEST_F(MeshTransformation, ACoordinateThatIsMissingIsTheLastWrittenOneTransformedOnceMore)
{
    parameters.xScl = 2.0;
    parameters.zOfsA = 1.0;
    const Outcome outcome = transformFreshly(meshOf({"0 0 1", "1 2", "x 5 6", "3 4 5"}));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.output, meshOf({"0 0 1", " 2.00000000E+00  2.00000000E+00  1.00000000E+00",
                                      " 4.00000000E+00  2.00000000E+00  2.00000000E+00",
                                      " 6.00000000E+00  4.00000000E+00  6.00000000E+00"}));
}

TEST_F(MeshTransformation, ArithmeticIsDoneInDoublePrecision)
{
    parameters.xScl = 1.0 / 3.0;
    parameters.xOfsB = 1e-9;
    const Outcome outcome = transformFreshly(meshOf({"0 0 1", "0 0 0", "1.00000001 0 0", "16777217 0 0"}));
    EXPECT_EQ(outcome.output, meshOf({"0 0 1", " 3.33333333E-10  0.00000000E+00  0.00000000E+00",
                                      " 3.33333337E-01  0.00000000E+00  0.00000000E+00",
                                      " 5.59240567E+06  0.00000000E+00  0.00000000E+00"}));
}

// ----------------------------------------------------------------------------------------------- rotations

struct RotationCase {
    const char *name;
    void (*set)(TransformParameters &);
    std::array<std::string_view, 4> input;
    std::array<std::string_view, 4> expected;
};

class Rotation : public MeshTransformation, public ::testing::WithParamInterface<RotationCase> {};

TEST_P(Rotation, TurnsNormalsAndCorners)
{
    GetParam().set(parameters);
    const Outcome outcome = transformFreshly(meshOf(GetParam().input));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.message, oneFacetTotals);
    EXPECT_EQ(outcome.output, meshOf(GetParam().expected));
}

const RotationCase rotationCases[] = {
    // The cosine of 90 * 0.017453293 is -4.32e-8; with the full-precision factor it would be 6e-17.
    {"AboutXBy90",
     [](Parameters &p) {
         p.xRotate = 1;
         p.xAngle = 90.0;
     },
     {"0 0 1", "1 0 0", "0 1 0", "0 0 1"},
     {" 0.00000000E+00 -1.00000000E+00 -4.32051034E-08", " 1.00000000E+00  0.00000000E+00  0.00000000E+00",
      " 0.00000000E+00 -4.32051034E-08  1.00000000E+00", " 0.00000000E+00 -1.00000000E+00 -4.32051034E-08"}},
    // A positive angle turns +X towards +Z.
    {"AboutYBy90",
     [](Parameters &p) {
         p.yRotate = 1;
         p.yAngle = 90.0;
     },
     {"0 0 1", "1 0 0", "0 1 0", "0 0 1"},
     {"-1.00000000E+00  0.00000000E+00 -4.32051034E-08", "-4.32051034E-08  0.00000000E+00  1.00000000E+00",
      " 0.00000000E+00  1.00000000E+00  0.00000000E+00", "-1.00000000E+00  0.00000000E+00 -4.32051034E-08"}},
    {"AboutZBy90",
     [](Parameters &p) {
         p.zRotate = 1;
         p.zAngle = 90.0;
     },
     {"0 0 1", "1 0 0", "0 1 0", "0 0 1"},
     {" 0.00000000E+00  0.00000000E+00  1.00000000E+00", "-4.32051034E-08  1.00000000E+00  0.00000000E+00",
      "-1.00000000E+00 -4.32051034E-08  0.00000000E+00", " 0.00000000E+00  0.00000000E+00  1.00000000E+00"}},
    {"AboutXByMoreThanATurnBackwards",
     [](Parameters &p) {
         p.xRotate = 1;
         p.xAngle = -450.0;
     },
     {"0 0 1", "1 2 3", "11 22 3", "1 2 33"},
     {" 0.00000000E+00  1.00000000E+00 -2.16025518E-07", " 1.00000000E+00  2.99999957E+00 -2.00000065E+00",
      " 1.10000000E+01  2.99999525E+00 -2.20000006E+01", " 1.00000000E+00  3.29999996E+01 -2.00000713E+00"}},
    {"AboutXThenYThenZ",
     [](Parameters &p) {
         p.xRotate = p.yRotate = p.zRotate = 1;
         p.xAngle = 30.0;
         p.yAngle = 60.0;
         p.zAngle = 90.0;
     },
     {"0 0 1", "1 2 3", "11 22 3", "1 2 33"},
     {" 5.00000045E-01 -7.49999985E-01  4.33012677E-01", "-2.32050643E-01 -2.61602549E+00  2.66506344E+00",
      "-1.75525584E+01 -6.27628089E+00  1.63253175E+01", " 1.47679507E+01 -2.51160250E+01  1.56554437E+01"}},
    {"AfterScaleAndOffsetsWhichLeaveTheNormalAlone",
     [](Parameters &p) {
         p.zRotate = 1;
         p.zAngle = 90.0;
         p.xOfsB = 1.0;
         p.xScl = 2.0;
         p.xOfsA = 10.0;
     },
     {"1 0 0", "1 2 3", "11 22 3", "1 2 33"},
     {"-4.32051034E-08  1.00000000E+00  0.00000000E+00", "-2.00000060E+00  1.39999999E+01  3.00000000E+00",
      "-2.20000015E+01  3.39999990E+01  3.00000000E+00", "-2.00000060E+00  1.39999999E+01  3.30000000E+01"}},
    {"AfterALengthMeasuredOnTheUnturnedMesh",
     [](Parameters &p) {
         p.zRotate = p.xSetL = 1;
         p.zAngle = 90.0;
         p.xLength = 100.0;
     },
     {"0 0 1", "1 2 3", "11 22 3", "1 2 33"},
     {" 0.00000000E+00  0.00000000E+00  1.00000000E+00", "-2.00000043E+00  9.99999991E+00  3.00000000E+00",
      "-2.20000048E+01  1.09999999E+02  3.00000000E+00", "-2.00000043E+00  9.99999991E+00  3.30000000E+01"}},
    // Still a rotation: the normal is read and written anew.
    {"AboutXByZero",
     [](Parameters &p) { p.xRotate = 1; },
     {"-0 3 -4e2", "1 2 3", "11 22 3", "1 2 33"},
     {" 0.00000000E+00  3.00000000E+00 -4.00000000E+02", " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
      " 1.10000000E+01  2.20000000E+01  3.00000000E+00", " 1.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    {"AboutYByZero",
     [](Parameters &p) { p.yRotate = 1; },
     {"-0 3 -4e2", "1 2 3", "11 22 3", "1 2 33"},
     {" 0.00000000E+00  3.00000000E+00 -4.00000000E+02", " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
      " 1.10000000E+01  2.20000000E+01  3.00000000E+00", " 1.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    // Here every product of the first row is a minus zero.
    {"AboutZByZero",
     [](Parameters &p) { p.zRotate = 1; },
     {"-0 3 -4e2", "1 2 3", "11 22 3", "1 2 33"},
     {"-0.00000000E+00  3.00000000E+00 -4.00000000E+02", " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
      " 1.10000000E+01  2.20000000E+01  3.00000000E+00", " 1.00000000E+00  2.00000000E+00  3.30000000E+01"}},
    // The first corner takes the missing z from the normal, the normal's own missing z is zero.
    {"NormalAndCornersShareTheirNumbers",
     [](Parameters &p) { p.xRotate = 1; },
     {"7 8", "1 2", "11", "nothing"},
     {" 7.00000000E+00  8.00000000E+00  0.00000000E+00", " 1.00000000E+00  2.00000000E+00  0.00000000E+00",
      " 1.10000000E+01  2.00000000E+00  0.00000000E+00", " 1.10000000E+01  2.00000000E+00  0.00000000E+00"}},
};

INSTANTIATE_TEST_SUITE_P(, Rotation, ::testing::ValuesIn(rotationCases), nameOfCase);

TEST_F(MeshTransformation, MatricesAreStoredByRows)
{
    parameters.xRotate = parameters.yRotate = parameters.zRotate = 1;
    parameters.xAngle = 30.0;
    parameters.yAngle = 45.0;
    parameters.zAngle = -60.0;
    transformText(meshOf(box));

    const auto expectRows = [](const RotationMatrix &matrix, const double(&rows)[3][3]) {
        for (int row = 0; row < 3; ++row) {
            for (int column = 0; column < 3; ++column)
                EXPECT_EQ(matrix[row][column], rows[row][column]) << row << ", " << column;
        }
    };
    const double cx = std::cos(30.0 * 0.017453293), sx = std::sin(30.0 * 0.017453293);
    const double cy = std::cos(45.0 * 0.017453293), sy = std::sin(45.0 * 0.017453293);
    const double cz = std::cos(-60.0 * 0.017453293), sz = std::sin(-60.0 * 0.017453293);
    expectRows(transformer.rotX, {{1.0, 0.0, 0.0}, {0.0, cx, -sx}, {0.0, sx, cx}});
    expectRows(transformer.rotY, {{cy, 0.0, -sy}, {0.0, 1.0, 0.0}, {sy, 0.0, cy}});
    expectRows(transformer.rotZ, {{cz, -sz, 0.0}, {sz, cz, 0.0}, {0.0, 0.0, 1.0}});
}

TEST_F(MeshTransformation, RotationsNotAskedForCarryTheMarker)
{
    parameters.yRotate = 1;
    transformText(meshOf(box));
    EXPECT_EQ(transformer.rotX[0][0], 999.0);
    EXPECT_EQ(transformer.rotY[0][0], 1.0);
    EXPECT_EQ(transformer.rotZ[0][0], 999.0);
}

TEST_F(MeshTransformation, RotationsOfAnEarlierCallAreForgotten)
{
    parameters.xRotate = parameters.yRotate = parameters.zRotate = 1;
    transformText(meshOf(box));
    parameters = unchanging();
    const Outcome outcome = transformText(meshOf({"-0 0 1", "1 0 0", "0 1 0", "0 0 1"}));
    EXPECT_EQ(transformer.rotX[0][0], 999.0);
    EXPECT_EQ(transformer.rotY[0][0], 999.0);
    EXPECT_EQ(transformer.rotZ[0][0], 999.0);
    EXPECT_EQ(outcome.output, meshOf({"-0 0 1", " 1.00000000E+00  0.00000000E+00  0.00000000E+00",
                                      " 0.00000000E+00  1.00000000E+00  0.00000000E+00",
                                      " 0.00000000E+00  0.00000000E+00  1.00000000E+00"}));
}

TEST_F(MeshTransformation, AngleIsTheOneConvertedLast)
{
    parameters.xAngle = 30.0;
    parameters.yAngle = 60.0;
    parameters.zAngle = 120.0;
    const auto angleAfter = [this](int x, int y, int z) {
        parameters.xRotate = x;
        parameters.yRotate = y;
        parameters.zRotate = z;
        transformFreshly(meshOf(box));
        return transformer.angle;
    };
    EXPECT_EQ(angleAfter(1, 0, 0), 30.0 * 0.017453293);
    EXPECT_EQ(angleAfter(1, 1, 0), 60.0 * 0.017453293);
    EXPECT_EQ(angleAfter(1, 1, 1), 120.0 * 0.017453293);
    EXPECT_EQ(angleAfter(0, 1, 0), 60.0 * 0.017453293);
}

class AngleWithoutCosine : public MeshTransformation, public ::testing::WithParamInterface<double> {};

// The cosine stands in the top-left element of these two, and no comparison with NaN holds.
TEST_P(AngleWithoutCosine, SwitchesTheRotationsAboutYAndZOff)
{
    parameters.yRotate = parameters.zRotate = 1;
    parameters.yAngle = parameters.zAngle = GetParam();
    const Outcome outcome = transformText(meshOf({"-0 0 1", "1 0 0", "0 1 0", "0 0 1"}));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.output, meshOf({"-0 0 1", " 1.00000000E+00  0.00000000E+00  0.00000000E+00",
                                      " 0.00000000E+00  1.00000000E+00  0.00000000E+00",
                                      " 0.00000000E+00  0.00000000E+00  1.00000000E+00"}));
}

TEST_P(AngleWithoutCosine, LeavesTheOtherRotationsOn)
{
    parameters.xRotate = parameters.yRotate = parameters.zRotate = 1;
    parameters.yAngle = GetParam();
    parameters.zAngle = 90.0;
    const Outcome outcome = transformText(meshOf({"0 0 1", "1 0 0", "0 1 0", "0 0 1"}));
    EXPECT_EQ(outcome.output, meshOf({" 0.00000000E+00  0.00000000E+00  1.00000000E+00",
                                      "-4.32051034E-08  1.00000000E+00  0.00000000E+00",
                                      "-1.00000000E+00 -4.32051034E-08  0.00000000E+00",
                                      " 0.00000000E+00  0.00000000E+00  1.00000000E+00"}));
}

// About X the top-left element is 1 whatever the angle.
TEST_P(AngleWithoutCosine, KeepsTheRotationAboutXOn)
{
    parameters.xRotate = 1;
    parameters.xAngle = GetParam();
    const Outcome outcome = transformText(meshOf({"0 0 1", "1 2 3", "11 22 3", "-0 0 0"}));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(withoutNanSigns(outcome.output), meshOf({" 0.00000000E+00             NAN             NAN",
                                                       " 1.00000000E+00             NAN             NAN",
                                                       " 1.10000000E+01             NAN             NAN",
                                                       " 0.00000000E+00             NAN             NAN"}));
}

constexpr auto nameOfAngle = [](const auto &instance) {
    return std::isnan(instance.param) ? "NotANumber" : instance.param > 0.0 ? "Infinite" : "MinusInfinite";
};

INSTANTIATE_TEST_SUITE_P(, AngleWithoutCosine, ::testing::Values(infinity, -infinity, notANumber),
                         nameOfAngle);

// ------------------------------------------------------------------------------------------- zero extents

struct FlatCase {
    const char *name;
    void (*set)(TransformParameters &);
    std::array<std::string_view, 3> corners;
};

class FlatMesh : public MeshTransformation, public ::testing::WithParamInterface<FlatCase> {};

TEST_P(FlatMesh, IsScaledByWhatTheDivisionGives)
{
    GetParam().set(parameters);
    const Outcome outcome = transformFreshly(meshOf({"0 1 0", "1 0 3", "11 0 3", "1 0 33"}));
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.message, oneFacetTotals);
    const auto &corners = GetParam().corners;
    EXPECT_EQ(withoutNanSigns(outcome.output), meshOf({"0 1 0", corners[0], corners[1], corners[2]}));
}

const FlatCase flatCases[] = {
    {"AnInfiniteScaleOfAPositiveCoordinate",
     [](Parameters &p) {
         p.ySameX = 1;
         p.yOfsB = 0.25;
     },
     {" 1.00000000E+00             INF  3.00000000E+00", " 1.10000000E+01             INF  3.00000000E+00",
      " 1.00000000E+00             INF  3.30000000E+01"}},
    {"AnInfiniteScaleOfANegativeCoordinate",
     [](Parameters &p) {
         p.ySameZ = 1;
         p.yOfsB = -0.25;
     },
     {" 1.00000000E+00            -INF  3.00000000E+00", " 1.10000000E+01            -INF  3.00000000E+00",
      " 1.00000000E+00            -INF  3.30000000E+01"}},
    {"AnInfiniteScaleOfZero",
     [](Parameters &p) { p.ySameZ = 1; },
     {" 1.00000000E+00             NAN  3.00000000E+00", " 1.10000000E+01             NAN  3.00000000E+00",
      " 1.00000000E+00             NAN  3.30000000E+01"}},
    {"ALengthForTheFlatAxis",
     [](Parameters &p) {
         p.ySetL = 1;
         p.yLength = 5.0;
         p.yOfsB = 1.0;
     },
     {" 1.00000000E+00             INF  3.00000000E+00", " 1.10000000E+01             INF  3.00000000E+00",
      " 1.00000000E+00             INF  3.30000000E+01"}},
    {"ALengthOfZeroForTheFlatAxis",
     [](Parameters &p) {
         p.ySetL = 1;
         p.yOfsB = 1.0;
     },
     {" 1.00000000E+00             NAN  3.00000000E+00", " 1.10000000E+01             NAN  3.00000000E+00",
      " 1.00000000E+00             NAN  3.30000000E+01"}},
    {"TheLengthOfTheFlatAxisForAnother",
     [](Parameters &p) { p.zSameY = p.xSameY = 1; },
     {" 0.00000000E+00  0.00000000E+00  0.00000000E+00", " 0.00000000E+00  0.00000000E+00  0.00000000E+00",
      " 0.00000000E+00  0.00000000E+00  0.00000000E+00"}},
};

INSTANTIATE_TEST_SUITE_P(, FlatMesh, ::testing::ValuesIn(flatCases), nameOfCase);

TEST_F(MeshTransformation, AMeshWithoutAnyExtentHasUndefinedScales)
{
    parameters.xSameY = parameters.ySameZ = parameters.zSameX = 1;
    const Outcome outcome = transformText(meshOf({"0 0 1", "1 2 3", "1 2 3", "1 2 3"}));
    EXPECT_EQ(outcome.result, 0);
    const std::string_view undefined = "            NAN             NAN             NAN";
    EXPECT_EQ(withoutNanSigns(outcome.output), meshOf({"0 0 1", undefined, undefined, undefined}));
}

// --------------------------------------------------------------------------------------- scans and streams

TEST_F(MeshTransformation, WithoutSuchOptionsNothingIsMeasured)
{
    parameters.zRotate = 1;
    transformText(meshOf(box));
    expectExtents(0.0, 0.0, 0.0, 0.0, 0.0, 0.0);
}

TEST_F(MeshTransformation, ExtentsOfTheUntransformedInputAreKept)
{
    parameters.xScl = parameters.yScl = parameters.zScl = 5.0;
    parameters.xOfsB = parameters.yOfsA = 100.0;
    parameters.xRotate = 1;
    parameters.xAngle = 45.0;
    parameters.ySet0 = 1;
    transformFreshly(meshOf(box));
    expectExtents(1.0, 11.0, 2.0, 22.0, 3.0, 33.0);
    EXPECT_EQ(transformer.yOfsB, -2.0);
    EXPECT_EQ(transformer.xOfsB, 100.0);
    EXPECT_EQ(transformer.yOfsA, 100.0);
}

TEST_F(MeshTransformation, AFlagThatDoesNotActStillHasTheMeshMeasured)
{
    parameters.ySameZ = 2;
    transformText(meshOf(box));
    expectExtents(1.0, 11.0, 2.0, 22.0, 3.0, 33.0);
}

TEST_F(MeshTransformation, FlagsWithANegativeSumDoNotHaveTheMeshMeasured)
{
    parameters.xSet0 = 1;
    parameters.zSameX = -2;
    transformText(meshOf(box));
    expectExtents(0.0, 0.0, 0.0, 0.0, 0.0, 0.0);
}

TEST_F(MeshTransformation, ALengthFlagOfAnyKindHasTheMeshMeasured)
{
    for (int TransformParameters::*flag :
         {&TransformParameters::xSetL, &TransformParameters::ySetL, &TransformParameters::zSetL}) {
        parameters = unchanging();
        parameters.*flag = -1;
        transformFreshly(meshOf(box));
        expectExtents(1.0, 11.0, 2.0, 22.0, 3.0, 33.0);
    }
}

TEST_F(MeshTransformation, OptionsReplaceTheValuesOfTheTransformer)
{
    parameters.xSet0 = parameters.ySet0 = parameters.zSet0 = 1;
    parameters.xSameY = parameters.ySameX = parameters.zSetL = 1;
    parameters.zLength = 15.0;
    transformText(meshOf(box));
    EXPECT_EQ(transformer.xOfsB, -1.0);
    EXPECT_EQ(transformer.yOfsB, -2.0);
    EXPECT_EQ(transformer.zOfsB, -3.0);
    EXPECT_EQ(transformer.xScl, 2.0);
    EXPECT_EQ(transformer.yScl, 1.5);
    EXPECT_EQ(transformer.zScl, 0.5);
    EXPECT_EQ(transformer.xOfsA, 0.0);
    EXPECT_EQ(transformer.yOfsA, 0.0);
    EXPECT_EQ(transformer.zOfsA, 0.0);
}

TEST_F(MeshTransformation, AFileWithoutFacetsHasTheExtentsOfNothing)
{
    parameters.xSet0 = parameters.ySameX = parameters.zSetL = 1;
    parameters.zLength = 5.0;
    const Outcome outcome = transformText("label\n");
    EXPECT_EQ(outcome.result, 0);
    EXPECT_EQ(outcome.message,
              "\n\nNumber lines read from stl file = 1\nNumber triangles read from stl file = 0\n");
    EXPECT_EQ(outcome.output, "label\n");
    expectExtents(1e25, -1e25, 1e25, -1e25, 1e25, -1e25);
    EXPECT_EQ(transformer.xOfsB, -1e25);
    EXPECT_EQ(transformer.yScl, 1.0);
    EXPECT_EQ(transformer.zScl, 5.0 / -2e25);
}

TEST_F(MeshTransformation, TheTotalsFollowWhatTheMessageHolds)
{
    writeBytes("_tmp_stl_", "label\nendsolid\n");
    char message[2048] = "before";
    EXPECT_EQ(transform(transformer, message, openStream("_tmp_stl_", "r").release(),
                        openStream("out.stl", "w+").release(), parameters),
              0);
    EXPECT_STREQ(message,
                 "before\nNumber lines read from stl file = 2\nNumber triangles read from stl file = 0\n");
}

const std::array<std::string_view, 4> otherBox = {"0 0 1", "100 0 0", "104 0 0", "100 5 6"};

TEST_F(MeshTransformation, WithoutAScanTheGivenStreamIsRewritten)
{
    writeBytes("_tmp_stl_", meshOf(box));
    writeBytes("other.stl", meshOf(otherBox));
    const Outcome outcome = transformFile("other.stl");
    EXPECT_EQ(outcome.output, meshOf({"0 0 1", " 1.00000000E+02  0.00000000E+00  0.00000000E+00",
                                      " 1.04000000E+02  0.00000000E+00  0.00000000E+00",
                                      " 1.00000000E+02  5.00000000E+00  6.00000000E+00"}));
}

TEST_F(MeshTransformation, AfterTheFirstScanTheTemporaryFileTakesTheGivenStreamsPlace)
{
    writeBytes("_tmp_stl_", meshOf(box));
    writeBytes("other.stl", meshOf(otherBox));
    parameters.xSet0 = 1;
    const Outcome outcome = transformFile("other.stl");
    EXPECT_EQ(outcome.result, 0);
    expectExtents(100.0, 104.0, 0.0, 5.0, 0.0, 6.0);
    EXPECT_EQ(outcome.output, meshOf({"0 0 1", "-9.90000000E+01  2.00000000E+00  3.00000000E+00",
                                      "-8.90000000E+01  2.20000000E+01  3.00000000E+00",
                                      "-9.90000000E+01  2.00000000E+00  3.30000000E+01"}));
}

TEST_F(MeshTransformation, TheSecondScanReadsTheTemporaryFile)
{
    writeBytes("_tmp_stl_", meshOf(box));
    writeBytes("other.stl", meshOf(otherBox));
    parameters.xSet0 = parameters.xSetL = 1;
    parameters.xLength = 100.0;
    const Outcome outcome = transformFile("other.stl");
    EXPECT_EQ(outcome.result, 0);
    expectExtents(1.0, 11.0, 2.0, 22.0, 3.0, 33.0);
    EXPECT_EQ(transformer.xOfsB, -100.0);
    EXPECT_EQ(transformer.xScl, 10.0);
    EXPECT_EQ(outcome.output, meshOf({"0 0 1", "-9.90000000E+02  2.00000000E+00  3.00000000E+00",
                                      "-8.90000000E+02  2.20000000E+01  3.00000000E+00",
                                      "-9.90000000E+02  2.00000000E+00  3.30000000E+01"}));
}

TEST_F(MeshTransformation, AStreamIsReadFromWhereItStands)
{
    const std::string skipped = "this is no label\n";
    writeBytes("_tmp_stl_", skipped + meshOf(box));
    std::FILE *input = openStream("_tmp_stl_", "r").release();
    std::fseek(input, static_cast<long>(skipped.size()), SEEK_SET);
    char message[2048] = "\n";
    EXPECT_EQ(transform(transformer, message, input, openStream("out.stl", "w+").release(), parameters), 0);
    EXPECT_EQ(message, oneFacetTotals);
}

// ------------------------------------------------------------------------------------------------ failures

TEST_F(MeshTransformation, WithoutInputNothingIsTouched)
{
    const Stream output = streamOf("kept");
    std::fseek(output.get(), 2, SEEK_SET);
    char message[2048] = "as before";
    parameters.xRotate = parameters.xSet0 = parameters.xSetL = 1;
    EXPECT_EQ(transform(transformer, message, nullptr, output.get(), parameters), -1);
    EXPECT_STREQ(message, "as before");
    EXPECT_EQ(std::ftell(output.get()), 2);
    EXPECT_EQ(bytesOf(output), "kept");
}

TEST_F(MeshTransformation, WithoutOutputNothingIsTouched)
{
    const Stream input = streamOf(meshOf(box));
    std::fseek(input.get(), 2, SEEK_SET);
    char message[2048] = "as before";
    parameters.xRotate = parameters.xSet0 = parameters.xSetL = 1;
    EXPECT_EQ(transform(transformer, message, input.get(), nullptr, parameters), -1);
    EXPECT_STREQ(message, "as before");
    EXPECT_EQ(std::ftell(input.get()), 2);
    EXPECT_EQ(bytesOf(input), meshOf(box));
}

TEST_F(MeshTransformation, WithoutBothStreamsItFails)
{
    char message[2048] = "as before";
    EXPECT_EQ(transform(transformer, message, nullptr, nullptr, parameters), -1);
    EXPECT_STREQ(message, "as before");
}

TEST_F(MeshTransformation, AnEmptyFileFailsWithTheMessageAsItWas)
{
    const Outcome outcome = transformText("");
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "\n");
    EXPECT_EQ(outcome.output, "");
}

struct BrokenCase {
    const char *name;
    void (*set)(TransformParameters &);
    std::string message;
    std::string output;
};

class BrokenTemporaryFile : public MeshTransformation, public ::testing::WithParamInterface<BrokenCase> {};

TEST_P(BrokenTemporaryFile, FailsInThePassThatMeetsIt)
{
    GetParam().set(parameters);
    const Outcome outcome =
        transformText("label\n" + asciiFacet(box) + "  facet normal 0 0 1\nouter\nvert 1\n");
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, GetParam().message);
    EXPECT_EQ(outcome.output, GetParam().output);
}

const BrokenCase brokenCases[] = {
    {"TheTransformingPassHasWrittenTheLinesBefore", [](Parameters &) {}, "Line 11. Not vertex: vert 1\n",
     "label\n" +
         asciiFacet({"0 0 1", " 1.00000000E+00  2.00000000E+00  3.00000000E+00",
                     " 1.10000000E+01  2.20000000E+01  3.00000000E+00",
                     " 1.00000000E+00  2.00000000E+00  3.30000000E+01"}) +
         "  facet normal 0 0 1\nouter\n"},
    {"TheScanForTheOptionsWritesNothing", [](Parameters &p) { p.zSameX = 1; },
     "\nLine 11. Not vertex: vert 1\n", ""},
    {"TheScanForTheLengthsWritesNothing", [](Parameters &p) { p.ySetL = 1; },
     "\nLine 11. Not vertex: vert 1\n", ""},
};

INSTANTIATE_TEST_SUITE_P(, BrokenTemporaryFile, ::testing::ValuesIn(brokenCases), nameOfCase);

TEST_F(MeshTransformation, AFailedFirstScanReplacesNothing)
{
    parameters.xSet0 = parameters.xSameY = parameters.xSetL = 1;
    const Outcome outcome = transformText("");
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "\nError reading stl file\n");
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(transformer.xOfsB, 0.0);
    EXPECT_EQ(transformer.xScl, 1.0);
}

TEST_F(MeshTransformation, AFailedSecondScanKeepsWhatTheOptionsReplaced)
{
    writeBytes("_tmp_stl_", "label\nfacets\n");
    writeBytes("other.stl", meshOf(box));
    parameters.xSet0 = parameters.xSetL = 1;
    const Outcome outcome = transformFile("other.stl");
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "\nLine 2. Not facet: facets\n");
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(transformer.xOfsB, -1.0);
    EXPECT_EQ(transformer.xScl, 1.0);
}

// A temporary file that is gone reads as one without a first line.

TEST_F(MeshTransformation, TemporaryFileGoneAfterTheOptionsScanFailsWithTheMessageAsItWas)
{
    writeBytes("other.stl", meshOf(box));
    parameters.xSet0 = 1;
    const Outcome outcome = transformFile("other.stl");
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "\n");
    EXPECT_EQ(outcome.output, "");
}

TEST_F(MeshTransformation, TemporaryFileGoneAfterTheLengthsScanFailsWithTheMessageAsItWas)
{
    writeBytes("other.stl", meshOf(box));
    parameters.xSetL = 1;
    const Outcome outcome = transformFile("other.stl");
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "\n");
    EXPECT_EQ(outcome.output, "");
}

TEST_F(MeshTransformation, TemporaryFileGoneBetweenTheScansFailsTheSecond)
{
    writeBytes("other.stl", meshOf(box));
    parameters.xSet0 = parameters.xSetL = 1;
    const Outcome outcome = transformFile("other.stl");
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "\nError reading stl file\n");
    EXPECT_EQ(outcome.output, "");
}

TEST_F(MeshTransformation, AnOutputThatCannotBeWrittenWholeIsAFailure)
{
    writeBytes("_tmp_stl_", meshOf(box));
    std::FILE *output = openStream("/dev/full", "w+").release();
    const int descriptor = fileno(output);
    char message[2048] = "\n";
    EXPECT_EQ(transform(transformer, message, openStream("_tmp_stl_", "r").release(), output, parameters),
              -1);
    EXPECT_STREQ(message, "\nError writing stl file\n");
    EXPECT_FALSE(isOpen(descriptor));
}

} // namespace
