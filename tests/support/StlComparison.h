// The product's reader, writer and passes next to those of the plain twin, on the same input: whatever
// differs goes into a verdict. Needs no test framework. Works in the current folder and leaves its files
// there.
#pragma once

#include "stl/StlMesh.h"
#include "tests/support/PlainTwin.h"
#include "tests/support/Verdict.h"

#include <string>
#include <string_view>

// How the product's end of the process is observed, where the twin says that the process ends.
enum class ProcessEnd {
    inAChild,    // a child process reads the file and ends
    asException, // plain::FatalEnd, for programs that link tests/corpus/FatalSeam.cpp
};

// One mesh of the product and one of the twin, used for file after file as the program's mesh is.
class MeshTwins {
public:
    static constexpr const char *inputName = "in.stl";
    static constexpr const char *writtenName = "written.stl"; // what the product's writer made of the mesh

    explicit MeshTwins(ProcessEnd processEnd)
        : m_processEnd(processEnd)
    {}
    ~MeshTwins();
    MeshTwins(const MeshTwins &) = delete;
    MeshTwins &operator=(const MeshTwins &) = delete;

    // The bytes as an input file, read and written as ASCII by both. Compares warnings, the end of the
    // process, statistics, facets and written bytes, and whether the input file was left alone. True if both
    // accepted the file.
    bool compareReading(Verdict &verdict, std::string_view bytes);

    const StlMesh &product() const { return m_product; }

    int filesRead() const { return m_filesRead; }
    int filesRefused() const { return m_filesRefused; }
    int facetsRead() const { return m_facetsRead; }

private:
    struct Ending {
        std::string text;     // of the end of the process, empty if it goes on
        std::string warnings; // on standard error
    };

    Ending readTwin();
    void readProduct();
    Ending readProductToItsEnd();
    void expectEndOfAChild(Verdict &verdict, const Ending &twin);
    bool compareEndings(Verdict &verdict);
    void compareMeshes(Verdict &verdict) const;
    void closeProductFile();

    ProcessEnd m_processEnd;
    StlMesh m_product;
    plain::Mesh m_twin;
    int m_filesRead = 0;
    int m_filesRefused = 0;
    int m_facetsRead = 0;
};

// What a pass reads: a text from a position on, from a file or through a pipe (which holds 64 KiB at most).
struct PassInput {
    std::string text;
    long start = 0;
    bool isPipe = false;
    bool failsAtTheEnd =
        false; // reading past the text is an error; the pipe is then a stream without positions
};

// Both compare results, messages, extents or output, and where the pass leaves its stream: the position and
// what can still be read, unless the stream fails. The product does the same once more with a carriage return
// before each line feed of the text, if that fits into a pipe. A pass of the twin that succeeds because it
// takes an error for the end of the file must be a read error in the product. True if the pass succeeds.
bool compareScan(Verdict &verdict, const PassInput &input);
bool compareRewrite(Verdict &verdict, const PassInput &input, const plain::Placement &placement);

void compareExtents(Verdict &verdict, const plain::Extents &product, const plain::Extents &twin);
