#include "benchmarks/BenchShapes.h"

#include "tests/support/TextFile.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace {

constexpr float pi = 3.14159265F;

struct Point {
    float x = 0.0F;
    float y = 0.0F;
    float z = 0.0F;
};

Point operator-(const Point &a, const Point &b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }

Point unitNormal(const Point &a, const Point &b, const Point &c)
{
    const Point u = b - a;
    const Point v = c - a;
    const Point n = {u.y * v.z - u.z * v.y, u.z * v.x - u.x * v.z, u.x * v.y - u.y * v.x};
    const float length = std::sqrt(n.x * n.x + n.y * n.y + n.z * n.z);
    return length > 0.0F ? Point{n.x / length, n.y / length, n.z / length} : Point{};
}

// Collects facets until there are enough.
class FacetList {
public:
    explicit FacetList(int wanted)
        : m_wanted(static_cast<std::size_t>(wanted))
    {}

    bool isFull() const { return m_facets.size() >= m_wanted; }

    void add(const Point &a, const Point &b, const Point &c)
    {
        if (isFull())
            return;
        const Point n = unitNormal(a, b, c);
        m_facets.push_back({{n.x, n.y, n.z, a.x, a.y, a.z, b.x, b.y, b.z, c.x, c.y, c.z}, {}});
    }

    void addQuad(const Point &a, const Point &b, const Point &c, const Point &d)
    {
        add(a, b, c);
        add(a, c, d);
    }

    std::vector<BinaryFacet> take() { return std::move(m_facets); }

private:
    std::size_t m_wanted;
    std::vector<BinaryFacet> m_facets;
};

std::vector<BinaryFacet> ball(int facets)
{
    BallFacets ball;
    std::vector<BinaryFacet> list(static_cast<std::size_t>(facets));
    for (BinaryFacet &facet : list)
        facet = ball.next();
    return list;
}

std::vector<BinaryFacet> torus(int facets)
{
    const int rings = std::max(3, static_cast<int>(std::sqrt(static_cast<float>(facets) / 4.0F)));
    const int sides = std::max(3, facets / (2 * rings));
    const auto at = [rings, sides](int ring, int side) {
        const float u = 2.0F * pi * static_cast<float>(ring % rings) / static_cast<float>(rings);
        const float v = 2.0F * pi * static_cast<float>(side % sides) / static_cast<float>(sides);
        const float radius = 60.0F + 20.0F * std::cos(v);
        return Point{radius * std::cos(u), radius * std::sin(u), 20.0F * std::sin(v)};
    };
    FacetList list(facets);
    for (int ring = 0; ring < rings; ++ring) {
        for (int side = 0; side < sides; ++side)
            list.addQuad(at(ring, side), at(ring + 1, side), at(ring + 1, side + 1), at(ring, side + 1));
    }
    return list.take();
}

std::vector<BinaryFacet> shuffledTorus(int facets)
{
    std::vector<BinaryFacet> list = torus(facets);
    std::shuffle(list.begin(), list.end(), std::mt19937_64(7));
    return list;
}

std::vector<BinaryFacet> triangles(int facets)
{
    std::mt19937_64 random(11);
    std::uniform_real_distribution<float> part(-100.0F, 100.0F);
    const auto point = [&random, &part] {
        const float x = part(random);
        const float y = part(random);
        return Point{x, y, part(random)};
    };
    FacetList list(facets);
    while (!list.isFull()) {
        const Point a = point();
        const Point b = point();
        list.add(a, b, point());
    }
    return list.take();
}

void addBox(FacetList &list, const Point &low, const Point &high)
{
    const auto at = [&low, &high](int corner) {
        return Point{(corner & 1) != 0 ? high.x : low.x, (corner & 2) != 0 ? high.y : low.y,
                     (corner & 4) != 0 ? high.z : low.z};
    };
    constexpr int faces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                 {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
    for (const auto &face : faces)
        list.addQuad(at(face[0]), at(face[1]), at(face[2]), at(face[3]));
}

// Both flat ends and the side, segment after segment.
void addCylinder(FacetList &list, const Point &foot, float radius, float height, int segments)
{
    const auto rim = [&foot, radius, segments](int segment, float z) {
        const float angle = 2.0F * pi * static_cast<float>(segment % segments) / static_cast<float>(segments);
        return Point{foot.x + radius * std::cos(angle), foot.y + radius * std::sin(angle), z};
    };
    const float top = foot.z + height;
    for (int i = 0; i < segments; ++i)
        list.add({foot.x, foot.y, foot.z}, rim(i + 1, foot.z), rim(i, foot.z));
    for (int i = 0; i < segments; ++i)
        list.addQuad(rim(i, foot.z), rim(i + 1, foot.z), rim(i + 1, top), rim(i, top));
    for (int i = 0; i < segments; ++i)
        list.add({foot.x, foot.y, top}, rim(i, top), rim(i + 1, top));
}

std::vector<BinaryFacet> part(int facets)
{
    FacetList list(facets);
    for (int i = 0; !list.isFull(); ++i) {
        const int column = i % 50;
        const int row = i / 50;
        const float x = 10.0F * static_cast<float>(column);
        const float y = 10.0F * static_cast<float>(row);
        addBox(list, {x, y, 0.0F}, {x + 8.5F, y + 9.25F, 2.5F});
        addCylinder(list, {x + 4.25F, y + 4.625F, 2.5F}, 3.2F, 6.4F, 24 + 8 * (i % 4));
    }
    return list.take();
}

// Marching cubes over a sum of sines. The polygons of a cell are traced from edge to edge over the cell's
// faces, keeping the inside on one side, which needs no table of cases.
class MarchingCubes {
public:
    MarchingCubes(FacetList &list, int cells)
        : m_list(list),
          m_cells(cells)
    {}

    void run()
    {
        for (int z = 0; z < m_cells; ++z)
            for (int y = 0; y < m_cells; ++y)
                for (int x = 0; x < m_cells; ++x)
                    cell(x, y, z);
    }

private:
    static float field(const Point &p)
    {
        return std::sin(p.x * 0.31F) + std::sin(p.y * 0.37F) + std::sin(p.z * 0.29F) +
               0.5F * std::sin(0.11F * (p.x + p.y + p.z));
    }

    // Corner c of a cell has the offsets of the bits of c; an edge joins two corners that differ in one bit.
    static Point cornerOf(const int (&cell)[3], int corner)
    {
        return {static_cast<float>(cell[0] + (corner & 1)), static_cast<float>(cell[1] + (corner >> 1 & 1)),
                static_cast<float>(cell[2] + (corner >> 2))};
    }

    // The same bits for all cells that share the edge: always from the lower corner.
    Point crossing(const int (&cell)[3], int a, int b) const
    {
        const Point p = cornerOf(cell, std::min(a, b));
        const Point q = cornerOf(cell, std::max(a, b));
        const float fp = field(p);
        const float t = fp / (fp - field(q));
        return {p.x + t * (q.x - p.x), p.y + t * (q.y - p.y), p.z + t * (q.z - p.z)};
    }

    void cell(int x, int y, int z)
    {
        const int place[3] = {x, y, z};
        bool inside[8];
        int count = 0;
        for (int corner = 0; corner < 8; ++corner) {
            inside[corner] = field(cornerOf(place, corner)) < 0.0F;
            count += inside[corner] ? 1 : 0;
        }
        if (count == 0 || count == 8)
            return;
        // Where a walk around a face goes from outside to inside, a line enters; where it leaves the inside
        // next, it ends. Faces in the order that keeps the cell on the same side of all of them.
        constexpr int faces[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                     {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
        int next[8][8][2]; // of an edge, as the edge's two corners
        for (auto &row : next)
            for (auto &edge : row)
                edge[0] = -1;
        for (const auto &face : faces) {
            for (int i = 0; i < 4; ++i) {
                const int a = face[i];
                const int b = face[(i + 1) % 4];
                if (inside[a] || !inside[b])
                    continue;
                int j = i + 1;
                while (inside[face[(j + 1) % 4]])
                    ++j;
                const int c = face[j % 4];
                const int d = face[(j + 1) % 4];
                int *const to = next[std::min(a, b)][std::max(a, b)];
                to[0] = std::min(c, d);
                to[1] = std::max(c, d);
            }
        }
        for (int a = 0; a < 8; ++a)
            for (int b = a + 1; b < 8; ++b)
                polygonFrom(place, next, a, b);
    }

    void polygonFrom(const int (&place)[3], int (&next)[8][8][2], int a, int b)
    {
        Point polygon[12];
        int size = 0;
        while (size < 12 && next[a][b][0] >= 0) {
            polygon[size++] = crossing(place, a, b);
            const int c = next[a][b][0];
            const int d = next[a][b][1];
            next[a][b][0] = -1;
            a = c;
            b = d;
        }
        for (int i = 2; i < size; ++i)
            m_list.add(polygon[0], polygon[i - 1], polygon[i]);
    }

    FacetList &m_list;
    int m_cells;
};

std::vector<BinaryFacet> surface(int facets)
{
    FacetList list(facets);
    for (int cells = 8; !list.isFull(); cells += cells / 8 + 1) {
        list = FacetList(facets);
        MarchingCubes(list, cells).run();
    }
    return list.take();
}

} // namespace

BinaryFacet BallFacets::next()
{
    const float x = m_part(m_random);
    const float y = m_part(m_random);
    const float z = m_part(m_random);
    const float length = std::sqrt(x * x + y * y + z * z) + 1e-6F;
    BinaryFacet facet;
    facet.numbers = {x / length, y / length, z / length};
    for (std::size_t i = 3; i < 12; ++i)
        facet.numbers[i] = facet.numbers[i % 3] * 100.0F + m_part(m_random) * 0.5F;
    return facet;
}

const std::vector<NamedShape> benchShapes = {{"ball", BenchShape::ball, false},
                                             {"torus", BenchShape::torus, true},
                                             {"torus, shuffled", BenchShape::shuffledTorus, false},
                                             {"triangles", BenchShape::triangles, false},
                                             {"part", BenchShape::part, true},
                                             {"marching cubes", BenchShape::surface, true}};

std::vector<BinaryFacet> facetsOf(BenchShape shape, int facets)
{
    switch (shape) {
    case BenchShape::ball:
        return ball(facets);
    case BenchShape::torus:
        return torus(facets);
    case BenchShape::shuffledTorus:
        return shuffledTorus(facets);
    case BenchShape::triangles:
        return triangles(facets);
    case BenchShape::part:
        return part(facets);
    default:
        return surface(facets);
    }
}

void writeBinary(const std::string &path, const std::vector<BinaryFacet> &facets)
{
    writeBytes(path, binaryStl("made for a benchmark", facets));
}
