#include "Facet/StripScouts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "Facet/StripLoops.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

/// Notes what is fetched.
struct Watched : SlotTriangles {
    std::vector<int>* fetched;

    Watched(const PIN& mesh, std::vector<int>& edges) : SlotTriangles(*Of(mesh.edges)), fetched(&edges) {}
    void Fetch(int edge) const { fetched->push_back(edge); }
};

/// A ring of `count` triangles, an even number, in which the zigzag comes round. Each triangle is entered by its first
/// edge.
PIN Ring(int count) {
    PIN mesh;
    for (int t = 0; t < count; ++t) {
        const int before = 3 * ((t + count - 1) % count);
        const int behind = 3 * ((t + 1) % count);
        // Even triangles are left across the edge behind the one that they are entered by, odd ones across the one
        // ahead.
        mesh.edges.push_back({3 * t + 1, before + (t % 2 == 0 ? 2 : 1), t});
        mesh.edges.push_back({3 * t + 2, t % 2 == 0 ? behind : -1, t + 1});
        mesh.edges.push_back({3 * t, t % 2 == 0 ? -1 : behind, t + 2});
    }
    return mesh;
}

TEST(StripWalk, TurnsAlternately) {
    const PIN mesh = Ring(6);
    const SlotTriangles loops = *SlotTriangles::Of(mesh.edges);
    StripWalk walk{0};
    std::vector<int> met;
    for (int i = 0; i < 7; ++i, walk.Step(loops)) met.push_back(walk.edge);
    EXPECT_EQ(met, (std::vector<int>{0, 3, 6, 9, 12, 15, 0}));
}

TEST(StripScouts, MeetTheNextStripsBeforeTheyAreCut) {
    const PIN mesh = KM::Test::FromFacets(KM::Test::Shuffled(KM::Test::SphereFacets(3), 1));
    std::vector<int> fetched;
    const Watched loops(mesh, fetched);
    StripScouts scouts(loops);
    scouts.Reach(0);
    std::set<int> triangles;
    for (const int e : fetched) triangles.insert(e / 3);
    EXPECT_EQ(triangles.size(), mesh.edges.size() / 3);
    for (const int direction : {0, loops.Twin(0)}) {
        StripWalk walk{direction};
        for (int i = 0; i < 20; ++i) {
            walk.Step(loops);
            EXPECT_NE(std::find(fetched.begin(), fetched.end(), walk.edge), fetched.end());
        }
    }
}

TEST(StripScouts, GoOutOnceForManyStrips) {
    std::vector<int> fetched;
    const Watched loops(KM::Test::Sphere(20), fetched);
    StripScouts scouts(loops);
    int batches = 0;
    for (int e = 0; e < loops.Count(); ++e) {
        const std::size_t before = fetched.size();
        scouts.Reach(e);
        batches += fetched.size() != before;
    }
    EXPECT_EQ(batches, (loops.Count() / 3 + 31) / 32);
}

TEST(StripScouts, EndOnARing) {
    std::vector<int> fetched;
    const Watched loops(Ring(10), fetched);
    StripScouts scouts(loops);
    scouts.Reach(0);
    EXPECT_GT(fetched.size(), 10u);
    EXPECT_LT(fetched.size(), 3000u);
}

TEST(StripScouts, StopAtTakenTriangles) {
    std::vector<int> fetched;
    Watched loops(Ring(10), fetched);
    for (const int t : {2, 3, 7}) loops.Take(3 * t);
    StripScouts scouts(loops);
    scouts.Reach(0);
    EXPECT_GT(fetched.size(), 0u);
    EXPECT_LT(fetched.size(), 60u);
    for (int t = 0; t < 10; ++t) loops.Take(3 * t);
    fetched.clear();
    StripScouts(loops).Reach(0);
    EXPECT_TRUE(fetched.empty());
}

}  // namespace
}  // namespace KM
