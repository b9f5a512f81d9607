#include "Mesh/Algorithms/CutTriangles.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

#include "Mesh/Editing/EdgeSplits.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;

P Middle(const PIN& mesh, int e) {
    return (mesh.points[mesh.edges[e].P0] + mesh.points[mesh.edges[mesh.edges[e].NE].P0]) * 0.5;
}

/// Splits some edges in their middle, in the strip.
CutTriangles CutAt(const PIN& mesh, const std::vector<int>& splits) {
    std::set<int> touched;
    for (const int split : splits)
        for (const int side : {split, mesh.edges[split].TE})
            if (side != -1)
                for (const int e : {side, mesh.edges[side].NE, mesh.edges[mesh.edges[side].NE].NE}) touched.insert(e);
    CutTriangles cut(mesh);
    for (const int e : touched) cut.AddEdge(e);
    for (const int split : splits) cut.AddSplit(split, Middle(mesh, split));
    cut.Split();
    return cut;
}

/// The whole mesh after the splits, put together of what has changed and what has not.
std::vector<Edge> WholeEdges(const PIN& mesh, const CutTriangles& cut) {
    std::vector<Edge> edges;
    cut.ForEachEdge([&](int old) { edges.push_back(mesh.edges[old]); },
                    [&](int changed) { edges.push_back(cut.Record(changed)); });
    return edges;
}

void ExpectAsInTheWholeMesh(const PIN& mesh, const std::vector<int>& splits) {
    PIN whole = mesh;
    for (const int split : splits) SplitEdge(whole, split, Middle(mesh, split));
    const CutTriangles cut = CutAt(mesh, splits);
    EXPECT_EQ(WholeEdges(mesh, cut), whole.edges);
    EXPECT_EQ(cut.SplitCount(), static_cast<int>(splits.size()));
    EXPECT_EQ(cut.NewEdgeCount(), static_cast<int>(whole.edges.size() - mesh.edges.size()));
    for (std::size_t node = 0; node < cut.Strip().points.size(); ++node) {
        const P& inWhole = whole.points[cut.NodeNumber(static_cast<int>(node))];
        EXPECT_EQ(Length(cut.Strip().points[node] - inWhole), 0.0) << node;
    }
}

int FirstEdge(const PIN& mesh, bool isOrphan) {
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if ((mesh.edges[e].TE == -1) == isOrphan) return e;
    return -1;
}

TEST(CutTriangles, NumberAsIfTheWholeMeshHadBeenSplit) {
    const PIN grid = Grid(4);
    ExpectAsInTheWholeMesh(grid, {FirstEdge(grid, false)});
    ExpectAsInTheWholeMesh(grid, {FirstEdge(grid, true)});
    const PIN sphere = Sphere(3);
    for (int e = 0; e < static_cast<int>(sphere.edges.size()); e += 7) ExpectAsInTheWholeMesh(sphere, {e});
}

TEST(CutTriangles, KeepTheOrderOfTheSplits) {
    const PIN sphere = Sphere(3);
    const int e = 30;
    const int onSameTriangle = sphere.edges[e].NE;
    ExpectAsInTheWholeMesh(sphere, {e, onSameTriangle});
    ExpectAsInTheWholeMesh(sphere, {onSameTriangle, e});
    ExpectAsInTheWholeMesh(sphere, {50, 3, sphere.edges[100].TE});
}

TEST(CutTriangles, HoldNoMoreThanTheStrip) {
    const PIN sphere = Sphere(20);
    const CutTriangles cut = CutAt(sphere, {100});
    EXPECT_EQ(cut.Strip().points.size(), 5u);
    EXPECT_EQ(cut.EdgeCount(), 12);
    EXPECT_EQ(cut.NewEdgeCount(), 6);
    EXPECT_EQ(cut.NodeNumber(4), static_cast<int>(sphere.points.size()));
    EXPECT_EQ(cut.EdgeNumber(6), static_cast<int>(sphere.edges.size()));
}

TEST(CutTriangles, WithoutSplitsChangeNothing) {
    const PIN grid = Grid(2);
    CutTriangles cut(grid);
    for (int e = 0; e < 6; ++e) cut.AddEdge(e);
    cut.Split();
    EXPECT_EQ(cut.EdgeCount(), 0);
    EXPECT_EQ(WholeEdges(grid, cut), grid.edges);
}

}  // namespace
}  // namespace KM
