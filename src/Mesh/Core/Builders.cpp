#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/NonExistentNode.h"
#include "Mesh/Core/Orientation.h"
#include "Mesh/Core/PointMerging.h"
#include "Mesh/Core/TwinPairing.h"

// The builders give what `AddTriangle`, called for each facet in turn, would give. They append all records first and
// make the twins afterwards in one go, which needs a third of the memory and a fraction of the time of a map of edges.

namespace KM {
namespace {

/// Indices are 32 bits wide, and no container would notice that they run out.
void RequireRoom(std::size_t existing, std::size_t added) {
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    if (existing > most || added > most - existing) throw std::length_error("vector<T> too long");
}

/// Takes facets and makes the mesh of them.
template <class Mesh>
class Builder {
public:
    Builder(Mesh& mesh, std::size_t triangles) : mesh_(mesh), first_(mesh.edges.size()) {
        RequireRoom(first_, 3 * triangles);
        mesh_.edges.reserve(first_ + 3 * triangles);
    }

    void Add(std::int32_t a, std::int32_t b, std::int32_t c) {
        if (a == b || b == c || c == a) return;
        if (a < 0 || b < 0 || c < 0) return ReportNonExistentNode();
        const std::int32_t e = static_cast<std::int32_t>(mesh_.edges.size());
        mesh_.edges.push_back({e + 1, -1, a});
        mesh_.edges.push_back({e + 2, -1, b});
        mesh_.edges.push_back({e, -1, c});
    }

    void Finish() {
        PairTwins(mesh_.edges, first_, mesh_.points.size());
        VisitorOf<Mesh> nobody;
        // New twins run in opposite directions, and none of them leads to an earlier edge; so there is nothing to
        // repair unless earlier edges bring it along.
        if (first_ > 0) FixOrientation(mesh_, nobody);
        mesh_.p2e.resize(mesh_.points.size(), -1);
        Compact(mesh_, nobody);
    }

private:
    Mesh& mesh_;
    const std::size_t first_;
};

/// A closed surface has half as many nodes as triangles; a part with borders or holes has a few more or less.
std::size_t ExpectedNodes(std::size_t triangles) { return triangles / 2 + 3; }

/// Builds from `next(three points)`, which gives false at the end. Points are merged in blocks, so that the memory
/// reads of a block overlap.
template <class Mesh, class Next>
void BuildMerged(Mesh& mesh, std::size_t triangles, Next next) {
    using Point = typename Mesh::PointType;
    RequireRoom(mesh.points.size(), 3 * triangles);
    Builder<Mesh> builder(mesh, triangles);
    mesh.points.reserve(mesh.points.size() + ExpectedNodes(triangles));
    {
        PointMerger<Point> merger(mesh.points, ExpectedNodes(triangles));
        constexpr std::size_t blockSize = 3 * 16;
        std::array<Point, blockSize> points;
        std::array<std::uint32_t, blockSize> hashes;
        std::size_t filled = blockSize;
        while (filled == blockSize) {
            for (filled = 0; filled < blockSize && next(&points[filled]);) filled += 3;
            for (std::size_t i = 0; i < filled; ++i) merger.FetchSlot(hashes[i] = merger.Hash(points[i]));
            for (std::size_t i = 0; i < filled; ++i) merger.FetchPoint(hashes[i]);
            for (std::size_t i = 0; i < filled; i += 3) {
                const std::int32_t a = merger.NodeOf(points[i], hashes[i]);
                const std::int32_t b = merger.NodeOf(points[i + 1], hashes[i + 1]);
                const std::int32_t c = merger.NodeOf(points[i + 2], hashes[i + 2]);
                builder.Add(a, b, c);
            }
        }
    }  // the table goes before the twins need room
    builder.Finish();
}

/// `nodes` as the points of an otherwise unchanged mesh.
void ReplacePoints(PIN& mesh, const std::vector<TPoint<double>>& nodes) {
    RequireRoom(nodes.size(), 0);
    mesh.points = nodes;
    mesh.p2e.resize(nodes.size(), -1);
}

}  // namespace

void AddTriangles_1(PIN& mesh, const std::vector<TPoint<double>>& soup) {
    // The points grow while the soup is read.
    if (&soup == &mesh.points) return AddTriangles_1(mesh, std::vector(soup));
    const std::size_t triangles = soup.size() / 3;
    std::size_t t = 0;
    BuildMerged(mesh, triangles, [&](TPoint<double>* three) {
        if (t == triangles) return false;
        std::copy_n(&soup[3 * t++], 3, three);
        return true;
    });
}

void AddTriangles_2(PIN& mesh, const std::vector<std::vector<TPoint<double>>>& facets) {
    auto facet = facets.begin();
    BuildMerged(mesh, facets.size(), [&](TPoint<double>* three) {
        while (facet != facets.end() && facet->size() < 3) ++facet;
        if (facet == facets.end()) return false;
        std::copy_n(facet++->begin(), 3, three);
        return true;
    });
}

void AddTriangles_3(PIN& mesh, const std::vector<TPoint<double>>& nodes, const std::vector<int>& triples) {
    // `nodes` may be the points of the mesh themselves, and `triples` its `p2e`.
    if (&triples == &mesh.p2e) return AddTriangles_3(mesh, nodes, std::vector(triples));
    ReplacePoints(mesh, nodes);
    Builder<PIN> builder(mesh, triples.size() / 3);
    for (std::size_t i = 0; i + 2 < triples.size(); i += 3) builder.Add(triples[i], triples[i + 1], triples[i + 2]);
    builder.Finish();
}

void AddTriangles_4(PIN& mesh, const std::vector<TPoint<double>>& nodes, const std::vector<std::vector<int>>& facets) {
    ReplacePoints(mesh, nodes);
    Builder<PIN> builder(mesh, facets.size());
    for (const std::vector<int>& facet : facets)
        if (facet.size() >= 3) builder.Add(facet[0], facet[1], facet[2]);
    builder.Finish();
}

void AddTrianglesSPIN(SPIN& mesh, int /*pointCount*/, float* xyz, int triangleCount, int* triples) {
    const bool isEmpty = xyz == nullptr || triples == nullptr || triangleCount <= 0;
    const int* triple = triples;
    const int* const end = isEmpty ? triples : triples + 3 * static_cast<std::ptrdiff_t>(triangleCount);
    BuildMerged(mesh, static_cast<std::size_t>(isEmpty ? 0 : triangleCount), [&](TPoint<float>* three) {
        // A negative index would read before the array; its facet goes before its other points are merged.
        for (; triple != end && std::min({triple[0], triple[1], triple[2]}) < 0; triple += 3) ReportNonExistentNode();
        if (triple == end) return false;
        for (int k = 0; k < 3; ++k) {
            const float* const p = xyz + 3 * static_cast<std::ptrdiff_t>(*triple++);
            three[k] = TPoint<float>(p[0], p[1], p[2]);
        }
        return true;
    });
}

}  // namespace KM
