#include "MeshReport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "Mesh/Core/Construction.h"
#include "Mesh/Core/WholeMesh.h"
#include "Support/Meshes.h"

namespace KM::Tool {
namespace {

using namespace Test;
using Counts = std::vector<long long>;

PIN MeshOf(const Soup& soup) {
    PIN mesh;
    AddTriangles_1(mesh, soup);
    return mesh;
}

Soup Moved(Soup soup, const TPoint<double>& by) {
    for (TPoint<double>& p : soup) p += by;
    return soup;
}

Soup TurnedOver(Soup soup) {
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3) std::swap(soup[i + 1], soup[i + 2]);
    return soup;
}

TEST(MeshReport, OfNothing) {
    const MeshReport report = Measure(PIN());
    EXPECT_EQ(report.nodes, 0);
    EXPECT_EQ(report.triangles, 0);
    EXPECT_EQ(report.solids, 0);
    EXPECT_EQ(report.low, TPoint<double>());
    EXPECT_EQ(report.area, 0.0);
    EXPECT_NE(TextOf(report).find("  solids          none\n"), std::string::npos) << TextOf(report);
}

TEST(MeshReport, OfOneTriangle) {
    const MeshReport report = Measure(RightTriangle());
    EXPECT_EQ(report.nodes, 3);
    EXPECT_EQ(report.triangles, 1);
    EXPECT_EQ(report.high, TPoint<double>(1, 1, 0));
    EXPECT_EQ(report.boundaries, Counts{3});
    EXPECT_EQ(report.solids, 1);
    EXPECT_EQ(report.closedSolids, 0);
    EXPECT_EQ(report.area, 0.5);
    EXPECT_EQ(report.degenerate, 0);
}

TEST(MeshReport, OfACubeFarAway) {
    const MeshReport report = Measure(MeshOf(Moved(CubeFacets().AsSoup(), {1024, -2048, 512})));
    EXPECT_EQ(report.nodes, 8);
    EXPECT_EQ(report.triangles, 12);
    EXPECT_EQ(report.low, TPoint<double>(1024, -2048, 512));
    EXPECT_EQ(report.high, TPoint<double>(1025, -2047, 513));
    EXPECT_TRUE(report.boundaries.empty());
    EXPECT_EQ(report.solids, 1);
    EXPECT_EQ(report.closedSolids, 1);
    EXPECT_EQ(report.insideOut, 0);
    EXPECT_EQ(report.nonManifoldEdges, 0);
    EXPECT_EQ(report.clashingEdges, 0);
    EXPECT_EQ(report.area, 6.0);
    EXPECT_DOUBLE_EQ(report.volume, 1.0);
}

TEST(MeshReport, OfASphereComesNearTheTruth) {
    const MeshReport report = Measure(Sphere(64));
    EXPECT_NEAR(report.area, 4.0 * std::numbers::pi, 0.01);
    EXPECT_NEAR(report.volume, 4.0 / 3.0 * std::numbers::pi, 0.01);
    EXPECT_LT(report.volume, 4.0 / 3.0 * std::numbers::pi);
}

TEST(MeshReport, KnowsWhatIsInsideOut) {
    const Soup cube = CubeFacets().AsSoup();
    const MeshReport turned = Measure(MeshOf(TurnedOver(cube)));
    EXPECT_EQ(turned.insideOut, 1);
    EXPECT_EQ(turned.volume, -1.0);
    EXPECT_NE(TextOf(turned).find("orientation     consistent, inside out\n"), std::string::npos) << TextOf(turned);

    Soup two = cube;
    const Soup other = TurnedOver(Moved(cube, {5, 0, 0}));
    two.insert(two.end(), other.begin(), other.end());
    const MeshReport report = Measure(MeshOf(two));
    EXPECT_EQ(report.solids, 2);
    EXPECT_EQ(report.insideOut, 1);
    EXPECT_NE(TextOf(report).find("inside out (or cavities): 1 of the closed solids\n"), std::string::npos);
}

TEST(MeshReport, CountsOpenAndClosedSolidsApart) {
    Soup soup = CubeFacets().AsSoup();
    const Soup sheet = Moved(GridFacets(3).AsSoup(), {0, 0, 7});
    soup.insert(soup.end(), sheet.begin(), sheet.end());
    const MeshReport report = Measure(MeshOf(soup));
    EXPECT_EQ(report.solids, 2);
    EXPECT_EQ(report.closedSolids, 1);
    EXPECT_EQ(report.boundaries, Counts{12});
    EXPECT_DOUBLE_EQ(report.volume, 1.0);
    EXPECT_NE(TextOf(report).find("solids          2, 1 of them closed\n"), std::string::npos) << TextOf(report);
    EXPECT_NE(TextOf(report).find("volume          1 of the closed solids\n"), std::string::npos) << TextOf(report);
}

//  Two sheets of two triangles that share the segment 0-1, and one triangle more on it: three on one edge.
TEST(MeshReport, CountsEdgesWithMoreThanTwoTriangles) {
    const TPoint<double> a(0, 0, 0), b(1, 0, 0), c(0, 1, 0), d(0, -1, 0), e(0, 0, 1);
    const MeshReport report = Measure(MeshOf({a, b, c, b, a, d, a, b, e}));
    EXPECT_EQ(report.nonManifoldEdges, 1);
    EXPECT_EQ(report.clashingEdges, 0);
    EXPECT_NE(TextOf(report).find("non-manifold    1 edge\n"), std::string::npos);
}

TEST(MeshReport, CountsEdgesThatTwoTrianglesRunTheSameWay) {
    const TPoint<double> a(0, 0, 0), b(1, 0, 0), c(0, 1, 0), d(0, -1, 0);
    const MeshReport report = Measure(MeshOf({a, b, c, a, b, d}));
    EXPECT_EQ(report.clashingEdges, 1);
    EXPECT_EQ(report.nonManifoldEdges, 0);
    EXPECT_NE(TextOf(report).find("inconsistent: on 1 edge two triangles run the same way\n"), std::string::npos);
}

TEST(MeshReport, CountsTrianglesWithoutHeight) {
    const TPoint<double> a(0, 0, 0), b(1, 0, 0), c(2, 0, 0), d(1, 1e-9, 0), e(1, 1e-3, 0);
    EXPECT_EQ(Measure(MeshOf({a, b, c})).degenerate, 1);
    EXPECT_EQ(Measure(MeshOf({a, c, d})).degenerate, 1);
    EXPECT_EQ(Measure(MeshOf({a, c, e})).degenerate, 0);
    // The same shape at any size.
    EXPECT_EQ(Measure(MeshOf({a * 1e-12, c * 1e-12, e * 1e-12})).degenerate, 0);
    EXPECT_EQ(Measure(MeshOf({a * 1e12, c * 1e12, d * 1e12})).degenerate, 1);
}

TEST(MeshReport, ListsBoundariesLongestFirst) {
    Soup soup;
    for (int i = 1; i <= 10; ++i) {
        const Soup sheet = Moved(GridFacets(i).AsSoup(), {0, 0, double(i)});
        soup.insert(soup.end(), sheet.begin(), sheet.end());
    }
    const MeshReport report = Measure(MeshOf(soup));
    EXPECT_EQ(report.boundaries, (Counts{40, 36, 32, 28, 24, 20, 16, 12, 8, 4}));
    EXPECT_EQ(report.boundaryEdges, 220);
    EXPECT_NE(TextOf(report).find("10 loops, 220 edges (40, 36, 32, 28, 24, 20, 16, 12, ...)\n"), std::string::npos);
}

TEST(MeshReport, CountsLargerLoopsAsFans) {
    PIN square;
    for (const auto& [x, y] : {std::pair{0, 0}, {2, 0}, {2, 2}, {0, 2}}) AddPoint(square, {double(x), double(y), 0.0});
    const std::vector<int> edges = AddPolygon(square, {0, 1, 2, 3}, {-1, -1, -1, -1});
    for (int i = 0; i < 4; ++i) square.p2e[static_cast<std::size_t>(i)] = edges[static_cast<std::size_t>(i)];
    const MeshReport report = Measure(square);
    EXPECT_EQ(report.triangles, 2);
    EXPECT_EQ(report.area, 4.0);
    EXPECT_EQ(report.boundaryEdges, 4);
}

// The plain way to count: each segment of each triangle in a list.
TEST(MeshReport, AgreesWithAPlainCountOnRandomMeshes) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = RandomMesh(seed, 60);
        std::vector<std::pair<int, int>> up, down;
        for (const Edge& e : mesh.edges) {
            const int to = mesh.edges[static_cast<std::size_t>(e.NE)].P0;
            (e.P0 < to ? up : down).push_back(std::minmax(e.P0, to));
        }
        std::vector<std::pair<int, int>> all = up;
        all.insert(all.end(), down.begin(), down.end());
        std::sort(all.begin(), all.end());
        all.erase(std::unique(all.begin(), all.end()), all.end());
        long long crowded = 0, clashing = 0;
        for (const auto& segment : all) {
            const auto ups = std::count(up.begin(), up.end(), segment);
            const auto downs = std::count(down.begin(), down.end(), segment);
            crowded += ups + downs > 2;
            clashing += ups + downs == 2 && ups != downs;
        }
        const MeshReport report = Measure(mesh);
        EXPECT_EQ(report.nonManifoldEdges, crowded);
        EXPECT_EQ(report.clashingEdges, clashing);
        EXPECT_EQ(report.triangles * 3, static_cast<long long>(mesh.edges.size()));
    }
}

TEST(MeshReport, MeasuresEachSolid) {
    Soup soup = GridFacets(2).AsSoup();
    const Soup cube = Moved(CubeFacets().AsSoup(), {10, 0, 0});
    soup.insert(soup.end(), cube.begin(), cube.end());
    const MeshReport report = Measure(MeshOf(soup));
    ASSERT_EQ(report.each.size(), 2u);
    EXPECT_EQ(report.each[0].triangles, 8);
    EXPECT_EQ(report.each[0].area, 4.0);
    EXPECT_FALSE(report.each[0].isClosed);
    EXPECT_EQ(report.each[1].triangles, 12);
    EXPECT_EQ(report.each[1].area, 6.0);
    EXPECT_TRUE(report.each[1].isClosed);
    EXPECT_NEAR(report.each[1].volume, 1.0, 1e-12);
}

}  // namespace
}  // namespace KM::Tool
