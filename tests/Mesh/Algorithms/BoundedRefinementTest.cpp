#include "Mesh/Algorithms/BoundedRefinement.h"

#include <gtest/gtest.h>

#include "Mesh/Algorithms/Refinement.h"
#include "Mesh/Core/Loops.h"
#include "Support/LogCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/LogState.h"

namespace KM {
namespace {

using namespace Test;
using Verbose::EMessageType;

std::int64_t TriangleCount(const PIN& mesh) { return static_cast<std::int64_t>(mesh.edges.size() / 3); }

TEST(RefineWithin, StopsBetweenTwoRoundsWhereTheLimitTurnsOutTooLow) {
    PIN whole = Sphere(4);
    const std::int64_t before = TriangleCount(whole);
    Refine(whole, 0.1);
    const std::int64_t needed = TriangleCount(whole) - before;

    PIN enough = Sphere(4);
    RefineWithin(enough, 0.1, needed, nullptr);
    EXPECT_TRUE(SameRecords(enough, whole));

    PIN stopped = Sphere(4);
    const LogCapture log;
    RefineWithin(stopped, 0.1, needed - 1, nullptr);
    EXPECT_EQ(log.Texts(EMessageType::Error),
              std::vector<std::string>{"Refine: a length of 0.1 takes more than " + std::to_string(needed - 1) +
                                       " new triangles, and ends with edges that are longer"});
    EXPECT_GT(TriangleCount(stopped), before);
    EXPECT_LT(TriangleCount(stopped), TriangleCount(whole));
    EXPECT_TRUE(CollectNonTriangularLoops(stopped).empty());
    ExpectSound(stopped);
}

TEST(RefineWithin, HostilePointsLeaveSoundLinks) {
    const double limits[] = {0.0, 1e-160, 1e-3, 0.5, 3.0, 1e20, 1e150, 1e160, NaN, -2.0};
    for (unsigned seed = 0; seed < 600; ++seed) {
        Numbers next(seed);
        PIN mesh = Sphere(1);
        for (TPoint<double>& p : mesh.points)
            p = next.Below(3) == 0 ? next.HostilePoint() : next.PointBetween(-3.0, 3.0);
        const LogCapture log;
        RefineWithin(mesh, limits[seed % std::size(limits)], 5000, nullptr);
        ASSERT_EQ(IntegrityFaults(mesh), "") << seed;
        ASSERT_LE(TriangleCount(mesh), 5008) << seed;
    }
}

class WithAbort : public testing::Test {
protected:
    WithAbort() {
        Verbose::SetCheckPoint([] { throw XUserAbort(); });
    }
    ~WithAbort() override { Verbose::SetCheckPoint(nullptr); }
};

TEST_F(WithAbort, AnAbortAtAMessageLeavesASoundMesh) {
    for (const std::int64_t most : {10, 1500, 2000}) {
        PIN mesh = Sphere(4);
        EXPECT_THROW(RefineWithin(mesh, 0.1, most, nullptr), XUserAbort) << most;
        ExpectSound(mesh);
        EXPECT_TRUE(CollectNonTriangularLoops(mesh).empty());
    }
}

}  // namespace
}  // namespace KM
