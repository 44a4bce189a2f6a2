// Meshes that differ in what decides the cost of a run: how often a corner comes back, and how soon.
#pragma once

#include "tests/support/MeshFiles.h"

#include <random>
#include <string>
#include <vector>

enum class BenchShape {
    ball,          // small random triangles around a sphere; no corner is shared
    torus,         // a closed grid, facets in the order of its rows
    shuffledTorus, // the same facets in random order
    triangles,     // random triangles; no corner is shared
    part,          // boxes and cylinders: flat faces, long runs of one normal
    surface        // an isosurface by marching cubes, cell after cell
};

struct NamedShape {
    const char *name;
    BenchShape shape;
    bool isOrdered; // most corners come back within some hundred facets
};

// All of them, in the order of the tables.
extern const std::vector<NamedShape> benchShapes;

// The facets of the ball, one by one, for meshes that shall not be held in memory.
class BallFacets {
public:
    BinaryFacet next();

private:
    std::mt19937_64 m_random{20240917};
    std::uniform_real_distribution<float> m_part{-1.0F, 1.0F};
};

// About as many facets as asked for, at most; the same for the same arguments.
std::vector<BinaryFacet> facetsOf(BenchShape shape, int facets);

void writeBinary(const std::string &path, const std::vector<BinaryFacet> &facets);
