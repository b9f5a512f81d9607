#include "Mesh/Algorithms/DirectionAnalysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Mesh/Algorithms/PlainAnalysis.h"
#include "Support/BrokenMeshes.h"
#include "Support/HostilePoints.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;

constexpr double Degree = std::numbers::pi / 180.0;
/// The cosine is held off 1.
constexpr double LeastAngle = 0.0082;

std::vector<double> AnglesOf(const PIN& mesh, const P& dir) {
    std::vector<double> angles{1e5};
    CriticalAreas(mesh, angles, dir);
    return angles;
}

/// A grid of `n` by `n` squares, tilted by so many degrees about the Y axis.
PIN Tilted(int n, double degrees) {
    IndexedFacets grid = GridFacets(n);
    const double c = std::cos(degrees * Degree);
    const double s = std::sin(degrees * Degree);
    for (P& p : grid.points) p = P(c * p.X, p.Y, -s * p.X);
    return FromFacets(grid);
}

/// A plate with a grid of nodes on all six sides, whose thickness runs along `axis`.
struct Plate {
    PIN mesh;
    std::vector<int> onFaces;  // nodes inside the two large sides
    std::vector<int> onRim;    // nodes inside the four narrow sides
};

Plate MakePlate(const P& axis) {
    const P u = SafeUnit(Cross(axis, P(0.3, -0.8, 0.1)));
    const P v = Cross(axis, u);
    const int n = 4;
    Plate plate;
    Soup soup;
    for (int side = 0; side < 6; ++side)
        for (const P& corner : GridFacets(n).AsSoup()) {
            const double a = corner.X / n - 0.5;
            const double b = (side % 2 == 0 ? corner.Y : n - corner.Y) / n - 0.5;
            const double c = side % 2 == 0 ? 0.5 : -0.5;
            const P at = side / 2 == 0 ? P(a, b, c) : side / 2 == 1 ? P(c, a, b) : P(b, c, a);
            soup.push_back(u * at.X + v * at.Y + axis * (0.2 * at.Z));
        }
    AddTriangles_1(plate.mesh, soup);
    for (int node = 0; node < static_cast<int>(plate.mesh.points.size()); ++node) {
        const P p = plate.mesh.points[node];
        const bool onRim = std::fabs(Dot(p, u)) > 0.49 || std::fabs(Dot(p, v)) > 0.49;
        const bool onFace = std::fabs(Dot(p, axis)) > 0.09;
        if (onFace && !onRim) plate.onFaces.push_back(node);
        const bool onCorner = std::fabs(Dot(p, u)) > 0.49 && std::fabs(Dot(p, v)) > 0.49;
        if (onRim && !onFace && !onCorner) plate.onRim.push_back(node);
    }
    return plate;
}

TEST(DirToAnalysis, IsTheDotProductWithTheUnitDirection) {
    std::vector<double> values(7, 5.0);
    DirToAnalysis({P(1, 0, 0), P(0, 1, 0), P(0, 0, -1), P(2, 3, 4)}, values, P(0, 0, 4));
    EXPECT_EQ(values, (std::vector<double>{0, 0, -1, 4}));
    DirToAnalysis({}, values, P(0, 0, 4));
    EXPECT_TRUE(values.empty());
}

TEST(DirToAnalysis, TakesUpForADirectionWithoutLength) {
    std::vector<double> values;
    for (const P& dir : {P(), P(0, 4e-9, 0), P(-0.0, 0, 0)}) {
        DirToAnalysis({P(1, 2, 3)}, values, dir);
        EXPECT_EQ(values, std::vector<double>{3.0});
    }
}

TEST(DirToAnalysis, IsNotClamped) {
    std::vector<double> values;
    DirToAnalysis({P(0, 0, 1e300), P(NaN, 0, 0)}, values, P(0, 0, 1));
    EXPECT_EQ(values[0], 1e300);
    EXPECT_TRUE(std::isnan(values[1]));
}

TEST(CriticalAreas, IsTheAngleToTheDirection) {
    for (const double tilt : {1.0, 30.0, 45.0, 60.0, 89.0})
        for (const double angle : AnglesOf(Tilted(3, tilt), P(0, 0, 7))) EXPECT_NEAR(angle, tilt, 1e-9);
    for (const double angle : AnglesOf(Grid(2), P(0, 3, 0))) EXPECT_EQ(angle, 90.0);
}

TEST(CriticalAreas, DisregardsTheSense) {
    for (const double angle : AnglesOf(Tilted(3, 30.0), P(0, 0, -1))) EXPECT_NEAR(angle, 30.0, 1e-9);
    PIN mesh = Tilted(3, 30.0);
    Reverse(mesh);
    for (const double angle : AnglesOf(mesh, P(0, 0, 1))) EXPECT_NEAR(angle, 30.0, 1e-9);
}

TEST(CriticalAreas, HoldsTheCosineOffOne) {
    const double least = std::acos(0.99999999) / std::numbers::pi * 180.0;
    for (const double angle : AnglesOf(Grid(2), P(0, 0, 1))) EXPECT_EQ(angle, least);
    for (const double angle : AnglesOf(Grid(2), P(0, 0, -1))) EXPECT_NEAR(angle, least, 1e-12);
}

TEST(CriticalAreas, IsNothingOnThePlateAndARightAngleOnItsRim) {
    const P axis = SafeUnit(P(1, 2, 3));
    const Plate plate = MakePlate(axis);
    const std::vector<double> angles = AnglesOf(plate.mesh, axis);
    ASSERT_EQ(plate.onFaces.size(), 18u);
    ASSERT_EQ(plate.onRim.size(), 36u);
    for (const int node : plate.onFaces) EXPECT_LT(angles[node], LeastAngle);
    for (const int node : plate.onRim) EXPECT_NEAR(angles[node], 90.0, 1e-9);
}

TEST(CriticalAreas, IsNothingWhereUprightTrianglesGiveNoNormal) {
    const Plate plate = MakePlate(P(0, 0, 1));
    const std::vector<P> normals = PlainNormals(plate.mesh, true);
    const std::vector<double> angles = AnglesOf(plate.mesh, P(0, 0, 1));
    for (std::size_t node = 0; node < normals.size(); ++node) EXPECT_LT(angles[node], LeastAngle);
    EXPECT_TRUE(std::any_of(normals.begin(), normals.end(), [](const P& n) { return n == P(); }));
}

TEST(CriticalAreas, OfAnEmptyMeshAreNone) { EXPECT_TRUE(AnglesOf(PIN(), P(0, 0, 1)).empty()); }

TEST(CriticalAreas, IsThePlainRuleToTheBit) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 2 == 0 ? RandomMesh(seed, 40) : BumpySphere(3);
        HostilePoints next(seed);
        if (seed % 3 == 0)
            for (P& p : mesh.points) p = next();
        const P dir = next();
        const P u = SafeUnit(dir);
        const std::vector<P> normals = PlainNormals(mesh, true);
        const std::vector<double> angles = AnglesOf(mesh, dir);
        ASSERT_EQ(angles.size(), normals.size());
        for (std::size_t node = 0; node < normals.size(); ++node) {
            const P n = normals[node];
            const double dot = u.X * n.X + u.Y * n.Y + u.Z * n.Z;
            double angle = dot > 0 ? 0.0 : std::numbers::pi;
            if (!(Length(u) <= 1e-8) && !(Length(n) <= 1e-8)) {
                double cosine = dot / (Length(u) * Length(n));
                if (cosine < -0.99999999) cosine = -0.99999999;
                if (cosine > 0.99999999) cosine = 0.99999999;
                angle = std::acos(cosine);
            }
            angle = std::fabs(angle / std::numbers::pi * 180.0);
            if (angle > 90.0) angle = 180.0 - angle;
            ASSERT_TRUE(SameBits(angles[node], angle)) << node;
        }
    }
}

TEST(CriticalAreas, OfBrokenMeshesAreOneANode) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        const PIN mesh = seed % 2 == 0 ? Broken(Sphere(3), seed) : WithBrokenLinks(RandomMesh(seed, 40), seed);
        ASSERT_EQ(AnglesOf(mesh, P(NaN, 0, 1)).size(), mesh.points.size());
    }
}

}  // namespace
}  // namespace KM
