#include "Facet/PolygonEntry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

#include "Geometry/Polygons.h"
#include "Geometry/Triangulation.h"
#include "KmHost.h"
#include "Support/Numbers.h"
#include "Support/Polygons.h"

namespace KM {
namespace {

using KM::Test::NaN;
using P = TPoint<double>;
using Polygon = std::vector<KsPoint>;
using Indices = std::vector<int>;

const Polygon Square{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};

/// A list of the host, given back at the end.
class HostList {
public:
    HostList() = default;
    explicit HostList(const Polygon& points, int itemSize = sizeof(KsPoint)) {
        KmListMk(2, itemSize, 0, 8, 0, &list);
        for (std::size_t i = 0; i < points.size(); ++i) KmListSet(list, static_cast<int>(i), &points[i]);
    }
    explicit HostList(const Indices& indices) {
        KmListMk(2, 4, 0, 8, 0, &list);
        for (const int index : indices) Host::Append(list, index);
    }
    HostList(const HostList&) = delete;
    HostList& operator=(const HostList&) = delete;
    ~HostList() { KmListDel(&list); }

    Indices Values() const {
        const std::int32_t* items = nullptr;
        Host::Items(list, &items);
        return Indices(items, items + list->count);
    }

    KmList* list = nullptr;
};

Indices TrianglesOf(const Polygon& polygon, int project) {
    const HostList points(polygon);
    HostList indices;
    EXPECT_EQ(KmPolyToTri(project, points.list, &indices.list), 0);
    EXPECT_NE(indices.list, nullptr);
    return indices.list == nullptr ? Indices() : indices.Values();
}

Polygon Moved(const std::vector<P>& outline, const std::array<P, 3>& axes, const P& origin) {
    Polygon polygon;
    for (const P& p : outline) {
        const P q = axes[0] * p.X + axes[1] * p.Y + axes[2] * p.Z + origin;
        polygon.push_back({q.X, q.Y, q.Z});
    }
    return polygon;
}

class PolyToTri : public testing::Test {
protected:
    ~PolyToTri() override { KmHostFailNever(); }
};

TEST_F(PolyToTri, CutsAPolygonAsTheTriangulatorDoes) {
    EXPECT_EQ(TrianglesOf(Square, 0), (Indices{0, 1, 2, 0, 2, 3}));
    const Polygon clockwise(Square.rbegin(), Square.rend());
    EXPECT_EQ(TrianglesOf(clockwise, 0), (Indices{3, 2, 1, 3, 1, 0}));
}

TEST_F(PolyToTri, GivesOneTriangleForThreePoints) {
    for (const int project : {0, 1, -1})
        EXPECT_EQ(TrianglesOf({{0, 0, 0}, {1, 0, 2}, {0, 1, 3}}, project), (Indices{0, 1, 2}));
}

TEST_F(PolyToTri, SortsWhenItProjects) {
    const Polygon clockwise(Square.rbegin(), Square.rend());
    EXPECT_EQ(TrianglesOf(clockwise, 1), (Indices{0, 1, 3, 1, 2, 3}));
    std::vector<P> dart{P(0, 0, 0), P(4, 0, 0), P(0, 4, 0), P(1, 1, 0)};
    EXPECT_EQ(TrianglesOf(Moved(dart, {P(1, 0, 0), P(0, 1, 0), P(0, 0, 1)}, P()), 0), (Indices{1, 2, 3, 1, 3, 0}));
    EXPECT_EQ(TrianglesOf(Moved(dart, {P(1, 0, 0), P(0, 1, 0), P(0, 0, 1)}, P()), 1), (Indices{0, 1, 3, 1, 2, 3}));
}

TEST_F(PolyToTri, LevelsASlantedPolygon) {
    // Upright: seen along Z it is a mere line.
    const Polygon upright{{0, 0, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1}};
    EXPECT_EQ(TrianglesOf(upright, 1).size(), 6u);
    const double h = std::sqrt(0.5);
    const std::array<P, 3> axes[] = {{P(0, 1, 0), P(0, 0, 1), P(1, 0, 0)},
                                     {P(1, 0, 0), P(0, 0, 1), P(0, -1, 0)},
                                     {P(h, 0, h), P(0, 1, 0), P(-h, 0, h)}};
    for (const auto& frame : axes) {
        SCOPED_TRACE(testing::Message() << "frame " << &frame - axes);
        const std::vector<P> outline = KM::Test::StarShaped(5, 60);
        const Indices triangles = TrianglesOf(Moved(outline, frame, P(100, -20, 7)), 1);
        ASSERT_EQ(triangles.size(), 3u * 58u);
        double area = 0.0;
        for (std::size_t i = 0; i < triangles.size(); i += 3)
            area += std::fabs(PointsUtils::SignedArea(
                std::vector<P>{outline[triangles[i]], outline[triangles[i + 1]], outline[triangles[i + 2]]}));
        EXPECT_NEAR(area, -PointsUtils::SignedArea(outline), 1e-6);
    }
}

TEST_F(PolyToTri, OrdersTrianglesWhateverTheWindingOfThePolygon) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        const Polygon polygon = Moved(KM::Test::StarShaped(seed, 30), {P(0, 1, 0), P(0, 0, 1), P(1, 0, 0)}, P());
        const Indices flat = TrianglesOf(polygon, 1);
        std::vector<std::array<int, 3>> triangles;
        for (std::size_t i = 0; i < flat.size(); i += 3) triangles.push_back({flat[i], flat[i + 1], flat[i + 2]});
        EXPECT_TRUE(std::is_sorted(triangles.begin(), triangles.end()));
        for (const auto& t : triangles) EXPECT_TRUE(t[0] < t[1] && t[1] < t[2]);
    }
}

TEST_F(PolyToTri, CutsPointsOnALine) {
    // Level ones have no plane to be turned into.
    EXPECT_EQ(TrianglesOf({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, 1), (Indices{0, 1, 2}));
    EXPECT_EQ(TrianglesOf({{0, 0, 0}, {1, 0, 5}, {2, 0, 10}}, 1), (Indices{0, 1, 2}));
}

TEST_F(PolyToTri, RefusesNullIndices) {
    const HostList points(Square);
    EXPECT_EQ(KmPolyToTri(0, points.list, nullptr), 1);
    EXPECT_EQ(KmPolyToTri(0, nullptr, nullptr), 1);
}

TEST_F(PolyToTri, EmptiesTheListBeforeItLooksAtThePoints) {
    for (const bool isNull : {true, false}) {
        HostList indices(Indices{7, 8, 9});
        const HostList none{Polygon()};
        EXPECT_EQ(KmPolyToTri(0, isNull ? nullptr : none.list, &indices.list), 0);
        EXPECT_EQ(indices.Values(), Indices());
    }
    HostList unmade;
    EXPECT_EQ(KmPolyToTri(0, nullptr, &unmade.list), 0);
    EXPECT_EQ(unmade.list, nullptr);
}

TEST_F(PolyToTri, FillsTheListThatThereIs) {
    HostList indices(Indices{7, 8, 9});
    KmList* const before = indices.list;
    const HostList points(Square);
    EXPECT_EQ(KmPolyToTri(0, points.list, &indices.list), 0);
    EXPECT_EQ(indices.list, before);
    EXPECT_EQ(indices.Values(), (Indices{0, 1, 2, 0, 2, 3}));
}

TEST_F(PolyToTri, MakesAListForNoTriangles) { EXPECT_EQ(TrianglesOf({{0, 0, 0}, {1, 0, 0}}, 0), Indices()); }

TEST_F(PolyToTri, LeavesThePointsAlone) {
    const Polygon slanted{{0, 0, 0}, {1, 0, 1}, {1, 1, 2}, {0, 1, 1}};
    const HostList points(slanted);
    HostList indices;
    EXPECT_EQ(KmPolyToTri(1, points.list, &indices.list), 0);
    EXPECT_EQ(std::memcmp(points.list->items, slanted.data(), 4 * sizeof(KsPoint)), 0);
}

TEST_F(PolyToTri, RefusesItemsOfAnotherSize) {
    const HostList small(Square, 16);
    HostList indices;
    EXPECT_EQ(KmPolyToTri(0, small.list, &indices.list), 1);
    EXPECT_EQ(indices.list, nullptr);
    const HostList points(Square);
    HostList wrong(Square);
    EXPECT_EQ(KmPolyToTri(0, points.list, &wrong.list), 1);
}

TEST_F(PolyToTri, FailsWithTheHost) {
    const HostList points(Square);
    const struct {
        KmHostService service;
        int calls;
    } failures[] = {{KM_HOST_LIST_ITR_INIT2, 0}, {KM_HOST_LIST_ITR_PTR, 0}, {KM_HOST_LIST_ITR_PTR, 4},
                    {KM_HOST_LIST_MK, 0},        {KM_HOST_LIST_SET, 0},     {KM_HOST_LIST_SET, 5}};
    for (const auto& failure : failures) {
        SCOPED_TRACE(testing::Message() << "service " << failure.service << " call " << failure.calls);
        HostList indices;
        KmHostFailAfter(failure.service, failure.calls);
        EXPECT_EQ(KmPolyToTri(0, points.list, &indices.list), 1);
        EXPECT_EQ(KmHostFailNever(), 0);
    }
    HostList indices(Indices{7});
    KmHostFailAfter(KM_HOST_LIST_RESET, 0);
    EXPECT_EQ(KmPolyToTri(0, points.list, &indices.list), 1);
    EXPECT_EQ(indices.Values(), Indices{7});
}

TEST(PolyConvexToTri, AppendsToTheVector) {
    Indices indices{7};
    EXPECT_EQ(KmPolyConvexToTri(0, Square, indices), 0);
    EXPECT_EQ(indices, (Indices{7, 0, 1, 2, 0, 2, 3}));
    EXPECT_EQ(KmPolyConvexToTri(1, {}, indices), 0);
    EXPECT_EQ(KmPolyConvexToTri(1, {{0, 0, 0}}, indices), 0);
    EXPECT_EQ(indices.size(), 7u);
}

TEST(PolyConvexToTri, IsTheSameAsWithLists) {
    for (unsigned seed = 0; seed < 500; ++seed)
        for (const int project : {0, 1}) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " project " << project);
            const Polygon polygon = Moved(KM::Test::RandomOutline(seed, 1 + static_cast<int>(seed % 25)),
                                          {P(1, 0, 0), P(0, 1, 0), P(0, 0, 1)}, P());
            Indices indices;
            EXPECT_EQ(KmPolyConvexToTri(project, polygon, indices), 0);
            EXPECT_EQ(indices, TrianglesOf(polygon, project));
        }
}

TEST(PolyConvexToTri, CutsConcavePolygonsToo) {
    Indices indices;
    EXPECT_EQ(KmPolyConvexToTri(0, {{0, 0, 0}, {4, 0, 0}, {0, 4, 0}, {1, 1, 0}}, indices), 0);
    EXPECT_EQ(indices, (Indices{1, 2, 3, 1, 3, 0}));
}

TEST(PolyConvexToTri, EndsWhereCoordinatesAreNotNumbers) {
    Indices indices;
    for (const int project : {0, 1}) EXPECT_EQ(KmPolyConvexToTri(project, Polygon(100, {NaN, NaN, NaN}), indices), 0);
    EXPECT_TRUE(indices.empty());
}

}  // namespace
}  // namespace KM
