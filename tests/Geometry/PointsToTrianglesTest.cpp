#include "Geometry/PointsToTriangles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <map>
#include <random>
#include <set>

#include "Support/LogCapture.h"
#include "Support/Numbers.h"
#include "Support/PointClouds.h"

namespace KM {
namespace {

using PointsToTrianglesHelper::Tesselate3D;
using namespace Test;
using P = TPoint<double>;
using Neighbours = std::vector<std::vector<int>>;

std::vector<int> Surface(const std::vector<P>& points, const Neighbours& neighbours) {
    std::vector<int> triangles;
    Tesselate3D(triangles, points, neighbours, 0);
    return triangles;
}

/// All others, by number.
Neighbours AllOthers(int count) {
    Neighbours neighbours(count);
    for (int i = 0; i < count; ++i)
        for (int k = 0; k < count; ++k)
            if (k != i) neighbours[i].push_back(k);
    return neighbours;
}

/// What holds for every input: indices in range, no triple twice, no pair in more than two triangles.
void ExpectLawful(const std::vector<int>& triangles, std::size_t points) {
    ASSERT_EQ(triangles.size() % 3, 0u);
    std::set<std::set<int>> triples;
    std::map<std::set<int>, int> uses;
    for (std::size_t i = 0; i < triangles.size(); i += 3) {
        const int* t = &triangles[i];
        for (int k = 0; k < 3; ++k) {
            ASSERT_TRUE(t[k] >= 0 && static_cast<std::size_t>(t[k]) < points);
            int& count = uses[{t[k], t[(k + 1) % 3]}];
            EXPECT_LE(++count, 2);
        }
        EXPECT_TRUE(triples.insert({t[0], t[1], t[2]}).second);
    }
}

/// Each directed edge has one fellow the other way: closed, and all triangles turned alike.
int BorderEdges(const std::vector<int>& triangles) {
    std::map<std::pair<int, int>, int> balance;
    for (std::size_t i = 0; i < triangles.size(); i += 3)
        for (std::size_t k = 0; k < 3; ++k) {
            const int from = triangles[i + k];
            const int to = triangles[i + (k + 1) % 3];
            balance[{std::min(from, to), std::max(from, to)}] += from < to ? 1 : -1;
        }
    int border = 0;
    for (const auto& [edge, count] : balance) border += count != 0;
    return border;
}

TEST(Tesselate3D, GivesNothingWithoutNeighbours) {
    EXPECT_TRUE(Surface({}, {}).empty());
    EXPECT_TRUE(Surface({P()}, {{}}).empty());
    EXPECT_TRUE(Surface({P(), P(1, 0, 0), P(0, 1, 0)}, {{1}, {2}, {0}}).empty());
    EXPECT_TRUE(Surface({P(), P(1, 0, 0), P(0, 1, 0)}, {}).empty());
}

TEST(Tesselate3D, StartsWithTheTwoFirstNeighbours) {
    EXPECT_EQ(Surface({P(), P(1, 0, 0), P(0, 1, 0)}, {{1, 2}, {}, {}}), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(Surface({P(), P(1, 0, 0), P(0, 1, 0)}, {{2, 1}, {}, {}}), (std::vector<int>{0, 2, 1}));
}

TEST(Tesselate3D, KeepsWhatTheListHolds) {
    std::vector<int> triangles{7};
    Tesselate3D(triangles, {P(), P(1, 0, 0), P(0, 1, 0)}, {{1, 2}}, -5);
    EXPECT_EQ(triangles, (std::vector<int>{7, 0, 1, 2}));
}

TEST(Tesselate3D, PassesOverNeighboursThatAreNoPoints) {
    const std::vector<P> points{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(1, 1, 0)};
    EXPECT_EQ(Surface(points, {{1, 2, 99, -1}, {0, 3, -7}, {0, 3, 4}, {1, 2}}),
              Surface(points, {{1, 2}, {0, 3}, {0, 3}, {1, 2}}));
    for (const int wrong : {-1, 4, std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 0})
        EXPECT_TRUE(Surface(points, {{wrong, 1}, {}, {}, {}}).empty());
}

// Straight on is cheap, so the triangle across the side 1-2 comes first; the fold back to the sides 1-0 and 0-2 costs more,
// but not too much.
TEST(Tesselate3D, GoesStraightOnBeforeItFoldsBack) {
    EXPECT_EQ(Surface({P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(1, 1, 0)}, AllOthers(4)),
              (std::vector<int>{0, 1, 2, 1, 3, 2, 0, 3, 1, 0, 2, 3}));
}

TEST(Tesselate3D, ClosesATetrahedron) {
    const std::vector<int> triangles = Surface({P(1, 1, 1), P(1, -1, -1), P(-1, 1, -1), P(-1, -1, 1)}, AllOthers(4));
    EXPECT_EQ(triangles.size(), 12u);
    EXPECT_EQ(BorderEdges(triangles), 0);
}

TEST(Tesselate3D, ClosesASphere) {
    for (const int count : {50, 100, 333, 1000, 3000}) {
        SCOPED_TRACE(testing::Message() << count << " points");
        const std::vector<P> points = SpherePoints(count);
        const std::vector<int> triangles = Surface(points, NearestNeighbours(points, 12));
        EXPECT_EQ(triangles.size(), 3u * (2u * count - 4u));
        EXPECT_EQ(BorderEdges(triangles), 0);
        ExpectLawful(triangles, points.size());
    }
}

TEST(Tesselate3D, StartsAgainForEachPiece) {
    std::vector<P> points = SpherePoints(60);
    for (const P& p : SpherePoints(60)) points.push_back(p + P(10, 0, 0));
    points.push_back(P(50, 50, 50));
    Neighbours neighbours = NearestNeighbours(points, 12);
    neighbours.back().clear();
    LogCapture log;
    const std::vector<int> triangles = Surface(points, neighbours);
    EXPECT_EQ(triangles.size(), 2u * 3u * (2u * 60u - 4u));
    EXPECT_EQ(BorderEdges(triangles), 0);
    EXPECT_EQ(log.Texts(Verbose::EMessageType::Info),
              (std::vector<std::string>{"New start for node: 0", "New start for node: 60", "New start for node: 120"}));
    EXPECT_EQ(log.Texts(Verbose::EMessageType::Note),
              std::vector<std::string>{"Progress: Task Tesselate has started!"});
}

TEST(Tesselate3D, EndsOnAnyNeighboursAndPoints) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        const int count = 3 + static_cast<int>(random() % 40);
        const int range = seed % 2 == 0 ? 4 : 1000;
        std::vector<P> points;
        const auto number = [&] {
            if (seed % 5 == 0 && random() % 20 == 0) return random() % 2 == 0 ? NaN : Infinity;
            return static_cast<double>(random() % range);
        };
        for (int i = 0; i < count; ++i) {
            const double x = number();
            const double y = number();
            points.push_back(P(x, y, seed % 3 == 0 ? 0.0 : number()));
        }
        Neighbours neighbours(seed % 7 == 0 ? count / 2 : count);
        for (auto& list : neighbours)
            for (std::size_t k = random() % 20; k > 0; --k)
                list.push_back(static_cast<int>(random() % (count + 2)) - 1);
        ExpectLawful(Surface(points, neighbours), points.size());
    }
}

TEST(Tesselate3D, EndsWhereAllPointsAreOne) {
    const std::vector<P> points(300, P(1, 2, 3));
    ExpectLawful(Surface(points, NearestNeighbours(points, 12)), points.size());
}

TEST(Tesselate3D, IsQuickWithStartsThatLeadNowhere) {
    // Each start forgets its own front only.
    const int count = 100000;
    std::vector<P> points;
    for (int i = 0; i < count; ++i) points.push_back(P(i, i % 3, 0));
    Neighbours neighbours(count);
    for (int i = 0; i + 2 < count; i += 3) neighbours[i] = {i + 1, i + 2};
    EXPECT_EQ(Surface(points, neighbours).size(), 3u * (count / 3));
}

}  // namespace
}  // namespace KM
