// The bytes that the engine makes, as a table of hashes: one line per output, its name and its hash.
//
//   tst_SameBytes              prints the table
//   tst_SameBytes file         compares it with the one in the file
//
// Works with files in the current folder. Carriage returns do not count, since some systems end lines with
// them. Needs no test framework, so that it can be built for any machine.

#include "stl/ExactTrigonometry.h"
#include "stl/StlLimits.h"
#include "stl/StlReader.h"
#include "stl/StlWriter.h"
#include "stl/Stream.h"
#include "tests/bytes/ByteInputs.h"
#include "transform/MeshTransformer.h"
#include "transform/RunFiles.h"
#include "transform/TransformParameters.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

constexpr const char *inputName = "same-bytes-in";
constexpr const char *outputName = "same-bytes-out";

// FNV-1a with 64 bits.
std::uint64_t hashOf(const std::string &bytes)
{
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : bytes) {
        if (c == '\r')
            continue;
        hash ^= static_cast<unsigned char>(c);
        hash *= 0x100000001B3U;
    }
    return hash;
}

Stream opened(const char *name, const char *mode)
{
    Stream stream(std::fopen(name, mode));
    if (!stream)
        throw std::runtime_error(std::string("cannot open ") + name);
    return stream;
}

void write(const char *name, const std::string &bytes)
{
    const Stream file = opened(name, "wb");
    if (std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
        throw std::runtime_error(std::string("cannot write ") + name);
}

std::string read(const char *name)
{
    const Stream file = opened(name, "rb");
    std::string bytes;
    char block[4096];
    for (std::size_t got = 1; got > 0;) {
        got = std::fread(block, 1, sizeof block, file.get());
        bytes.append(block, got);
    }
    return bytes;
}

struct NamedOptions {
    const char *name;
    void (*set)(TransformParameters &);
};

using Parameters = TransformParameters;

void rotateAll(Parameters &p, double x, double y, double z)
{
    p.xRotate = p.yRotate = p.zRotate = 1;
    p.xAngle = x;
    p.yAngle = y;
    p.zAngle = z;
}

constexpr NamedOptions options[] = {
    {"none", [](Parameters &) {}},
    {"placed",
     [](Parameters &p) {
         p.xScl = 2.54;
         p.yScl = -0.1;
         p.zScl = 1e-3;
         p.xOfsB = 1.25;
         p.yOfsB = -0.7;
         p.zOfsA = 1e6;
     }},
    {"scales-of-zero", [](Parameters &p) { p.xScl = p.yScl = p.zScl = 0.0; }},
    {"huge-and-tiny",
     [](Parameters &p) {
         p.xScl = 1e300;
         p.yScl = 1e-300;
         p.zOfsA = 1e99;
     }},
    {"infinite",
     [](Parameters &p) {
         p.xScl = infinity;
         p.yOfsB = -infinity;
         p.zOfsA = infinity;
     }},
    {"undefined",
     [](Parameters &p) {
         p.xScl = notANumber;
         p.yOfsB = -notANumber;
         p.zOfsA = notANumber;
     }},
    {"about-x",
     [](Parameters &p) {
         p.xRotate = 1;
         p.xAngle = 30.0;
     }},
    {"about-y",
     [](Parameters &p) {
         p.yRotate = 1;
         p.yAngle = 338.0;
     }},
    {"about-z",
     [](Parameters &p) {
         p.zRotate = 1;
         p.zAngle = -90.0;
     }},
    {"about-all", [](Parameters &p) { rotateAll(p, 80.0, 280.0, 12.5); }},
    {"huge-angles", [](Parameters &p) { rotateAll(p, 1e22, -1e300, 123456789.0); }},
    {"odd-angles",
     [](Parameters &p) {
         rotateAll(p, infinity, notANumber, 0.0);
         p.zRotate = 0;
     }},
    {"undefined-and-turned",
     [](Parameters &p) {
         rotateAll(p, 30.0, 10.0, 20.0);
         p.yScl = -notANumber;
         p.zOfsB = notANumber;
         p.xOfsA = infinity;
     }},
    {"origins", [](Parameters &p) { p.xSet0 = p.ySet0 = p.zSet0 = 1; }},
    {"same-lengths", [](Parameters &p) { p.xSameY = p.ySameX = p.zSameY = 1; }},
    {"other-same-lengths", [](Parameters &p) { p.xSameZ = p.ySameZ = p.zSameX = 1; }},
    {"lengths",
     [](Parameters &p) {
         p.xSetL = p.ySetL = p.zSetL = 1;
         p.xLength = 100.0;
         p.yLength = 0.0;
         p.zLength = -3.5;
     }},
    {"everything",
     [](Parameters &p) {
         rotateAll(p, 1.0, 2.0, 3.0);
         p.xSet0 = p.ySetL = p.zSameX = 1;
         p.yLength = 7.0;
         p.xOfsA = 0.1;
     }},
};

// What a run has made: its result, its message and the output file.
std::string transformed(const NamedOptions &chosen)
{
    TransformParameters p;
    p.xScl = p.yScl = p.zScl = 1.0;
    chosen.set(p);
    MeshTransformer transformer(p.xScl, p.yScl, p.zScl, p.xOfsB, p.yOfsB, p.zOfsB, p.xOfsA, p.yOfsA, p.zOfsA);
    char message[stlMessageCapacity] = "";
    const int result =
        stl_transform(transformer, message, opened(temporaryFileName, "r").release(),
                      opened(outputName, "w+").release(), p.xRotate, p.yRotate, p.zRotate, p.xAngle, p.yAngle,
                      p.zAngle, p.xSetL, p.ySetL, p.zSetL, p.xLength, p.yLength, p.zLength, p.xSet0, p.ySet0,
                      p.zSet0, p.xSameY, p.xSameZ, p.ySameX, p.ySameZ, p.zSameX, p.zSameY);
    return std::to_string(result) + message + read(outputName);
}

void readAndWrite(StlMesh &mesh, const std::string &bytes)
{
    write(inputName, bytes);
    stl_initialize(mesh, inputName);
    const Stream file(mesh.file);
    stl_allocate_facets(mesh);
    stl_load_facets(mesh, 0, true);
    mesh.file = nullptr;
    stl_write_ascii(mesh, temporaryFileName);
}

std::string anglesAsBits()
{
    constexpr double radiansPerDegree = 0.017453293;
    std::string text;
    for (int degrees = -360; degrees <= 360; ++degrees) {
        const SineAndCosine values = exactSineAndCosine(degrees * radiansPerDegree);
        for (const double value : {values.sine, values.cosine}) {
            std::uint64_t bits = 0;
            std::memcpy(&bits, &value, sizeof bits);
            char digits[20];
            std::snprintf(digits, sizeof digits, "%016" PRIX64, bits);
            text += digits;
        }
    }
    return text;
}

std::string line(const std::string &name, const std::string &bytes)
{
    char hash[20];
    std::snprintf(hash, sizeof hash, " %016" PRIX64 "\n", hashOf(bytes));
    return name + hash;
}

std::string table()
{
    std::string text = line("whole-degrees", anglesAsBits());
    StlMesh mesh;
    for (const NamedText &input : byteTableMeshes()) {
        readAndWrite(mesh, input.bytes);
        text += line(input.name, read(temporaryFileName));
        for (const NamedOptions &chosen : options)
            text += line(input.name + "/" + chosen.name, transformed(chosen));
    }
    stl_release_facets(mesh);
    for (const NamedText &input : byteTableTemporaryFiles()) {
        write(temporaryFileName, input.bytes);
        for (const NamedOptions &chosen : options) {
            if (std::strcmp(chosen.name, "about-all") == 0 || std::strcmp(chosen.name, "lengths") == 0)
                text += line(input.name + "/" + chosen.name, transformed(chosen));
        }
    }
    for (const char *name : {inputName, outputName, temporaryFileName})
        std::remove(name);
    return text;
}

// Names the lines of either table that the other has not. Lines that begin with '#' are comments.
int reportDifferences(const std::string &made, const std::string &expected)
{
    int lines = 0;
    int differences = 0;
    const auto missing = [](const std::string &from, const std::string &in, const char *what, int &count) {
        int found = 0;
        for (std::size_t at = 0; at < from.size();) {
            const std::size_t end = from.find('\n', at) + 1;
            const std::string text = from.substr(at, end - at);
            at = end;
            if (text[0] == '#')
                continue;
            ++count;
            if (in.find(text) == std::string::npos) {
                ++found;
                std::printf("%s %s", what, text.c_str());
            }
        }
        return found;
    };
    int expectedLines = 0;
    differences += missing(made, expected, "made:    ", lines);
    missing(expected, made, "expected:", expectedLines);
    std::printf("%d outputs, %d of them differ from the table of %d\n", lines, differences, expectedLines);
    return differences == 0 && lines == expectedLines ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        const std::string made = table();
        if (argc > 1)
            return reportDifferences(made, read(argv[1]));
        std::fputs(made.c_str(), stdout);
        return EXIT_SUCCESS;
    } catch (const std::exception &fault) {
        std::fprintf(stderr, "%s\n", fault.what());
        return EXIT_FAILURE;
    }
}
