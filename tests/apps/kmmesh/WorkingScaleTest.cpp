#include "WorkingScale.h"

#include <gtest/gtest.h>

#include "PartFile.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM::Tool {
namespace {

TEST(WorkingScale, LeavesUsualSizesAlone) {
    EXPECT_EQ(WorkingScale(KM::Test::Cube()), 1.0);
    EXPECT_EQ(WorkingScale(PIN()), 1.0);
}

TEST(WorkingScale, BringsOthersToAUsualSizeAndBackToTheBit) {
    for (const double size : {1e-12, 1e-3, 0.1, 1e7, 1e30, 1e100}) {
        SCOPED_TRACE(size);
        PIN mesh = KM::Test::Sphere(3);
        Scale(mesh, size);
        const PIN before = mesh;
        const double factor = WorkingScale(mesh);
        Scale(mesh, factor);
        EXPECT_GE(DiagonalOf(mesh), 1024.0);
        EXPECT_LT(DiagonalOf(mesh), 2048.0);
        Scale(mesh, 1.0 / factor);
        EXPECT_EQ(mesh.points, before.points);
    }
}

}  // namespace
}  // namespace KM::Tool
