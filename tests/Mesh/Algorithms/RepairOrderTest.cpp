#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "Mesh/Algorithms/Decimation.h"
#include "Mesh/Algorithms/HoleFilling.h"
#include "Mesh/Algorithms/LargestSolids.h"
#include "Mesh/Algorithms/PlaneDivision.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Construction.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

// Work on a broken part comes in any order: each step has to leave what the next one can take.

namespace KM {
namespace {

using namespace Test;
using Visitor = TPinManipulationVisitor<TPoint<double>>;

struct Step {
    std::string name;
    void (*run)(PIN& mesh);
};

void FillAll(PIN& mesh) {
    FillHoles(mesh, -1);
    RebuildNodeEdges(mesh);
}

void KeepLargest(PIN& mesh) {
    Visitor nobody;
    Keep(mesh, 1, nobody);
}

void KeepLargeOnes(PIN& mesh) {
    Visitor nobody;
    Keep(mesh, -1, nobody);
}

void DecimateALittle(PIN& mesh) {
    Visitor nobody;
    DecimateNodes(mesh, 0.02, nobody);
    Decimate(mesh, 0.02, nobody);
}

void DecimateMuch(PIN& mesh) {
    Visitor nobody;
    DecimateNodes(mesh, 10.0, nobody);
    Decimate(mesh, 10.0, nobody);
}

void TakeAbove(PIN& mesh) {
    const double point[3] = {0.1, 0.2, 0.05};
    const double normal[3] = {0.3, 0.2, 1.0};
    PIN below, above;
    if (PlnDivMesh(mesh, point, normal, below, above) == 0) mesh = above;
}

const Step Steps[] = {{"fill", FillAll},
                      {"keep the largest", KeepLargest},
                      {"keep large ones", KeepLargeOnes},
                      {"decimate a little", DecimateALittle},
                      {"decimate much", DecimateMuch},
                      {"take what is above", TakeAbove}};

PIN MeshOf(const Soup& soup) {
    PIN mesh;
    AddTriangles_1(mesh, soup);
    return mesh;
}

/// Without each triangle whose number is one of `numbers` in rows of `period`.
Soup Without(const Soup& soup, std::size_t period, const std::vector<std::size_t>& numbers) {
    Soup result;
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3) {
        const std::size_t number = i / 3 % period;
        if (std::find(numbers.begin(), numbers.end(), number) == numbers.end())
            result.insert(result.end(), {soup[i], soup[i + 1], soup[i + 2]});
    }
    return result;
}

Soup Ball() { return SphereFacets(8).AsSoup(); }

/// Patches of several sizes are missing.
Soup BallWithHoles() { return Without(Ball(), 101, {7, 40, 41, 42, 60, 61, 62, 63, 64, 65, 66}); }

/// Corners of some triangles lie beside their neighbours', so that the surface has cracks.
Soup BallWithCracks() {
    Soup soup = Ball();
    for (std::size_t i = 0; i < soup.size(); i += 31) soup[i].Z += 1e-3;
    return soup;
}

/// Triangles turned over, twice there, and without area.
Soup BallWithFaults() {
    Soup soup = Ball();
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3 * 37) std::swap(soup[i + 1], soup[i + 2]);
    for (std::size_t i = 0; i < 30; ++i) soup.push_back(soup[i]);
    const TPoint<double> a = soup[300], b = soup[301];
    soup.insert(soup.end(), {a, b, (a + b) / 2.0});
    return soup;
}

/// A ball with a hole, a smaller one inside, a box that has an edge in common with neither, and crumbs.
Soup ManySolids() {
    Soup soup = BallWithHoles();
    for (const TPoint<double>& p : SphereFacets(4).AsSoup()) soup.push_back(p * 0.5);
    for (const TPoint<double>& p : CubeFacets().AsSoup()) soup.push_back(p + TPoint<double>(0.5, 0.5, 0.5));
    for (int i = 0; i < 5; ++i)
        for (const TPoint<double>& p : RightTriangle().points) soup.push_back(p * 0.1 + TPoint<double>(2.0 + i, 0, 0));
    return soup;
}

/// Two boxes on one edge: four triangles meet there.
Soup BoxesOnAnEdge() {
    Soup soup = CubeFacets().AsSoup();
    for (const TPoint<double>& p : CubeFacets().AsSoup()) soup.push_back(p + TPoint<double>(1, 1, 0));
    return soup;
}

std::vector<std::pair<std::string, PIN>> BrokenMeshes() {
    std::vector<std::pair<std::string, PIN>> meshes = {
        {"ball", MeshOf(Ball())},
        {"holes", MeshOf(BallWithHoles())},
        {"cracks", MeshOf(BallWithCracks())},
        {"faults", MeshOf(BallWithFaults())},
        {"solids", MeshOf(ManySolids())},
        {"boxes", MeshOf(BoxesOnAnEdge())},
        {"sheet", Grid(9)},
        {"bow tie", BowTie()},
    };
    for (unsigned seed = 1; seed <= 4; ++seed)
        meshes.emplace_back("random " + std::to_string(seed), RandomMesh(seed, 150));
    return meshes;
}

TEST(RepairOrder, EveryStepTakesWhatAnyOtherLeaves) {
    for (const auto& [name, mesh] : BrokenMeshes()) {
        ExpectIntact(mesh);
        for (const Step& first : Steps) {
            PIN once = mesh;
            first.run(once);
            SCOPED_TRACE(name + ": " + first.name);
            ExpectIntact(once);
            for (const Step& second : Steps) {
                PIN twice = once;
                second.run(twice);
                SCOPED_TRACE(second.name);
                ExpectIntact(twice);
            }
        }
    }
}

/// The links may say anything: what is asked for is an end.
TEST(RepairOrder, ComesToAnEndOnMeshesWithBrokenLinks) {
    for (const auto& [name, mesh] : BrokenMeshes()) {
        SCOPED_TRACE(name);
        for (unsigned seed = 1; seed <= 3; ++seed) {
            for (const Step& first : Steps) {
                for (const Step& second : Steps) {
                    PIN broken = WithBrokenLinks(mesh, seed);
                    first.run(broken);
                    second.run(broken);
                }
            }
        }
    }
}

TEST(RepairOrder, ClosesABallWhateverIsTakenFirst) {
    for (const Step& first : {Steps[0], Steps[1], Steps[3], Steps[5]}) {
        SCOPED_TRACE(first.name);
        PIN mesh = MeshOf(BallWithHoles());
        first.run(mesh);
        FillAll(mesh);
        EXPECT_EQ(OrphanCount(mesh), 0);
        ExpectIntact(mesh);
    }
}

}  // namespace
}  // namespace KM
