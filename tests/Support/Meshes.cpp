#include "Support/Meshes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <numeric>
#include <random>

#include "Mesh/Core/Construction.h"
#include "Mesh/Core/Loops.h"

namespace KM::Test {
namespace {

using P = TPoint<double>;

}  // namespace

Soup IndexedFacets::AsSoup() const {
    Soup soup;
    soup.reserve(triples.size());
    for (const int node : triples) soup.push_back(points[node]);
    return soup;
}

PIN FromFacets(const IndexedFacets& facets) {
    PIN mesh;
    AddTriangles_3(mesh, facets.points, facets.triples);
    return mesh;
}

PIN RightTriangle() { return FromFacets({{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0)}, {0, 1, 2}}); }

PIN UnitSquare() { return FromFacets({{P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0)}, {0, 1, 3, 1, 2, 3}}); }

PIN BowTie() {
    return FromFacets({{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(2, 0, 0), P(2, 1, 0)}, {0, 1, 2, 1, 3, 4}});
}

IndexedFacets CubeFacets() {
    IndexedFacets cube;
    for (int i = 0; i < 8; ++i) cube.points.push_back(P(i & 1, (i >> 1) & 1, (i >> 2) & 1));
    cube.triples = {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                    2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5};
    return cube;
}

PIN Cube() { return FromFacets(CubeFacets()); }

PIN OneLoop(const Soup& outline) {
    PIN mesh;
    mesh.points = outline;
    const int count = static_cast<int>(outline.size());
    for (int i = 0; i < count; ++i) {
        mesh.edges.push_back({(i + 1) % count, -1, i});
        mesh.p2e.push_back(i);
    }
    return mesh;
}

IndexedFacets GridFacets(int n) {
    IndexedFacets grid;
    for (int y = 0; y <= n; ++y)
        for (int x = 0; x <= n; ++x) grid.points.push_back(P(x, y, 0));
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) {
            const int a = y * (n + 1) + x;
            const int above = a + n + 1;
            grid.triples.insert(grid.triples.end(), {a, a + 1, above, a + 1, above + 1, above});
        }
    return grid;
}

PIN Grid(int n) { return FromFacets(GridFacets(n)); }

IndexedFacets SphereFacets(int n) {
    // Each face of the octahedron is a triangular grid; nodes are keyed by their integer position, so that the faces share
    // those on their borders.
    IndexedFacets sphere;
    std::map<std::array<int, 3>, int> known;
    const auto node = [&](const std::array<int, 3>& at) {
        const auto [entry, isNew] = known.try_emplace(at, static_cast<int>(sphere.points.size()));
        if (isNew) {
            const P p(at[0], at[1], at[2]);
            sphere.points.push_back(p / Length(p));
        }
        return entry->second;
    };
    for (const int sx : {1, -1})
        for (const int sy : {1, -1})
            for (const int sz : {1, -1}) {
                const auto at = [&](int i, int j) { return node({sx * (n - i - j), sy * i, sz * j}); };
                // Lists in braces, unlike arguments, are evaluated in order with every compiler; it numbers the nodes.
                const auto add = [&](std::array<int, 3> nodes) {
                    if (sx * sy * sz < 0) std::swap(nodes[1], nodes[2]);
                    sphere.triples.insert(sphere.triples.end(), nodes.begin(), nodes.end());
                };
                for (int j = 0; j < n; ++j)
                    for (int i = 0; i + j < n; ++i) {
                        add({at(i, j), at(i + 1, j), at(i, j + 1)});
                        if (i + j + 1 < n) add({at(i + 1, j), at(i + 1, j + 1), at(i, j + 1)});
                    }
            }
    return sphere;
}

PIN Sphere(int n) { return FromFacets(SphereFacets(n)); }

IndexedFacets BumpySphereFacets(int n) {
    IndexedFacets sphere = SphereFacets(n);
    for (P& p : sphere.points) {
        const double bump = std::sin(9.0 * p.X) + std::sin(11.0 * p.Y + 1.0) + std::sin(13.0 * p.Z + 2.0);
        p = p * (100.0 + 2.0 * bump);
    }
    return sphere;
}

PIN BumpySphere(int n) { return FromFacets(BumpySphereFacets(n)); }

IndexedFacets RandomFacets(unsigned seed, int count) {
    std::mt19937 random(seed);
    IndexedFacets facets;
    const int nodes = std::max(3, count / 2);
    // mt19937 is the same everywhere; the distributions of the standard library are not, so they are not used.
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    // In braces, since the arguments of a call are evaluated in an order that the compiler chooses.
    const auto coordinate = [&] { return static_cast<double>(below(1000)); };
    for (int i = 0; i < nodes; ++i) facets.points.push_back(P{coordinate(), coordinate(), coordinate()});
    for (int i = 0; i < 3 * count; ++i) facets.triples.push_back(below(nodes));
    return facets;
}

PIN RandomMesh(unsigned seed, int count) { return FromFacets(RandomFacets(seed, count)); }

IndexedFacets Shuffled(IndexedFacets facets, unsigned seed) {
    std::mt19937 random(seed);
    const std::size_t count = facets.triples.size() / 3;
    for (std::size_t i = count; i > 1; --i) {
        const std::size_t j = random() % i;
        for (std::size_t k = 0; k < 3; ++k) std::swap(facets.triples[3 * (i - 1) + k], facets.triples[3 * j + k]);
        const auto begin = facets.triples.begin() + static_cast<std::ptrdiff_t>(3 * (i - 1));
        std::rotate(begin, begin + random() % 3, begin + 3);
    }
    return facets;
}

PIN Dissolved(PIN mesh, unsigned seed, int count) {
    std::mt19937 random(seed);
    for (int i = 0; i < count && !mesh.edges.empty(); ++i) {
        const int e = static_cast<int>(random() % mesh.edges.size());
        if (mesh.edges[e].NE == -1 || mesh.edges[e].TE == -1 || AreOnSameLoop(mesh, e, mesh.edges[e].TE)) continue;
        const int twin = mesh.edges[e].TE;
        const int before = PrevEdge(mesh, e);
        const int beforeTwin = PrevEdge(mesh, twin);
        mesh.edges[before].NE = mesh.edges[twin].NE;
        mesh.edges[beforeTwin].NE = mesh.edges[e].NE;
        mesh.edges[e].NE = mesh.edges[e].P0 = mesh.edges[twin].NE = mesh.edges[twin].P0 = -1;
    }
    std::fill(mesh.p2e.begin(), mesh.p2e.end(), -1);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if (mesh.edges[e].NE != -1) mesh.p2e[mesh.edges[e].P0] = e;
    return mesh;
}

PIN WithBrokenLinks(PIN mesh, unsigned seed) {
    std::mt19937 random(seed);
    const auto spoil = [&](std::int32_t& link) {
        if (random() % 8 != 0) return;
        const int count = static_cast<int>(mesh.edges.size());
        const int wrong[] = {-1, -2, INT32_MIN, INT32_MAX, count, 0, static_cast<int>(random() % (count + 1u))};
        link = wrong[random() % std::size(wrong)];
    };
    for (Edge& edge : mesh.edges) {
        spoil(edge.NE);
        spoil(edge.TE);
        spoil(edge.P0);
    }
    for (std::int32_t& edge : mesh.p2e) spoil(edge);
    return mesh;
}

}  // namespace KM::Test
