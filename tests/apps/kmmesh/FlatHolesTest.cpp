#include "FlatHoles.h"

#include <gtest/gtest.h>

#include "Mesh/Core/Loops.h"
#include "MeshReport.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM::Tool {
namespace {

using namespace KM::Test;
using Point = TPoint<double>;

/// A comb in a slanted plane, whose teeth no fill from corner to corner would respect.
Soup Comb() {
    Soup outline;
    for (int i = 0; i < 10; ++i) {
        outline.push_back({2.0 * i, 1.0, 0.0});
        outline.push_back({2.0 * i + 0.5, 20.0, 0.0});
        outline.push_back({2.0 * i + 1.0, 1.0, 0.0});
    }
    outline.push_back({19.0, 0.0, 0.0});
    outline.push_back({0.0, 0.0, 0.0});
    for (Point& p : outline) p = {0.6 * p.X + 7.0, p.Y - 3.0, 0.8 * p.X};
    return outline;
}

TEST(FlatHoles, AreFilledWithinTheirPlane) {
    for (const bool isTurned : {false, true}) {
        Soup outline = Comb();
        if (isTurned) std::reverse(outline.begin(), outline.end());
        PIN mesh = OneLoop(outline);
        const double area = Measure(mesh).area;
        FlatHoles(mesh).Fill(OrphanLoop(mesh, 0));
        const MeshReport report = Measure(mesh);
        EXPECT_TRUE(report.boundaries.empty());
        // The loop itself counts as a fan, with folds; the comb has 19 units of back, and ten teeth.
        EXPECT_NEAR(report.area - area, 19.0 + 10 * 9.5, 1e-9);
    }
}

TEST(FlatHoles, LeaveAloneWhatIsNotFlat) {
    const Soup outlines[] = {
        {{0, 0, 0}, {1, 0, 0.1}, {1, 1, 0}, {0, 1, 0.1}},
        {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {1, 0, 0}},
        {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
    };
    for (const Soup& outline : outlines) {
        PIN mesh = OneLoop(outline);
        const PIN before = mesh;
        FlatHoles(mesh).Fill(OrphanLoop(mesh, 0));
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

}  // namespace
}  // namespace KM::Tool
