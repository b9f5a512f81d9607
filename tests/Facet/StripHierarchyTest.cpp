#include "Facet/StripHierarchy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <map>
#include <random>
#include <string>

#include "KmHost.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Strips.h"

namespace KM {
namespace {

using namespace KM::Test;

using Box = std::array<KsLim1, 3>;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr int MaxInt = std::numeric_limits<int>::max();
constexpr int Full = 9999;

Box BoxTo(double x, double y, double z) { return {{{0, x}, {0, y}, {0, z}}}; }

/// A box that lies between two places of an axis; the other two sides run from 0 to 1.
Box Between(int axis, double min, double max) {
    Box box = BoxTo(1, 1, 1);
    box[axis] = {min, max};
    return box;
}

const Box UnitBox = BoxTo(1, 1, 1);  // a tie of all axes, so z is split, at 0.5
const Box Below = Between(2, 0.1, 0.4);
const Box Across = Between(2, 0.4, 0.6);
const Box Above = Between(2, 0.6, 0.9);

/// A tree that is freed at the end, whatever has failed before.
struct Tree {
    KsHierStrip* root = nullptr;

    Tree() = default;
    Tree(const Box& box, int depth, int withCounts = 1) {
        EXPECT_EQ(KmHierStripMk(box.data(), depth, withCounts, &root), 0);
    }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree() {
        KmHostFailNever();
        EXPECT_EQ(KmHierStripFree(&root), 0);
        EXPECT_EQ(root, nullptr);
    }
};

void Visit(const KsHierStrip* node, const std::function<void(const KsHierStrip&)>& see) {
    if (node == nullptr) return;
    see(*node);
    Visit(node->low, see);
    Visit(node->high, see);
}

std::vector<int> Words(const KsHierStrip* node) {
    const std::int32_t* items = nullptr;
    EXPECT_EQ(Host::Items(node->strips, &items), 0);
    return {items, items + node->strips->count};
}

/// The strips of one node, read as a host reads them.
std::vector<std::vector<int>> StripsIn(const KsHierStrip& node) {
    std::vector<std::vector<int>> strips;
    const std::vector<int> words = Words(&node);
    for (std::size_t at = 0; at < words.size(); at += 1 + static_cast<std::size_t>(words[at]))
        strips.emplace_back(words.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                            words.begin() + static_cast<std::ptrdiff_t>(at) + 1 + words[at]);
    EXPECT_EQ(node.stripCount, static_cast<int>(strips.size()));
    return strips;
}

int Add(const Box& box, const std::vector<int>& nodes, KsHierStrip* node, int reverse = 0) {
    return KmHierStripAdd(box.data(), reverse, static_cast<int>(nodes.size()), nodes.data(), node);
}

/// The text that is thrown, or an empty one.
std::string Thrown(const std::function<void()>& call) {
    try {
        call();
    } catch (const char* text) { return text; }
    return "";
}

StripFan Fan(std::deque<int> nodes, int kind = 1) { return {std::move(nodes), kind}; }

void ExpectSameBox(const KsLim1* box, const Box& expected) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(box[i].min, expected[i].min) << "axis " << i;
        EXPECT_EQ(box[i].max, expected[i].max) << "axis " << i;
    }
}

// Making

TEST(KmHierStripMk, MakesALeaf) {
    for (const int depth : {0, -1, std::numeric_limits<int>::min()}) {
        const Tree tree(BoxTo(1, 2, 3), depth, 7);
        ASSERT_NE(tree.root, nullptr);
        EXPECT_EQ(tree.root->low, nullptr);
        EXPECT_EQ(tree.root->high, nullptr);
        ExpectSameBox(tree.root->box, BoxTo(1, 2, 3));
        EXPECT_EQ(tree.root->withCounts, 7);
        EXPECT_EQ(tree.root->stripCount, 0);
        EXPECT_EQ(tree.root->capacity, 10000);
        EXPECT_EQ(tree.root->strips->itemSize, 4);
        EXPECT_EQ(tree.root->strips->count, 0);
    }
}

TEST(KmHierStripMk, OfDepthFiveHas63NodesOf32Leaves) {
    const Tree tree(BoxTo(4, 2, 1), 5);
    int nodes = 0;
    int leaves = 0;
    Visit(tree.root, [&](const KsHierStrip& node) {
        ++nodes;
        leaves += node.low == nullptr;
        EXPECT_EQ(node.low == nullptr, node.high == nullptr);
    });
    EXPECT_EQ(nodes, 63);
    EXPECT_EQ(leaves, 32);
}

TEST(KmHierStripMk, HalvesTheBoxBetweenItsChildren) {
    const Tree tree({{{-1, 5}, {0, 2}, {0, 1}}}, 1, 1);
    EXPECT_EQ(tree.root->axis, 0);
    EXPECT_EQ(tree.root->split, 2.0);
    ExpectSameBox(tree.root->low->box, {{{-1, 2}, {0, 2}, {0, 1}}});
    ExpectSameBox(tree.root->high->box, {{{2, 5}, {0, 2}, {0, 1}}});
    EXPECT_EQ(tree.root->low->withCounts, 1);
    EXPECT_EQ(tree.root->high->withCounts, 1);
}

TEST(KmHierStripMk, SplitsTheLongestSideAndOfEqualOnesTheLast) {
    const struct {
        Box box;
        int axis;
    } cases[] = {{BoxTo(3, 2, 1), 0},       {BoxTo(3, 1, 2), 0},
                 {BoxTo(1, 3, 2), 1},       {BoxTo(2, 3, 1), 1},
                 {BoxTo(1, 2, 3), 2},       {BoxTo(2, 1, 3), 2},
                 {BoxTo(1, 1, 1), 2},       {BoxTo(2, 2, 1), 1},
                 {BoxTo(2, 1, 2), 2},       {BoxTo(1, 2, 2), 2},
                 {BoxTo(0, 0, 0), 2},       {BoxTo(1 + 1e-9, 1, 0), 1},  // the difference is lost in single precision
                 {BoxTo(1 + 1e-6, 1, 0), 0}};
    for (const auto& c : cases) {
        const Tree tree(c.box, 1);
        EXPECT_EQ(tree.root->axis, c.axis) << c.box[0].max << ' ' << c.box[1].max << ' ' << c.box[2].max;
    }
}

TEST(KmHierStripMk, HalvesTheExtentInSinglePrecision) {
    const Tree tree({{{0, 0}, {0, 0}, {0, 0.1}}}, 1);
    EXPECT_EQ(tree.root->split, 0.05000000074505806);  // half of the single-precision number next to 0.1
}

TEST(KmHierStripMk, AcceptsBoxesOfAnyNumbers) {
    for (const double odd : {NaN, Infinity, -Infinity, 1e300, -1.0}) {
        SCOPED_TRACE(odd);
        const Tree tree(BoxTo(odd, 1, odd), 3);
        EXPECT_EQ(Add(Across, {0, 1, 2}, tree.root), 0);
    }
}

TEST(KmHierStripMk, RefusesNullAndADepthThatNobodyCanMean) {
    KsHierStrip* node = nullptr;
    EXPECT_EQ(KmHierStripMk(UnitBox.data(), 0, 1, nullptr), 1);
    for (const int depth : {21, 1000, MaxInt}) {
        node = reinterpret_cast<KsHierStrip*>(&node);
        EXPECT_EQ(KmHierStripMk(UnitBox.data(), depth, 1, &node), 1);
        EXPECT_EQ(node, nullptr);
    }
    node = reinterpret_cast<KsHierStrip*>(&node);
    EXPECT_EQ(KmHierStripMk(nullptr, 0, 1, &node), 1);
    EXPECT_EQ(node, nullptr);
}

TEST(KmHierStripMk, FailsWithTheHostAndLeavesANodeThatCanBeFreed) {
    for (const KmHostService service : {KM_HOST_MEM_ALLOC, KM_HOST_MEM_CPY, KM_HOST_LIST_MK}) {
        SCOPED_TRACE(service);
        Tree tree;
        KmHostFailAfter(service, 0);
        EXPECT_EQ(KmHierStripMk(UnitBox.data(), 2, 1, &tree.root), 1);
        EXPECT_EQ(tree.root == nullptr, service == KM_HOST_MEM_ALLOC);
    }
}

TEST(KmHierStripMk, LeavesAChildNullThatCannotBeMade) {
    for (const int child : {1, 2}) {
        Tree tree;
        KmHostFailAfter(KM_HOST_MEM_ALLOC, child);
        EXPECT_EQ(KmHierStripMk(UnitBox.data(), 1, 1, &tree.root), 0);
        EXPECT_EQ(tree.root->low == nullptr, child == 1);
        EXPECT_EQ(tree.root->high == nullptr, child == 2);
    }
}

TEST(KmHierStripMk, FailsWhenTheBoxOfAChildCannotBeCopied) {
    for (const int copies : {1, 3}) {  // own box, half for the low child, the child's own, half for the high child
        Tree tree;
        KmHostFailAfter(KM_HOST_MEM_CPY, copies);
        EXPECT_EQ(KmHierStripMk(UnitBox.data(), 1, 1, &tree.root), 1);
        EXPECT_EQ(tree.root->low == nullptr, copies == 1);
        EXPECT_EQ(tree.root->high, nullptr);
    }
}

// Filing

TEST(KmHierStripAdd, WritesTheCountOnlyWhereTheNodeWantsIt) {
    const Tree with(UnitBox, 0, -3);
    const Tree without(UnitBox, 0, 0);
    for (const Tree* tree : {&with, &without}) {
        EXPECT_EQ(Add(Across, {4, 5, 6}, tree->root), 0);
        EXPECT_EQ(Add(Across, {7, 8, 9, 10}, tree->root, 2), 0);
        EXPECT_EQ(tree->root->stripCount, 2);
    }
    EXPECT_EQ(Words(with.root), (std::vector<int>{3, 4, 5, 6, 4, 10, 9, 8, 7}));
    EXPECT_EQ(Words(without.root), (std::vector<int>{4, 5, 6, 10, 9, 8, 7}));
}

TEST(KmHierStripAdd, GoesDownOnlyWhenStrictlyOnOneSide) {
    const struct {
        double min, max;
        char where;
    } cases[] = {{0.1, 0.4, 'l'}, {0.6, 0.9, 'h'}, {0.4, 0.6, 'n'}, {0.5, 0.9, 'n'}, {0.1, 0.5, 'n'},
                 {0.5, 0.5, 'n'}, {-9, -8, 'l'},   {8, 9, 'h'},     {NaN, NaN, 'n'}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.min << " to " << c.max);
        const Tree tree(UnitBox, 1);
        EXPECT_EQ(Add(Between(2, c.min, c.max), {1, 2, 3}, tree.root), 0);
        EXPECT_EQ(tree.root->low->stripCount, c.where == 'l');
        EXPECT_EQ(tree.root->high->stripCount, c.where == 'h');
        EXPECT_EQ(tree.root->stripCount, c.where == 'n');
    }
}

TEST(KmHierStripAdd, StaysWhereTheChildIsMissing) {
    Tree tree;
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 2);
    KmHierStripMk(UnitBox.data(), 1, 1, &tree.root);
    EXPECT_EQ(Add(Above, {1, 2, 3}, tree.root), 0);
    EXPECT_EQ(tree.root->stripCount, 1);
}

TEST(KmHierStripAdd, AcceptsAStripOfNoNodes) {
    const Tree tree(UnitBox, 0);
    EXPECT_EQ(KmHierStripAdd(Across.data(), 0, 0, nullptr, tree.root), 0);
    KmHierStripAdd(Across.data(), Fan({}), tree.root);
    EXPECT_EQ(Words(tree.root), (std::vector<int>{0, 0}));
    EXPECT_EQ(tree.root->stripCount, 2);
}

TEST(KmHierStripAdd, RefusesNullAndNegativeCounts) {
    const Tree tree(UnitBox, 0);
    const int nodes[] = {1, 2, 3};
    EXPECT_EQ(KmHierStripAdd(nullptr, 0, 3, nodes, tree.root), 1);
    EXPECT_EQ(KmHierStripAdd(Across.data(), 0, 3, nullptr, tree.root), 1);
    EXPECT_EQ(KmHierStripAdd(Across.data(), 0, -1, nodes, tree.root), 1);
    EXPECT_EQ(KmHierStripAdd(Across.data(), 0, 3, nodes, nullptr), 1);
    KmHierStripAdd(nullptr, Fan({1, 2, 3}), tree.root);
    KmHierStripAdd(Across.data(), Fan({1, 2, 3}), nullptr);
    EXPECT_EQ(tree.root->stripCount, 0);
    EXPECT_EQ(tree.root->strips->count, 0);
}

TEST(KmHierStripAdd, PassesTheCodeOfTheHostOnAndKeepsWhatWasWritten) {
    const Tree tree(UnitBox, 0);
    KmHostFailAfter(KM_HOST_LIST_SET, 0);
    EXPECT_EQ(Add(Across, {4, 5, 6}, tree.root), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(Words(tree.root), std::vector<int>());
    KmHostFailAfter(KM_HOST_LIST_SET, 2);
    EXPECT_EQ(Add(Across, {4, 5, 6}, tree.root), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(Words(tree.root), (std::vector<int>{3, 4}));
    EXPECT_EQ(tree.root->stripCount, 0);
}

TEST(KmHierStripAdd, AsksTheHostAboutAListOfOtherItems) {
    const Tree tree(UnitBox, 0);
    tree.root->strips->itemSize = 8;
    EXPECT_EQ(Add(Across, {4, 5, 6}, tree.root), KmListSizeError());
    EXPECT_EQ(Thrown([&] { KmHierStripAdd(Across.data(), Fan({4, 5, 6}), tree.root); }), "memory allocation");
    EXPECT_EQ(tree.root->stripCount, 0);
}

TEST(KmHierStripAdd, OfAFanWritesTheCountAlwaysAndReadsKindTwoFromTheBack) {
    const Tree tree(UnitBox, 0, 0);
    KmHierStripAdd(Across.data(), Fan({4, 5, 6}, 1), tree.root);
    KmHierStripAdd(Across.data(), Fan({4, 5, 6}, 2), tree.root);
    KmHierStripAdd(Across.data(), Fan({4, 5, 6}, 3), tree.root);
    EXPECT_EQ(Words(tree.root), (std::vector<int>{3, 4, 5, 6, 3, 6, 5, 4, 3, 4, 5, 6}));
    EXPECT_EQ(tree.root->stripCount, 3);
}

TEST(KmHierStripAdd, OfAFanThrowsWhenTheHostFails) {
    const Tree tree(UnitBox, 0);
    for (const int appended : {0, 2}) {
        KmHostFailAfter(KM_HOST_LIST_SET, appended);
        EXPECT_EQ(Thrown([&] { KmHierStripAdd(Across.data(), Fan({4, 5, 6}), tree.root); }), "memory allocation");
    }
    EXPECT_EQ(tree.root->stripCount, 0);
}

/// A leaf with as many strips as a leaf can hold.
struct FullLeaf : Tree {
    FullLeaf() : Tree(UnitBox, 0) {
        for (int i = 0; i < Full; ++i) Add(Below, {i}, root);
        EXPECT_EQ(root->stripCount, Full);
        EXPECT_EQ(root->low, nullptr);
    }
};

TEST(KmHierStripAdd, SplitsAFullLeafAndLeavesItsStripsThere) {
    const FullLeaf tree;
    EXPECT_EQ(Add(Above, {-1}, tree.root), 0);
    ASSERT_NE(tree.root->low, nullptr);
    ASSERT_NE(tree.root->high, nullptr);
    EXPECT_EQ(tree.root->stripCount, Full);
    EXPECT_EQ(tree.root->axis, 2);
    EXPECT_EQ(tree.root->split, 0.5);
    ExpectSameBox(tree.root->low->box, Between(2, 0, 0.5));
    ExpectSameBox(tree.root->high->box, Between(2, 0.5, 1));
    EXPECT_EQ(Words(tree.root->high), (std::vector<int>{1, -1}));
    EXPECT_EQ(tree.root->low->stripCount, 0);
    KmHierStripAdd(Below.data(), Fan({-2}), tree.root);
    EXPECT_EQ(tree.root->low->stripCount, 1);
    EXPECT_EQ(Add(Across, {-3}, tree.root), 0);
    EXPECT_EQ(tree.root->stripCount, Full + 1);
    EXPECT_EQ(tree.root->low->low, nullptr);
}

TEST(KmHierStripAdd, FailsWithTheHostWhileItSplits) {
    const FullLeaf tree;
    const struct {
        KmHostService service;
        int code;
    } cases[] = {{KM_HOST_MEM_CPY, KM_HOST_INJECTED_FAILURE}, {KM_HOST_MEM_ALLOC, 1}};
    for (const auto& c : cases) {
        KmHostFailAfter(c.service, 0);
        EXPECT_EQ(Add(Above, {-1}, tree.root), c.code);
        KmHostFailAfter(c.service, 0);
        EXPECT_EQ(Thrown([&] { KmHierStripAdd(Above.data(), Fan({-1}), tree.root); }), "memory allocation");
        EXPECT_EQ(tree.root->low, nullptr);
        EXPECT_EQ(tree.root->stripCount, Full);
    }
    EXPECT_EQ(Add(Above, {-1}, tree.root), 0);  // the host has memory again
    EXPECT_EQ(tree.root->high->stripCount, 1);
}

TEST(KmHierStripAdd, GoesOnWithTheOneChildThatASplitCouldMake) {
    const FullLeaf tree;
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 1);
    EXPECT_EQ(Add(Below, {-1}, tree.root), 1);
    EXPECT_NE(tree.root->low, nullptr);
    EXPECT_EQ(tree.root->high, nullptr);
    EXPECT_EQ(Add(Below, {-1}, tree.root), 0);
    EXPECT_EQ(Add(Above, {-2}, tree.root), 0);
    EXPECT_EQ(tree.root->low->stripCount, 1);
    EXPECT_EQ(tree.root->stripCount, Full + 1);
}

TEST(KmHierStripAdd, KeepsTheHighChildWhenTheLowOneIsMadeLater) {
    Tree tree;
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 1);
    KmHierStripMk(UnitBox.data(), 1, 1, &tree.root);
    ASSERT_EQ(tree.root->low, nullptr);
    EXPECT_EQ(Add(Above, {-1}, tree.root), 0);
    for (int i = 0; i < Full; ++i) Add(Below, {i}, tree.root);
    EXPECT_EQ(tree.root->stripCount, Full);
    EXPECT_EQ(Add(Below, {-2}, tree.root), 0);
    ASSERT_NE(tree.root->low, nullptr);
    EXPECT_EQ(Words(tree.root->low), (std::vector<int>{1, -2}));
    EXPECT_EQ(Words(tree.root->high), (std::vector<int>{1, -1}));
}

// Freeing

TEST(KmHierStripFree, IgnoresNull) {
    KsHierStrip* node = nullptr;
    EXPECT_EQ(KmHierStripFree(&node), 0);
    EXPECT_EQ(KmHierStripFree(nullptr), 0);
}

TEST(KmHierStripFree, StopsAtTheFirstNodeThatCannotBeFreed) {
    Tree tree(UnitBox, 1);
    KmHostFailAfter(KM_HOST_MEM_FREE, 1);
    EXPECT_EQ(KmHierStripFree(&tree.root), KM_HOST_INJECTED_FAILURE);
    ASSERT_NE(tree.root, nullptr);
    EXPECT_EQ(tree.root->low, nullptr);
    EXPECT_NE(tree.root->high, nullptr);
    EXPECT_NE(tree.root->strips, nullptr);
}

TEST(KmHierStripFree, TakesNoNoticeOfAListThatCannotBeFreed) {
    Tree tree(UnitBox, 0);
    KmList* list = tree.root->strips;
    KmHostFailAfter(KM_HOST_LIST_DEL, 0);
    EXPECT_EQ(KmHierStripFree(&tree.root), 0);
    EXPECT_EQ(tree.root, nullptr);
    KmListDel(&list);
}

// Whole meshes

SPIN Single(const PIN& mesh) {
    SPIN single;
    single.edges = mesh.edges;
    single.p2e = mesh.p2e;
    for (const TPoint<double>& p : mesh.points)
        single.points.push_back({static_cast<float>(p.X), static_cast<float>(p.Y), static_cast<float>(p.Z)});
    return single;
}

struct FloatBox {
    TPoint<float> min, max;
};

FloatBox BoxOf(const SPIN& mesh, const std::vector<int>& nodes) {
    FloatBox box{mesh.points[nodes[0]], mesh.points[nodes[0]]};
    for (const int node : nodes) {
        const TPoint<float>& p = mesh.points[node];
        box.min = {std::min(box.min.X, p.X), std::min(box.min.Y, p.Y), std::min(box.min.Z, p.Z)};
        box.max = {std::max(box.max.X, p.X), std::max(box.max.Y, p.Y), std::max(box.max.Z, p.Z)};
    }
    return box;
}

double On(const TPoint<float>& p, int axis) { return axis == 0 ? p.X : axis == 1 ? p.Y : p.Z; }

Box BoxOf(const SPIN& mesh) {
    std::vector<int> all(mesh.points.size());
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<int>(i);
    const FloatBox box = BoxOf(mesh, all);
    return {{{box.min.X, box.max.X}, {box.min.Y, box.max.Y}, {box.min.Z, box.max.Z}}};
}

/// Expects each strip of the tree to lie in the box of its node, and as deep as the splits let it.
void ExpectDeepest(const SPIN& mesh, const KsHierStrip* root) {
    Visit(root, [&](const KsHierStrip& node) {
        for (const std::vector<int>& strip : StripsIn(node)) {
            const FloatBox box = BoxOf(mesh, strip);
            for (int axis = 0; axis < 3; ++axis) {
                EXPECT_GE(On(box.min, axis), node.box[axis].min);
                EXPECT_LE(On(box.max, axis), node.box[axis].max);
            }
            if (node.low == nullptr) continue;
            EXPECT_GE(On(box.max, node.axis), node.split);
            EXPECT_LE(On(box.min, node.axis), node.split);
        }
        EXPECT_TRUE(node.low != nullptr || node.stripCount <= Full);
    });
}

std::vector<std::vector<int>> StripsInReadingOrder(PIN mesh) {
    std::vector<StripFan> fans;
    BuildStrips(mesh, fans);
    std::vector<std::vector<int>> strips;
    for (const StripFan& fan : fans) strips.push_back(NodesInReadingOrder(fan));
    return strips;
}

/// Sorts the strips into the nodes of a tree that is already there, in their order, by the rule of going down alone.
std::map<const KsHierStrip*, std::vector<std::vector<int>>> Sorted(const SPIN& mesh, const KsHierStrip* root,
                                                                   const std::vector<std::vector<int>>& strips) {
    std::map<const KsHierStrip*, std::vector<std::vector<int>>> sorted;
    for (const std::vector<int>& strip : strips) {
        const FloatBox box = BoxOf(mesh, strip);
        const KsHierStrip* node = root;
        for (const KsHierStrip* next = root; next != nullptr;) {
            node = next;
            next = On(box.max, node->axis) < node->split   ? node->low
                   : On(box.min, node->axis) > node->split ? node->high
                                                           : nullptr;
            if (node->low == nullptr) next = nullptr;
        }
        sorted[node].push_back(strip);
    }
    return sorted;
}

TEST(PINToHier, OfAnEmptyMeshIsAnEmptyTree) {
    SPIN mesh;
    Tree tree;
    EXPECT_EQ(PINToHier(&mesh, UnitBox.data(), &tree.root), 0);
    int nodes = 0;
    Visit(tree.root, [&](const KsHierStrip& node) {
        ++nodes;
        EXPECT_EQ(node.stripCount, 0);
        EXPECT_EQ(node.strips->count, 0);
        EXPECT_EQ(node.withCounts, 1);
    });
    EXPECT_EQ(nodes, 63);
}

TEST(PINToHier, FilesATriangleOnTheSplitPlaneAtTheRoot) {
    SPIN mesh = Single(RightTriangle());
    Tree tree;
    EXPECT_EQ(PINToHier(&mesh, Between(2, 0, 2).data(), &tree.root), 0);
    EXPECT_EQ(tree.root->low->low->low->low->low->stripCount + tree.root->stripCount, 0);
    EXPECT_EQ(KmHierStripFree(&tree.root), 0);
    EXPECT_EQ(PINToHier(&mesh, Between(2, -2, 2).data(), &tree.root), 0);  // split at z = 0, in which the triangle lies
    EXPECT_EQ(Words(tree.root), (std::vector<int>{3, 0, 1, 2}));
}

TEST(PINToHier, HoldsEachStripOnceInOrderWhereItBelongs) {
    for (unsigned seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        for (const PIN& mesh : {RandomMesh(seed, 200), FromFacets(Shuffled(SphereFacets(8), seed))}) {
            SPIN single = Single(mesh);
            const SPIN before = single;
            Tree tree;
            ASSERT_EQ(PINToHier(&single, BoxOf(single).data(), &tree.root), 0);
            EXPECT_TRUE(SameRecords(single, before));
            ExpectDeepest(single, tree.root);
            auto expected = Sorted(single, tree.root, StripsInReadingOrder(mesh));
            Visit(tree.root, [&](const KsHierStrip& node) { EXPECT_EQ(StripsIn(node), expected[&node]); });
        }
    }
}

/// `count` triangles without neighbours, in a corner of the unit cube.
SPIN Crowd(int count) {
    std::mt19937 random(1);
    const auto at = [&] { return 0.0001f * static_cast<float>(random() % 1000); };
    SPIN mesh;
    TPoint<float> corner;
    for (int e = 0; e < 3 * count; ++e) {
        mesh.edges.push_back({e - e % 3 + (e + 1) % 3, -1, e});
        mesh.p2e.push_back(e);
        if (e % 3 == 0) corner = {at(), at(), 0};
        mesh.points.push_back({corner.X + 0.0001f * static_cast<float>(e % 3), corner.Y, corner.Z});
    }
    return mesh;
}

TEST(PINToHier, SinksTheStripsOfLeavesThatWereSplit) {
    SPIN mesh = Crowd(25000);
    Tree tree;
    ASSERT_EQ(PINToHier(&mesh, UnitBox.data(), &tree.root), 0);
    ExpectDeepest(mesh, tree.root);
    std::vector<std::vector<int>> found;
    int nodes = 0;
    Visit(tree.root, [&](const KsHierStrip& node) {
        ++nodes;
        for (std::vector<int>& strip : StripsIn(node)) found.push_back(std::move(strip));
    });
    EXPECT_GT(nodes, 63);
    std::sort(found.begin(), found.end());
    EXPECT_EQ(std::unique(found.begin(), found.end()), found.end());
    EXPECT_EQ(found.size(), 25000u);
}

TEST(PINToHier, KeepsAStripOfUnknownPlaceAtTheRoot) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    SPIN mesh = Single(RightTriangle());
    for (TPoint<float>& p : mesh.points) p = {nan, nan, nan};
    Tree tree;
    EXPECT_EQ(PINToHier(&mesh, UnitBox.data(), &tree.root), 0);
    EXPECT_EQ(tree.root->stripCount, 1);
}

TEST(PINToHier, SurvivesNodesThatDoNotExist) {
    for (const int node : {-1, 3, MaxInt, std::numeric_limits<int>::min()}) {
        SPIN mesh = Single(RightTriangle());
        for (Edge& edge : mesh.edges) edge.P0 = node;
        Tree tree;
        EXPECT_EQ(PINToHier(&mesh, UnitBox.data(), &tree.root), 0);
        EXPECT_EQ(Words(tree.root), (std::vector<int>{3, node, node, node}));
    }
}

TEST(PINToHier, SurvivesAnyBoxAndAnyPoint) {
    SPIN mesh = Single(Sphere(4));
    const float odd[] = {std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity(),
                         std::numeric_limits<float>::quiet_NaN(), 1e38f};
    for (std::size_t i = 0; i < mesh.points.size(); i += 5) mesh.points[i].X = odd[i % 4];
    for (const double bound : {NaN, Infinity, 1e300, -5.0, 0.0}) {
        Tree tree;
        EXPECT_EQ(PINToHier(&mesh, BoxTo(bound, 1, bound).data(), &tree.root), 0);
        std::size_t triangles = 0;
        Visit(tree.root, [&](const KsHierStrip& node) {
            for (const std::vector<int>& strip : StripsIn(node)) triangles += strip.size() - 2;
        });
        EXPECT_EQ(triangles, mesh.edges.size() / 3);
    }
}

TEST(PINToHier, RefusesNull) {
    SPIN mesh;
    KsHierStrip* root = reinterpret_cast<KsHierStrip*>(&mesh);
    EXPECT_EQ(PINToHier(nullptr, UnitBox.data(), &root), 1);
    EXPECT_EQ(root, nullptr);
    root = reinterpret_cast<KsHierStrip*>(&mesh);
    EXPECT_EQ(PINToHier(&mesh, nullptr, &root), 1);
    EXPECT_EQ(root, nullptr);
    EXPECT_EQ(PINToHier(&mesh, UnitBox.data(), nullptr), 1);
}

TEST(PINToHier, FailsWithoutARoot) {
    SPIN mesh;
    Tree tree;
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    EXPECT_EQ(PINToHier(&mesh, UnitBox.data(), &tree.root), 1);
    EXPECT_EQ(tree.root, nullptr);
}

TEST(PINToHier, FailsWithAHalfMadeRootAtTheFirstStrip) {
    SPIN mesh = Single(RightTriangle());
    Tree tree;
    KmHostFailAfter(KM_HOST_LIST_MK, 0);
    EXPECT_EQ(PINToHier(&mesh, UnitBox.data(), &tree.root), 1);
    EXPECT_NE(tree.root, nullptr);
}

TEST(PINToHier, FailsWithTheHostWhileItRedistributes) {
    SPIN mesh = Single(Sphere(4));
    const Box box = BoxOf(mesh);
    for (const auto& [service, calls] : {std::pair{KM_HOST_LIST_MK, 63},
                                         {KM_HOST_LIST_MK, 70},
                                         {KM_HOST_LIST_GET_ARRAY, 0},
                                         {KM_HOST_LIST_GET_ARRAY, 30}}) {
        SCOPED_TRACE(testing::Message() << "service " << service << " after " << calls);
        Tree tree;
        KmHostFailAfter(service, calls);
        EXPECT_EQ(PINToHier(&mesh, box.data(), &tree.root), 1);
        EXPECT_NE(tree.root, nullptr);
    }
}

// Each append of the whole run is made to fail once; the tree that is left must be one that can be freed.
TEST(PINToHier, FailsWithTheHostAtEachAppend) {
    SPIN mesh = Single(Sphere(3));
    const Box box = BoxOf(mesh);
    for (int calls = 0;; ++calls) {
        Tree tree;
        KmHostFailAfter(KM_HOST_LIST_SET, calls);
        const int code = PINToHier(&mesh, box.data(), &tree.root);
        if (KmHostFailNever() == 1) {
            EXPECT_EQ(code, 0);
            EXPECT_GT(calls, 100);
            break;
        }
        ASSERT_EQ(code, 1) << "after " << calls;
    }
}

TEST(PINToHier, DoesWithoutChildrenThatCannotBeMade) {
    SPIN mesh = Single(Sphere(3));
    const Box box = BoxOf(mesh);
    for (const KmHostService service : {KM_HOST_MEM_ALLOC, KM_HOST_MEM_CPY})
        for (int calls = 1; calls < 63; ++calls) {
            SCOPED_TRACE(testing::Message() << "service " << service << " after " << calls);
            Tree tree;
            KmHostFailAfter(service, calls);
            const int code = PINToHier(&mesh, box.data(), &tree.root);
            EXPECT_EQ(KmHostFailNever(), 0);
            // A child without a list, unlike one that is missing, is found by the strips that belong to it.
            EXPECT_TRUE(code == 0 || service == KM_HOST_MEM_CPY);
        }
}

}  // namespace
}  // namespace KM
