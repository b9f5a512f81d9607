#include "Facet/Strips.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>

#include "Mesh/Core/Loops.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Strips.h"

namespace KM {
namespace {

using namespace KM::Test;

struct Strip {
    std::vector<int> nodes;
    int kind;

    friend bool operator==(const Strip&, const Strip&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Strip& strip) {
        for (const int node : strip.nodes) stream << node << ' ';
        return stream << "kind " << strip.kind;
    }
};

/// The strips of a mesh, with the word count checked.
std::vector<Strip> StripsOf(PIN mesh) {
    std::vector<StripFan> fans;
    const int words = BuildStrips(mesh, fans);
    std::vector<Strip> strips;
    std::size_t expected = 0;
    for (const StripFan& fan : fans) {
        strips.push_back({{fan.nodes.begin(), fan.nodes.end()}, fan.kind});
        expected += fan.nodes.size() + 1;
    }
    EXPECT_EQ(words, static_cast<int>(expected));
    return strips;
}

/// The rule as it is told to hosts, word by word and without care for speed.
class PlainRule {
public:
    explicit PlainRule(const PIN& mesh) : mesh_(mesh), visited_(mesh.edges.size(), false) {}

    std::vector<Strip> Strips() {
        std::vector<int> leftovers;
        for (int i = 0; i < static_cast<int>(mesh_.edges.size()); ++i) {
            if (mesh_.edges[i].NE == -1 || visited_[i]) continue;
            const int twin = mesh_.edges[i].TE;
            const int twinOfNext = mesh_.edges[mesh_.edges[i].NE].TE;
            if (twin != -1 && !visited_[twin] && twinOfNext != -1 && !visited_[twinOfNext])
                StripFrom(i);
            else
                leftovers.push_back(i);
        }
        for (const int i : leftovers)
            if (!visited_[i] && mesh_.edges[i].TE != -1 && !visited_[mesh_.edges[i].TE]) StripFrom(i);
        for (const int i : leftovers)
            if (!visited_[i]) StripFrom(i);
        return strips_;
    }

private:
    void SetVisited(int x, bool visited) {
        visited_[x] = visited_[mesh_.edges[x].NE] = visited_[PrevEdge(mesh_, x)] = visited;
    }

    int WalkStrip(int x, bool toFront, std::deque<int>& strip) {
        int last = -1;
        bool toggle = true;
        while (x != -1) {
            if (visited_[x] || mesh_.edges[x].NE == -1) break;
            SetVisited(x, true);
            last = x;
            const int node = mesh_.edges[mesh_.edges[mesh_.edges[x].NE].NE].P0;
            toFront ? strip.push_front(node) : strip.push_back(node);
            x = toggle ? mesh_.edges[mesh_.edges[x].NE].TE : mesh_.edges[PrevEdge(mesh_, x)].TE;
            toggle = !toggle;
        }
        return last;
    }

    void StripFrom(int e) {
        std::deque<int> strip{mesh_.edges[e].P0, mesh_.edges[mesh_.edges[e].NE].P0};
        WalkStrip(e, false, strip);
        const std::size_t f = strip.size();
        const int last = WalkStrip(mesh_.edges[e].TE, true, strip);
        const std::size_t b = strip.size() - f;
        int kind = 1;
        if (b % 2 == 1 && f % 2 == 1) {
            strip.pop_front();
            SetVisited(last, false);
        } else if (b % 2 == 1) {
            kind = 2;
        }
        strips_.push_back({{strip.begin(), strip.end()}, kind});
    }

    const PIN& mesh_;
    std::vector<bool> visited_;
    std::vector<Strip> strips_;
};

std::vector<std::array<int, 3>> SortedTrianglesOf(const std::vector<Strip>& strips) {
    std::vector<std::array<int, 3>> all;
    for (Strip strip : strips) {
        if (strip.kind == 2) std::reverse(strip.nodes.begin(), strip.nodes.end());
        const auto triangles = TrianglesOfStrip(strip.nodes);
        all.insert(all.end(), triangles.begin(), triangles.end());
    }
    std::sort(all.begin(), all.end());
    return all;
}

void Kill(PIN& mesh, int triangle, bool cutTwins) {
    for (int e = 3 * triangle; e < 3 * triangle + 3; ++e) {
        const int twin = mesh.edges[e].TE;
        if (cutTwins && twin != -1) mesh.edges[twin].TE = -1;
        mesh.edges[e].NE = -1;
    }
}

/// Takes out about a third of the triangles; where `cutTwins` is false the twins of dead records go on naming them.
PIN WithDeadTriangles(PIN mesh, unsigned seed, bool cutTwins) {
    std::mt19937 random(seed);
    for (int t = 0; t < static_cast<int>(mesh.edges.size()) / 3; ++t)
        if (random() % 3 == 0) Kill(mesh, t, cutTwins);
    return mesh;
}

/// A sheet of `n` by `n` squares that are loops of four edges.
PIN QuadSheet(int n) {
    PIN mesh;
    std::map<std::pair<int, int>, int> edgeOf;
    for (int y = 0; y < n; ++y)
        for (int x = 0; x < n; ++x) {
            const int a = y * (n + 1) + x;
            const int corners[] = {a, a + 1, a + n + 2, a + n + 1};
            const int first = static_cast<int>(mesh.edges.size());
            for (int k = 0; k < 4; ++k) {
                edgeOf[{corners[k], corners[(k + 1) % 4]}] = first + k;
                mesh.edges.push_back({first + (k + 1) % 4, -1, corners[k]});
            }
        }
    for (const auto& [ends, edge] : edgeOf) {
        const auto twin = edgeOf.find({ends.second, ends.first});
        if (twin != edgeOf.end()) mesh.edges[edge].TE = twin->second;
    }
    return mesh;
}

TEST(BuildStrips, OfAnEmptyMeshIsNothing) { EXPECT_EQ(StripsOf(PIN()), std::vector<Strip>()); }

TEST(BuildStrips, OfOneTriangleIsOneStripOfFourWords) {
    PIN mesh = RightTriangle();
    std::vector<StripFan> strips;
    EXPECT_EQ(BuildStrips(mesh, strips), 4);
    EXPECT_EQ(StripsOf(mesh), (std::vector<Strip>{{{0, 1, 2}, 1}}));
}

// The walk from the shared edge finds a node on each side; the one in front would turn the winding.
TEST(BuildStrips, GivesTheSecondOfTwoTrianglesBack) {
    EXPECT_EQ(StripsOf(UnitSquare()), (std::vector<Strip>{{{1, 3, 0}, 1}, {{1, 2, 3}, 1}}));
}

//    2 - 3
//   / \ /     0-1-2 in the middle, neighbours across 0-1 and 1-2
//  0 - 1
//   \ /
//    4
TEST(BuildStrips, IsReadBackToFrontWhereThatKeepsTheWinding) {
    const PIN mesh =
        FromFacets({{{0, 0, 0}, {2, 0, 0}, {1, 1, 0}, {3, 1, 0}, {1, -1, 0}}, {0, 1, 2, 2, 1, 3, 1, 0, 4}});
    EXPECT_EQ(StripsOf(mesh), (std::vector<Strip>{{{4, 0, 1, 2, 3}, 2}}));
    EXPECT_EQ(SortedTrianglesOf(StripsOf(mesh)), TrianglesOf(mesh));
}

TEST(BuildStrips, SkipsDeadTriangles) {
    for (const bool cutTwins : {true, false}) {
        SCOPED_TRACE(cutTwins);
        PIN mesh = UnitSquare();
        Kill(mesh, 0, cutTwins);
        EXPECT_EQ(SortedTrianglesOf(StripsOf(mesh)), (std::vector<std::array<int, 3>>{{1, 2, 3}}));
        Kill(mesh, 1, cutTwins);
        EXPECT_EQ(StripsOf(mesh), std::vector<Strip>());
    }
}

TEST(BuildStrips, AppendsAndCountsWhatIsNewOnly) {
    PIN mesh = RightTriangle();
    std::vector<StripFan> strips(1);
    strips[0].nodes = {7, 8, 9, 10};
    for (int i = 1; i < 6; ++i) {
        EXPECT_EQ(BuildStrips(mesh, strips), 4);
        ASSERT_EQ(strips.size(), static_cast<std::size_t>(i + 1));
    }
    EXPECT_EQ(strips[0].nodes, (std::deque<int>{7, 8, 9, 10}));
    EXPECT_EQ(strips[5].nodes, (std::deque<int>{0, 1, 2}));
}

TEST(BuildStrips, LeavesTheMeshAsItIs) {
    PIN mesh = WithDeadTriangles(RandomMesh(5, 60), 5, false);
    const PIN before = mesh;
    std::vector<StripFan> strips;
    BuildStrips(mesh, strips);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(BuildStrips, FollowsThePlainRule) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const int count = 1 + static_cast<int>(seed % 97);
        PIN mesh =
            seed % 2 == 0
                ? RandomMesh(seed, count)
                : FromFacets(Shuffled(seed % 4 == 1 ? GridFacets(2 + count / 8) : SphereFacets(1 + count / 12), seed));
        EXPECT_EQ(StripsOf(mesh), PlainRule(mesh).Strips());
        for (const bool cutTwins : {true, false}) {
            const PIN holed = WithDeadTriangles(mesh, seed, cutTwins);
            EXPECT_EQ(StripsOf(holed), PlainRule(holed).Strips());
        }
    }
}

TEST(BuildStrips, FollowsThePlainRuleOnLongerLoops) {
    for (int n = 1; n < 9; ++n) {
        const PIN mesh = QuadSheet(n);
        EXPECT_EQ(StripsOf(mesh), PlainRule(mesh).Strips());
    }
}

TEST(BuildStrips, HoldsEachTriangleOnceWithItsWinding) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        for (const PIN& mesh : {RandomMesh(seed, 120), FromFacets(Shuffled(SphereFacets(6), seed)),
                                WithDeadTriangles(FromFacets(Shuffled(GridFacets(9), seed)), seed, true)})
            EXPECT_EQ(SortedTrianglesOf(StripsOf(mesh)), TrianglesOf(mesh));
    }
}

TEST(BuildStrips, IsFarShorterThanSeparateTriangles) {
    PIN sphere = Sphere(40);
    std::vector<StripFan> strips;
    const double triangles = static_cast<double>(sphere.edges.size()) / 3.0;
    EXPECT_LT(BuildStrips(sphere, strips) / triangles, 1.5);  // 4 words for a triangle alone, 1 for one in a strip
}

TEST(BuildStrips, SkipsWhatIsNoLoop) {
    constexpr int far = std::numeric_limits<int>::max();
    for (const int broken : {-7, 6, far, 3}) {  // 3: into the other triangle, and never back
        SCOPED_TRACE(broken);
        PIN mesh = UnitSquare();
        mesh.edges[2].NE = broken;
        EXPECT_EQ(StripsOf(mesh), (std::vector<Strip>{{{3, 1, 2}, 1}}));
    }
}

TEST(BuildStrips, TakesATwinThatDoesNotExistForNone) {
    constexpr int far = std::numeric_limits<int>::max();
    for (const int broken : {-2, -1000, 6, far}) {
        SCOPED_TRACE(broken);
        PIN mesh = UnitSquare();
        for (Edge& edge : mesh.edges) edge.TE = broken;
        EXPECT_EQ(StripsOf(mesh), (std::vector<Strip>{{{0, 1, 3}, 1}, {{1, 2, 3}, 1}}));
    }
}

// Links without any sense: it has to end, and nothing may come out that is not in the mesh.
TEST(BuildStrips, SurvivesAnyLinks) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        PIN mesh = RandomMesh(seed, 20);
        const auto anything = [&] { return static_cast<int>(random() % 70) - 5; };
        for (Edge& edge : mesh.edges) {
            if (random() % 4 == 0) edge.NE = anything();
            if (random() % 4 == 0) edge.TE = anything();
            if (random() % 16 == 0) edge.P0 = anything();
        }
        for (const Strip& strip : StripsOf(mesh)) {
            EXPECT_GE(strip.nodes.size(), 3u);
            for (const int node : strip.nodes)
                EXPECT_TRUE(
                    std::any_of(mesh.edges.begin(), mesh.edges.end(), [&](const Edge& e) { return e.P0 == node; }));
        }
    }
}

}  // namespace
}  // namespace KM
