// Runs the product and its plain twin on the same input and expects the same of both.
#pragma once

#include "stl/StlMesh.h"
#include "tests/support/OddMeshText.h"
#include "tests/support/PlainRoad.h"

#include <string>

// One product mesh and one twin, used for file after file as the window's mesh is. Works in the current
// folder.
class TwinMeshes {
public:
    ~TwinMeshes();

    void readAndCompare(const std::string &bytes);

    int filesRead() const { return m_filesRead; }
    int filesRefused() const { return m_filesRefused; }
    int facetsRead() const { return m_facetsRead; }

private:
    void expectEnd(const std::string &path, const std::string &end);
    void loadAndCompare(const std::string &path);

    StlMesh m_product;
    plain::Mesh m_twin;
    int m_filesRead = 0;
    int m_filesRefused = 0;
    int m_facetsRead = 0;
};

// What a pass reads: a text from a position on, from a file or through a pipe (of 64 KiB at most).
struct PassInput {
    std::string text;
    long start = 0;
    bool isPipe = false;
};

// Results, messages, extents and output are compared, and what the pass leaves to be read in the stream.
// True if the twin's pass succeeded.
bool expectSameScan(const PassInput &input);
bool expectSameRewrite(const PassInput &input, const plain::Placement &placement);

plain::Placement placementOf(OddMeshText &odd);
