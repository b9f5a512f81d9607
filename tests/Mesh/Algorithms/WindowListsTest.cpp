#include "Mesh/Algorithms/WindowLists.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Support/Meshes.h"
#include "Support/Numbers.h"
#include "WindowCover.h"

namespace KM::Test {
namespace {

/// Edge 0 of a triangle, ten units long.
class WindowListsOfOneEdge : public testing::Test {
protected:
    WindowListsOfOneEdge() : mesh(RightTriangle()) {
        for (auto& p : mesh.points) p *= 10.0;
        surface.emplace(mesh);
        lists.emplace(*surface);
    }

    static GeodesicWindow From(double x, double y, double b0, double b1, double sigma = 0.0) {
        return {b0, b1, DistanceFrom({x, y}, b0), DistanceFrom({x, y}, b1), sigma, 1, 0};
    }
    std::vector<GeodesicWindow> Windows() const {
        std::vector<GeodesicWindow> windows;
        for (int slot = lists->First(0); slot != -1; slot = lists->Next(slot)) windows.push_back(lists->At(slot));
        return windows;
    }
    int QueuedCount() {
        int count = 0;
        for (; lists->HasQueued(); ++count) lists->TakeNearest();
        return count;
    }
    double At(double p) const {
        double distance = Infinity;
        for (const GeodesicWindow& w : Windows())
            if (p >= w.b0 && p <= w.b1) distance = std::min(distance, w.sigma + WindowDistance(w, p));
        return distance;
    }

    PIN mesh;
    std::optional<SurfaceEdges> surface;
    std::optional<WindowLists> lists;
};

TEST_F(WindowListsOfOneEdge, FirstWindowIsFilledUp) {
    lists->InsertWindow(From(3.0, 4.0, 3.0, 6.0, 1.0), true);
    const auto w = Windows();
    ASSERT_EQ(w.size(), 3u);
    EXPECT_EQ(w[0].b1, 3.0);
    EXPECT_EQ(w[0].d0, 3.0);
    EXPECT_EQ(w[0].d1, 0.0);
    EXPECT_EQ(w[0].sigma, 5.0);
    EXPECT_EQ(w[2].b0, 6.0);
    EXPECT_EQ(w[2].d0, 0.0);
    EXPECT_EQ(w[2].d1, 4.0);
    EXPECT_EQ(w[2].sigma, 6.0);
    EXPECT_EQ(FaultOfList(*lists, 0, 10.0), "");
    const auto ends = lists->DistancesAt(0);
    EXPECT_EQ(ends->atStart, 8.0);
    EXPECT_EQ(ends->atEnd, 10.0);
    EXPECT_FALSE(lists->DistancesAt(1));
    EXPECT_EQ(QueuedCount(), 3);
}

TEST_F(WindowListsOfOneEdge, FirstWindowSnapsToTheEnds) {
    lists->InsertWindow(From(3.0, 4.0, 5e-13, 10.0 - 5e-13), false);
    const auto w = Windows();
    ASSERT_EQ(w.size(), 1u);
    EXPECT_EQ(w[0].b0, 0.0);
    EXPECT_EQ(w[0].b1, 10.0);
    EXPECT_EQ(QueuedCount(), 0);
}

TEST_F(WindowListsOfOneEdge, UnusableWindowsChangeNothing) {
    lists->InsertWindow(From(3.0, 4.0, 2.0, 1.0), true);
    for (const double bad : {NaN, Infinity, 1e200}) {
        lists->InsertWindow({0.0, 10.0, bad, 3.0, 0.0, 1, 0}, true);
        lists->InsertWindow({0.0, bad, 4.0, 3.0, 0.0, 1, 0}, true);
        lists->InsertWindow({0.0, 10.0, 4.0, 3.0, bad, 1, 0}, true);
    }
    EXPECT_TRUE(Windows().empty());
    lists->InsertWindow(From(3.0, 4.0, 0.0, 10.0, 5.0), false);
    lists->InsertWindow(From(3.0, 4.0, 2.0, 2.0), true);
    EXPECT_EQ(Windows().size(), 1u);
    EXPECT_EQ(QueuedCount(), 0);
}

TEST_F(WindowListsOfOneEdge, NewWindowSplitsTheOldOne) {
    lists->InsertWindow(From(5.0, 2.0, 0.0, 10.0, 5.0), false);
    lists->InsertWindow(From(5.0, 2.0, 4.0, 6.0), true);
    const auto w = Windows();
    ASSERT_EQ(w.size(), 3u);
    EXPECT_EQ(w[0].b1, 4.0);
    EXPECT_EQ(w[1].sigma, 0.0);
    EXPECT_EQ(w[2].b0, 6.0);
    EXPECT_EQ(w[2].sigma, 5.0);
    EXPECT_EQ(QueuedCount(), 3) << "what is left of the old one has to be propagated again";
}

TEST_F(WindowListsOfOneEdge, QueuedWindowStaysQueuedWhenAnUnqueuedOneTrimsIt) {
    lists->InsertWindow(From(0.0, 1.0, 0.0, 10.0), true);
    lists->InsertWindow(From(10.0, 1.0, 0.0, 10.0), false);
    ASSERT_EQ(Windows().size(), 2u);
    const GeodesicWindow first = lists->TakeNearest();
    EXPECT_NEAR(first.b1, 5.0, 1e-9);
    EXPECT_FALSE(lists->HasQueued());

    lists->InsertWindow(From(1.0, 0.5, 1.0, 2.0), false);
    EXPECT_FALSE(lists->HasQueued()) << "what had left the queue does not come back";
}

TEST_F(WindowListsOfOneEdge, DisplacedWindowsGiveTheirSlotsBack) {
    for (int i = 0; i < 10; ++i) lists->InsertWindow(From(i + 0.5, 1.0, i, i + 1.0, 9.0), true);
    const std::size_t slots = lists->SlotCount();
    lists->InsertWindow(From(5.0, 1.0, 0.0, 10.0), true);
    EXPECT_EQ(Windows().size(), 1u);
    EXPECT_EQ(QueuedCount(), 1);
    lists->InsertWindow(From(5.0, 0.5, 4.0, 6.0), true);
    EXPECT_EQ(lists->SlotCount(), slots);
}

TEST_F(WindowListsOfOneEdge, SettledEdgeKeepsTheDistancesAtItsEnds) {
    lists->InsertWindow(From(3.0, 4.0, 3.0, 6.0), false);
    GeodesicWindow far = From(3.0, 4.0, 0.0, 10.0, 20.0);
    far.edge = 2;
    lists->InsertWindow(far, true);
    lists->Settle();
    EXPECT_TRUE(lists->IsSettled(0));
    EXPECT_FALSE(lists->IsSettled(2)) << "the queue can still change it";
    EXPECT_EQ(lists->First(0), -1);
    EXPECT_EQ(lists->DistancesAt(0)->atStart, 7.0);
    EXPECT_EQ(lists->DistancesAt(0)->atEnd, 9.0);
    lists->InsertWindow(From(3.0, 4.0, 0.0, 10.0), true);
    EXPECT_EQ(lists->DistancesAt(0)->atStart, 7.0);
}

TEST_F(WindowListsOfOneEdge, ChangesHaveAnEnd) {
    lists->InsertWindow(From(5.0, 1.0, 0.0, 10.0, 1e6), true);
    int count = 0;
    for (double sigma = 1e6; count < 1000000; ++count) {
        sigma -= 1e-3;
        lists->InsertWindow(From(5.0, 1.0, 0.0, 10.0, sigma), true);
        if (Windows()[0].sigma != sigma) break;
    }
    EXPECT_EQ(count, lists->MostChanges());
    EXPECT_EQ(FaultOfList(*lists, 0, 10.0), "");
}

TEST_F(WindowListsOfOneEdge, ListIsTheLowerEnvelopeOfAllThatCame) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        lists.emplace(*surface);
        Numbers numbers(seed);
        std::vector<GeodesicWindow> all;
        for (int i = 0; i < 12; ++i) {
            const double x = numbers.Between(-5.0, 15.0);
            const double y = numbers.Between(0.5, 5.0);
            const double b0 = i % 3 == 0 ? 0.0 : numbers.Between(0.0, 9.0);
            const double b1 = i % 4 == 0 ? 10.0 : numbers.Between(b0 + 0.1, 10.0);
            all.push_back(From(x, y, b0, b1, numbers.Between(0.0, 2.0)));
            lists->InsertWindow(all.back(), numbers.Below(2) == 0);
            ASSERT_EQ(FaultOfList(*lists, 0, 10.0), "");
        }
        int misses = 0;
        for (double p = 0.05; p < 10.0; p += 0.1) {
            double expected = Infinity;
            for (const GeodesicWindow& w : all)
                if (p >= w.b0 && p <= w.b1) expected = std::min(expected, w.sigma + WindowDistance(w, p));
            EXPECT_GE(At(p), std::min(expected, At(p)) - 1e-6);
            // Two curves that cross an interval twice are cut once.
            misses += At(p) > expected + 1e-6;
        }
        EXPECT_LE(misses, 20);
    }
}

}  // namespace
}  // namespace KM::Test
