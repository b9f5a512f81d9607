#include "Mesh/Algorithms/LargestSolids.h"

#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>

#include "Mesh/Algorithms/PlainDecimation.h"
#include "Support/BrokenMeshes.h"
#include "Support/LogCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"
#include "Support/RecordingVisitor.h"
#include "Utils/U_App/Services.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;
using Texts = std::vector<std::string>;

/// A row of `n` triangles, each a solid of 3 edges and one more pair of twins apart from the first: `n` + 2 nodes.
PIN Strip(int n) {
    IndexedFacets facets;
    for (int i = 0; i < n + 2; ++i) facets.points.push_back(P(i / 2, i % 2, 0));
    for (int i = 0; i < n; ++i) {
        if (i % 2 == 0) facets.triples.insert(facets.triples.end(), {i, i + 2, i + 1});
        else facets.triples.insert(facets.triples.end(), {i, i + 1, i + 2});
    }
    return FromFacets(facets);
}

PIN Joined(std::initializer_list<PIN> parts) {
    PIN mesh;
    for (const PIN& part : parts) Append(mesh, part);
    return mesh;
}

Texts KeepSome(PIN& mesh, int count) {
    LogCapture log;
    VisitorOf<PIN> nobody;
    Keep(mesh, count, nobody);
    EXPECT_EQ(log.Count(Verbose::EMessageType::Error), 0);
    return log.Texts(Verbose::EMessageType::Info);
}

TEST(Keep, KeepsTheLargest) {
    const PIN parts = Joined({Strip(2), Strip(5), Strip(1), Strip(4)});
    const struct {
        int count;
        std::size_t triangles;
        const char* text;
    } rows[] = {{0, 0, "Keep will erase: 4 and will keep: 0 solids;"},
                {1, 5, "Keep will erase: 3 and will keep: 1 solids;"},
                {2, 9, "Keep will erase: 2 and will keep: 2 solids;"},
                {3, 11, "Keep will erase: 1 and will keep: 3 solids;"},
                {4, 12, "Keep will erase: 0 and will keep: 4 solids;"},
                {5, 12, "Keep will erase: 0 and will keep: 4 solids;"},
                {INT_MAX, 12, "Keep will erase: 0 and will keep: 4 solids;"},
                {-2, 12, "Keep will erase: 0 and will keep: 4 solids;"},
                {INT_MIN, 12, "Keep will erase: 0 and will keep: 4 solids;"}};
    for (const auto& [count, triangles, text] : rows) {
        SCOPED_TRACE(count);
        PIN mesh = parts;
        EXPECT_EQ(KeepSome(mesh, count), Texts{text});
        EXPECT_EQ(TrianglesOf(mesh).size(), triangles);
        EXPECT_EQ(mesh.edges.size(), 3 * triangles);
        ExpectCompact(mesh);
    }
}

TEST(Keep, OfEqualSolidsTakesTheFirstOut) {
    PIN mesh = Joined({RightTriangle(), RightTriangle(), RightTriangle()});
    for (std::size_t i = 0; i < mesh.points.size(); ++i) mesh.points[i].Z = static_cast<double>(i / 3);
    KeepSome(mesh, 1);
    ASSERT_EQ(mesh.points.size(), 3u);
    for (const P& p : mesh.points) EXPECT_EQ(p.Z, 2.0);
}

TEST(Keep, ByItselfTakesOutWhatIsLessThanATwentieth) {
    // Of 60 edges a twentieth is 3, which stays; of 63 as well, since the quotient is whole; of 80 it is 4.
    for (const auto& [triangles, stays] : {std::pair(19, true), {20, true}, {25, true}, {26, false}}) {
        SCOPED_TRACE(triangles);
        PIN mesh = Joined({RightTriangle(), Strip(triangles)});
        const Texts texts = KeepSome(mesh, -1);
        EXPECT_EQ(texts, stays ? Texts() : Texts{"Keep will erase: 1 and will keep: 1 solids;"});
        EXPECT_EQ(TrianglesOf(mesh).size(), static_cast<std::size_t>(triangles + (stays ? 1 : 0)));
        ExpectCompact(mesh);
    }
}

TEST(Keep, ByItselfTellsOfOneThatStays) {
    PIN two = Joined({Strip(1), Strip(100), Strip(2)});
    EXPECT_EQ(KeepSome(two, -1), Texts{"Keep will erase: 2 and will keep: 1 solids;"});
    EXPECT_EQ(TrianglesOf(two).size(), 100u);
    PIN one = Joined({Strip(1), Strip(100), Strip(90)});
    EXPECT_EQ(KeepSome(one, -1), Texts{"Keep will erase: 2 and will keep: 1 solids;"});
    EXPECT_EQ(TrianglesOf(one).size(), 190u);
}

TEST(Keep, ByItselfCanTakeAllOut) {
    PIN mesh;
    for (int i = 0; i < 30; ++i) Append(mesh, RightTriangle());
    EXPECT_EQ(KeepSome(mesh, -1), Texts{"Keep will erase: 29 and will keep: 1 solids;"});
    EXPECT_TRUE(mesh.edges.empty());
    EXPECT_TRUE(mesh.points.empty());
}

TEST(Keep, OfNothingKeepsNothing) {
    PIN mesh;
    EXPECT_EQ(KeepSome(mesh, -1), Texts());
    EXPECT_EQ(KeepSome(mesh, 3), Texts{"Keep will erase: 0 and will keep: 0 solids;"});
}

TEST(Keep, CompactsInAnyCase) {
    PIN mesh = Joined({Strip(3), Strip(3)});
    mesh.points.push_back(P(9, 9, 9));
    mesh.p2e.push_back(-1);
    KeepSome(mesh, 7);
    ExpectCompact(mesh);
    mesh.p2e.clear();
    KeepSome(mesh, -1);
    ExpectCompact(mesh);
}

TEST(Keep, TellsTheVisitorOfCompaction) {
    const PIN before = Joined({Strip(1), Strip(4)});
    PIN mesh = before, cleared = before;
    for (int e = 0; e < 3; ++e) cleared.edges[static_cast<std::size_t>(e)] = Edge();
    RecordingVisitor<PIN> ofKeep, ofCompact;
    LogCapture log;
    Keep(mesh, 1, ofKeep);
    Compact(cleared, ofCompact);
    EXPECT_EQ(ofKeep.reports, ofCompact.reports);
    EXPECT_TRUE(SameRecords(mesh, cleared));
}

TEST(Keep, IsThePlainRule) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        Numbers next(seed);
        PIN parts;
        const int count = 1 + next.Below(40);
        for (int i = 0; i < count; ++i) {
            const int kind = next.Below(10);
            Append(parts, kind == 0 ? Sphere(2) : kind == 1 ? RandomMesh(seed, 20) : Strip(1 + next.Below(9)));
        }
        for (const int keep : {-1, next.Below(50), next.Below(50) - 10}) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " keep " << keep);
            PIN mesh = parts, plain = parts;
            const Texts texts = KeepSome(mesh, keep);
            const std::string text = Plain::Keep(plain, keep);
            EXPECT_EQ(texts, text.empty() ? Texts() : Texts{text});
            ASSERT_TRUE(SameRecords(mesh, plain));
        }
    }
}

TEST(Keep, EndsOnBrokenMeshes) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        const PIN sound = Joined({Sphere(3), Grid(3), Strip(2)});
        PIN mesh = seed % 2 == 0 ? Broken(sound, seed) : WithBrokenLinks(sound, seed);
        KeepSome(mesh, static_cast<int>(seed % 5) - 1);
        EXPECT_LE(mesh.points.size(), sound.points.size());
    }
}

}  // namespace
}  // namespace KM
