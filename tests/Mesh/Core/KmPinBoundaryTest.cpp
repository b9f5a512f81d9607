#include "Tools/KmPinBoundary.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "Mesh/Core/Loops.h"
#include "Support/BrokenMeshes.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {

// For the failure messages of GoogleTest.
static std::ostream& operator<<(std::ostream& out, const PinFault& fault) {
    return out << fault.item << ": " << fault.text;
}

namespace {

using namespace Test;

using Faults = std::vector<PinFault>;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

/// One loop of `count` edges over as many nodes.
PIN Ring(int count) {
    PIN mesh;
    for (int e = 0; e < count; ++e) {
        mesh.points.emplace_back(e, 0, 0);
        mesh.edges.push_back({(e + 1) % count, -1, e});
        mesh.p2e.push_back(e);
    }
    return mesh;
}

std::string Text(const PinBoundary& view) {
    std::ostringstream text;
    text << view;
    return text.str();
}

TEST(PinBoundary, AddsPreviousLinksAndLoopNumbers) {
    PIN mesh = UnitSquare();
    mesh.edges.push_back({-1, 3, -1});  // dead
    const PinBoundary view(mesh);
    ASSERT_EQ(view.edges.size(), 7U);
    for (int e = 0; e < 6; ++e) {
        EXPECT_EQ(view.edges[e].pe, PrevEdge(mesh, e));
        EXPECT_EQ(view.edges[e].ne, mesh.edges[e].NE);
        EXPECT_EQ(view.edges[e].twin, mesh.edges[e].TE);
        EXPECT_EQ(view.edges[e].node, mesh.edges[e].P0);
        EXPECT_EQ(view.edges[e].loopIx, e / 3);
        EXPECT_TRUE(view.aliveEdges[e]);
    }
    EXPECT_FALSE(view.aliveEdges[6]);
    ASSERT_EQ(view.loops.size(), 2U);
    EXPECT_EQ(view.loops[1].first, 3);
    EXPECT_EQ(view.loops[1].count, 3);
    EXPECT_EQ(view.p2e, mesh.p2e);
    EXPECT_EQ(view.points, mesh.points);
}

TEST(PinBoundary, TextForm) {
    EXPECT_EQ(Text(PinBoundary()), "\nBoundary\n{\n  Loops\n  {\n  }\n  Edges\n  {\n  }\n  Nodes\n  {\n  }\n}");
    PIN mesh = RightTriangle();
    mesh.edges.insert(mesh.edges.end(), {{-1, -1, -1}, {4, 9, 2}});
    mesh.p2e.pop_back();
    EXPECT_EQ(Text(PinBoundary(mesh)),
              "\nBoundary\n{"
              "\n  Loops\n  {"
              "\n    Loop\n    {\n      0, 1, 2\n    }"
              "\n    Loop\n    {\n      4\n    }"
              "\n  }"
              "\n  Edges\n  {"
              "\n      0, 2, 1, -1, 0, 0\n      1, 0, 2, -1, 1, 0\n      2, 1, 0, -1, 2, 0\n      4, 4, 4, 9, 2, 1"
              "\n  }"
              "\n  Nodes\n  {"
              "\n    NodeIx = 0, 0, 0, 0, 0\n    NodeIx = 1, 1, 1, 0, 0\n    NodeIx = 2, -1, 0, 1, 0"
              "\n  }\n}");
}

TEST(PinBoundary, TextOfAViewThatWasChangedByHandComesToAnEnd) {
    PinBoundary view(RightTriangle());
    view.loops = {{0, INT_MAX}, {0, INT_MIN}, {-1, 3}, {INT_MAX, 3}};
    view.edges[2].ne = 1;
    view.aliveEdges.clear();
    EXPECT_NE(Text(view).find("      0, 1, 2\n"), std::string::npos) << Text(view);
}

TEST(CheckIntegrity, SoundMeshesHaveNoFault) {
    EXPECT_EQ(CheckIntegrity(PIN()), Faults());
    for (const PIN& mesh : {RightTriangle(), UnitSquare(), BowTie(), Cube(), Grid(5), Sphere(6)}) ExpectIntact(mesh);
    for (unsigned seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectIntact(RandomMesh(seed, 60));
        EXPECT_EQ(CheckIntegrity(RandomMesh(seed, 60)), Faults());
    }
}

TEST(CheckIntegrity, DeadRecordsAndDeadNodesAreNoFault) {
    PIN mesh = RightTriangle();
    mesh.edges.push_back({-1, 0, 77});
    mesh.points.emplace_back(NaN, 0, 0);
    mesh.p2e.push_back(-1);
    EXPECT_EQ(CheckIntegrity(mesh), Faults());
}

TEST(CheckIntegrity, AnEmptyP2eIsNoFaultButAShortOneIs) {
    PIN mesh = RightTriangle();
    mesh.p2e.clear();
    EXPECT_EQ(CheckIntegrity(mesh), Faults());
    const std::string g3 = "G3-1: starting node isn't the same with the information stored in node!\n    NodeIx = ";
    mesh.p2e = {0, 1};
    EXPECT_EQ(CheckIntegrity(mesh), (Faults{{g3 + "2", 2}}));
    mesh.p2e = {0, 1, 2, -1, 2};
    EXPECT_EQ(CheckIntegrity(mesh), (Faults{{g3 + "3", 3}, {g3 + "4", 4}}));
}

// What a mesh itself can have: each row breaks the unit square, whose edges 1 and 5 are twins, in one place.
TEST(CheckIntegrity, NamesEachFaultOfAMesh) {
    const std::string noNext = "G1-1: e->ne == 0 is wrong!";
    const std::string noPrevious = "G1-2: e->pe == 0 is wrong!";
    const std::string notBack = "G1-4: e != e->ne->pe doesn't check!";
    const struct {
        const char* what;
        std::function<void(PIN&)> breakMesh;
        Faults expected;
    } rows[] = {
        {"next edge out of range", [](PIN& m) { m.edges[0].NE = 6; }, {{noNext, 0}, {noPrevious, 1}}},
        {"next edge negative", [](PIN& m) { m.edges[0].NE = -2; }, {{noNext, 0}, {noPrevious, 1}}},
        {"next edge dead",
         [](PIN& m) { m.edges[4] = Edge(); },
         {{noNext, 3}, {noPrevious, 5}, {"G3-2: aliveEdges.find(p2e[n]) == aliveEdges.end()!", 2}}},
        {"next edge on another loop", [](PIN& m) { m.edges[0].NE = 4; }, {{notBack, 0}, {noPrevious, 1}}},
        {"no such twin", [](PIN& m) { m.edges[0].TE = 6; }, {{"G1-10", 0}}},
        {"negative twin", [](PIN& m) { m.edges[0].TE = -2; }, {{"G1-10", 0}}},
        {"the twin has another one", [](PIN& m) { m.edges[0].TE = 5; }, {{"G1-11", 0}}},
        {"the twin has none", [](PIN& m) { m.edges[5].TE = -1; }, {{"G1-11", 1}}},
        {"the twin runs elsewhere",
         [](PIN& m) { std::tie(m.edges[0].TE, m.edges[3].TE) = std::pair(3, 0); },
         {{"G1-12", 3}}},  // edge 0 ends where edge 3 starts, but not the other way round
        {"no such node", [](PIN& m) { m.edges[0].P0 = 4, m.p2e[0] = -1; }, {{"G1-13", 0}}},
        {"coordinate not a number", [](PIN& m) { m.points[3].Z = NaN; }, {{"G1-14", 2}}},
        {"coordinate infinite", [](PIN& m) { m.points[3].X = INFINITY; }, {{"G1-14", 2}}},
        {"node edge forgotten", [](PIN& m) { m.p2e[3] = -1; }, {{"G1-15 Edge stored in node isn't updated for 3!", 2}}},
        {"node edge starts elsewhere",
         [](PIN& m) { m.p2e[3] = 0; },
         {{"G3-1: starting node isn't the same with the information stored in node!\n    NodeIx = 3", 3}}},
        {"node edge out of range",
         [](PIN& m) { m.p2e[3] = 6; },
         {{"G3-2: aliveEdges.find(p2e[n]) == aliveEdges.end()!", 3}}},
        {"loop of two",
         [](PIN& m) {
             m.edges.insert(m.edges.end(), {{7, -1, 0}, {6, -1, 1}});
         },
         {{"2 has to few elements! Elements: 2", 2}}},
        {"loop of one",
         [](PIN& m) {
             m.edges.push_back({6, -1, 0});
         },
         {{"2 has to few elements! Elements: 1", 2}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        PIN mesh = UnitSquare();
        row.breakMesh(mesh);
        EXPECT_EQ(CheckIntegrity(mesh), row.expected);
    }
}

// What only a view can have that was changed by hand.
TEST(CheckIntegrity, NamesEachFaultOfAView) {
    const struct {
        const char* what;
        std::function<void(PinBoundary&)> breakView;
        Faults expected;
    } rows[] = {
        {"previous edge leads to another",
         [](PinBoundary& v) { v.edges[0].pe = 5; },
         {{"G1-3: e != e->pe->ne doesn't check!", 0}, {"G1-4: e != e->ne->pe doesn't check!", 2}}},
        {"previous edge leads nowhere",
         [](PinBoundary& v) { v.edges[2].ne = -1; },
         {{"G1-5: e != e->pe->ne doesn't check!", 0}, {"G1-1: e->ne == 0 is wrong!", 2}, {"G2-4: Loop: 0, 3, 3", 0}}},
        {"loop number",
         [](PinBoundary& v) { v.edges[1].loopIx = 1; },
         {{"G1-7: e->loopIx != e->ne->loopIx doesn't check!", 0},
          {"G1-6: e->loopIx != e->pe->loopIx doesn't check!", 1},
          {"G1-7: e->loopIx != e->ne->loopIx doesn't check!", 1},
          {"G1-6: e->loopIx != e->pe->loopIx doesn't check!", 2},
          {"G2-1: Loop: 0 found an edge that doesn't have correct set loop index!", 0}}},
        {"cached count too small",
         [](PinBoundary& v) { v.loops[1].count = 2; },
         {{"G2-2: Loop: 1 has more elements then the cached version! Real: 3, Cached: 2", 1}}},
        {"cached count too large", [](PinBoundary& v) { v.loops[1].count = 4; }, {{"G2-4: Loop: 1, 3, 4", 1}}},
        {"loop without an edge", [](PinBoundary& v) { v.loops[1].first = -1; }, {{"G2-4: Loop: 1, 0, 3", 1}}},
        {"loop of edges that do not exist",
         [](PinBoundary& v) { v.loops[1].first = INT_MAX; },
         {{"G2-4: Loop: 1, 0, 3", 1}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        PinBoundary view(UnitSquare());
        row.breakView(view);
        Faults found = CheckIntegrity(view);
        EXPECT_EQ(found, row.expected);
    }
}

TEST(CheckIntegrity, GroupsComeInTheirOrder) {
    PIN mesh = UnitSquare();
    mesh.edges.push_back({6, -1, 0});
    mesh.edges[5].TE = -1;
    mesh.p2e[0] = 3;
    const Faults found = CheckIntegrity(mesh);
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].text, "G1-11");
    EXPECT_EQ(found[1].text, "2 has to few elements! Elements: 1");
    EXPECT_TRUE(found[2].text.starts_with("G3-1: "));
}

TEST(CheckIntegrity, GivesUpALoopBehindTenThousandElements) {
    EXPECT_EQ(CheckIntegrity(Ring(10000)), Faults());
    for (const int count : {10001, 50000})
        EXPECT_EQ(CheckIntegrity(Ring(count)), (Faults{{"G2-3: Loop: 0 excedes 10000 elements!", 0}}));

    PinBoundary view(Ring(20));
    view.edges[19].ne = 5;  // the walk never comes back to its first edge
    const Faults found = CheckIntegrity(view);
    EXPECT_EQ(found.back().text, "G2-3: Loop: 0 excedes 10000 elements!");
}

TEST(CheckIntegrity, ATailThatRunsIntoALoopIsToldAtItsEnds) {
    PIN mesh = Ring(3);
    mesh.edges.insert(mesh.edges.end(), {{4, -1, 0}, {1, -1, 1}});  // 3 -> 4 -> 1
    EXPECT_EQ(CheckIntegrity(mesh),
              (Faults{{"G1-2: e->pe == 0 is wrong!", 3}, {"G1-4: e != e->ne->pe doesn't check!", 4}}));
    EXPECT_EQ(PinBoundary(mesh).edges[4].loopIx, -1);
    EXPECT_EQ(PinBoundary(mesh).loops.size(), 1U);
}

/// A quarter of a million edges that all run into one loop.
TEST(CheckIntegrity, LongTailsCostNoQuadraticWalk) {
    PIN mesh = Ring(3);
    const int count = 250000;
    for (int e = 3; e < count; ++e) mesh.edges.push_back({e % 2 == 0 || e < 5 ? 0 : e - 2, -1, 0});
    EXPECT_GT(CheckIntegrity(mesh).size(), 100000U);
}

std::string FirstText(const Faults& faults) { return faults.empty() ? "" : faults.front().text; }

/// The plain checks of the tests walk each loop from each of its edges; they know nothing of previous links.
TEST(CheckIntegrity, FindsAFaultWhereverPlainChecksDo) {
    int unsound = 0;
    for (unsigned seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = RandomMesh(seed, 30);
        switch (seed % 4) {
            case 0:
                mesh = Broken(mesh, seed);
                break;
            case 1:
                mesh = WithBrokenLinks(mesh, seed);
                break;
            case 2:
                mesh = Dissolved(Grid(4), seed, 5);
                break;
            default:
                mesh.edges[seed % mesh.edges.size()].TE = static_cast<int>(seed % 90) - 1;
        }
        if (mesh.p2e.empty()) continue;
        Faults found = CheckIntegrity(mesh);
        // Rules that the plain checks do not have.
        std::erase_if(found, [](const PinFault& f) {
            return f.text.starts_with("G1-15") || f.text.find("to few") != std::string::npos;
        });
        EXPECT_EQ(found.empty(), FirstUnsoundness(mesh).empty()) << FirstText(found) << FirstUnsoundness(mesh);
        unsound += found.empty() ? 0 : 1;
    }
    EXPECT_GT(unsound, 300);
}

TEST(CheckIntegrity, TellsEachFaultOnce) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PinBoundary view(WithBrokenLinks(Broken(RandomMesh(seed, 40), seed), seed));
        if (seed % 2 == 0)
            for (std::size_t e = 0; e < view.edges.size(); e += 7) view.edges[e].pe = static_cast<int>(e * e % 131) - 3;
        std::set<std::pair<std::string, int>> met;
        for (const PinFault& fault : CheckIntegrity(view))
            EXPECT_TRUE(met.emplace(fault.text, fault.item).second) << fault;
    }
}

TEST(CheckIntegrity, AViewOfOtherSizesIsReadWithinThem) {
    PinBoundary view(UnitSquare());
    view.aliveEdges.resize(2);
    EXPECT_FALSE(CheckIntegrity(view).empty());
    view.aliveEdges.assign(100, true);
    view.edges.resize(1);
    EXPECT_FALSE(CheckIntegrity(view).empty());
    view.points.clear();
    EXPECT_FALSE(CheckIntegrity(view).empty());
}

}  // namespace
}  // namespace KM
