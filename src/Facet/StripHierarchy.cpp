#include "Facet/StripHierarchy.h"

#include <array>
#include <iterator>
#include <limits>
#include <memory>
#include <span>
#include <utility>

#include "Facet/StripCutter.h"

namespace {

using KM::SPIN;
using KM::StripFan;

constexpr std::int32_t Capacity = 10000;
constexpr int DepthOfAMesh = 5;
// Each level doubles the nodes: these many take a gigabyte, and nobody can mean more.
constexpr int GreatestDepth = 20;

// How hosts know a shortage of memory here: as a plain text, whose spelling tells where it happened.
void ThrowOnFailure(int code) {
    if (code != 0) throw "memory allocation";
}

void ThrowOnListFailure(int code) {
    if (code != 0) throw "Memory allocation";
}

int MakeList(int roomAndGrowth, KmList** list) {
    return KmListMk(2, sizeof(std::int32_t), roomAndGrowth, roomAndGrowth, 0, list);
}

/// Halves the longest side. Of sides that are equal in single precision the last one is taken.
void ChooseSplit(KsHierStrip& node) {
    float extent[3];
    for (int i = 0; i < 3; ++i) extent[i] = static_cast<float>(node.box[i].max - node.box[i].min);
    if (extent[0] > extent[1])
        node.axis = extent[0] > extent[2] ? 0 : 2;
    else
        node.axis = extent[1] > extent[2] ? 1 : 2;
    node.split = static_cast<double>(extent[node.axis]) * 0.5 + node.box[node.axis].min;
}

enum class Side { Low, High };

int HalfBox(const KsHierStrip& node, Side side, KsLim1 (&half)[3]) {
    const int code = KmMemCpy(half, sizeof half, node.box, sizeof node.box);
    (side == Side::Low ? half[node.axis].max : half[node.axis].min) = node.split;
    return code;
}

int SplitLeaf(KsHierStrip& leaf) {
    ChooseSplit(leaf);
    KsLim1 half[3];
    int code = HalfBox(leaf, Side::Low, half);
    if (code == 0) code = KmHierStripMk(half, 0, leaf.withCounts, &leaf.low);
    // Where only the low child could not be made earlier, the high one holds strips already.
    if (code != 0 || leaf.high != nullptr) return code;
    code = HalfBox(leaf, Side::High, half);
    if (code == 0) code = KmHierStripMk(half, 0, leaf.withCounts, &leaf.high);
    return code;
}

/// Goes down from `node` to where the strip belongs, and splits a full leaf on the way. The strips that this one holds
/// stay, because their boxes are not known any more.
int GoDown(const KsLim1* stripBox, KsHierStrip*& node) {
    for (;;) {
        if (node->low == nullptr && node->stripCount == node->capacity - 1)
            if (const int code = SplitLeaf(*node); code != 0) return code;
        const KsLim1& extent = stripBox[node->axis];
        // A child can be missing for want of memory; its strips then stay here.
        if (node->low != nullptr && extent.max < node->split)
            node = node->low;
        else if (node->high != nullptr && extent.min > node->split)
            node = node->high;
        else
            return 0;
    }
}

template <class Iterator>
int AppendAll(KmList* list, Iterator first, Iterator end) {
    int code = 0;
    for (; first != end && code == 0; ++first) code = KM::Host::Append(list, *first);
    return code;
}

using StripBox = std::array<KsLim1, 3>;

void Grow(KsLim1& extent, double at) {
    if (at < extent.min) extent.min = at;
    if (at > extent.max) extent.max = at;
}

/// Takes no notice of coordinates that are no numbers, and of nodes that do not exist.
StripBox BoxOf(const SPIN& mesh, std::span<const int> nodes) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    StripBox box;
    box.fill({infinity, -infinity});
    for (const int node : nodes) {
        if (node < 0 || node >= static_cast<int>(mesh.points.size())) continue;
        Grow(box[0], mesh.points[node].X);
        Grow(box[1], mesh.points[node].Y);
        Grow(box[2], mesh.points[node].Z);
    }
    // A strip whose place is not known may be anywhere: unbounded, it stays at the root, where it is never overlooked.
    for (KsLim1& extent : box)
        if (extent.min > extent.max) std::swap(extent.min, extent.max);
    return box;
}

void FileStrips(const SPIN& mesh, KsHierStrip* root) {
    StripFan strip;
    KM::CutStrips(mesh.edges, [&](std::span<const int> nodes, std::int32_t kind) {
        strip.nodes.assign(nodes.begin(), nodes.end());
        strip.kind = kind;
        KmHierStripAdd(BoxOf(mesh, nodes).data(), strip, root);
    });
}

struct ListDeleter {
    void operator()(KmList* list) const { KmListDel(&list); }
};

/// Files the strips of a node once more, from the node down.
void SinkStrips(const SPIN& mesh, KsHierStrip& node) {
    KmList* fresh = nullptr;
    ThrowOnListFailure(MakeList(50, &fresh));
    const std::unique_ptr<KmList, ListDeleter> old(std::exchange(node.strips, fresh));
    const int count = std::exchange(node.stripCount, 0);
    const std::int32_t* word = nullptr;
    ThrowOnListFailure(KM::Host::Items(old.get(), &word));
    for (int i = 0; i < count; ++i) {
        const int size = *word++;
        const StripBox box = BoxOf(mesh, {word, static_cast<std::size_t>(size)});
        ThrowOnFailure(KmHierStripAdd(box.data(), 0, size, word, &node));
        word += size;
    }
}

void Redistribute(const SPIN& mesh, KsHierStrip* node) {
    if (node == nullptr || node->low == nullptr) return;
    SinkStrips(mesh, *node);
    Redistribute(mesh, node->low);
    Redistribute(mesh, node->high);
}

}  // namespace

int KmHierStripMk(const KsLim1* box, int depth, int withCounts, KsHierStrip** node) {
    if (node == nullptr) return 1;
    *node = nullptr;
    if (box == nullptr || depth > GreatestDepth) return 1;
    if (KM::Host::Allocate(1, node) != 0) return 1;
    KsHierStrip& made = **node;
    made = {};  // before anything can fail: a half-made node is the host's to free, too
    made.withCounts = withCounts;
    made.capacity = Capacity;
    if (KmMemCpy(made.box, sizeof made.box, box, sizeof made.box) != 0) return 1;
    if (MakeList(100, &made.strips) != 0) return 1;
    if (depth < 1) return 0;
    ChooseSplit(made);
    KsLim1 half[3];
    if (HalfBox(made, Side::Low, half) != 0) return 1;
    KmHierStripMk(half, depth - 1, withCounts, &made.low);
    if (HalfBox(made, Side::High, half) != 0) return 1;
    KmHierStripMk(half, depth - 1, withCounts, &made.high);
    return 0;
}

int KmHierStripAdd(const KsLim1* stripBox, int reverse, int count, const int* nodes, KsHierStrip* node) {
    if (stripBox == nullptr || node == nullptr || count < 0 || (nodes == nullptr && count != 0)) return 1;
    int code = GoDown(stripBox, node);
    if (code == 0 && node->withCounts != 0) code = KM::Host::Append(node->strips, count);
    if (code == 0) {
        const std::span<const int> strip(nodes, static_cast<std::size_t>(count));
        code = reverse != 0 ? AppendAll(node->strips, strip.rbegin(), strip.rend())
                            : AppendAll(node->strips, strip.begin(), strip.end());
    }
    if (code == 0) ++node->stripCount;
    return code;
}

void KmHierStripAdd(const KsLim1* stripBox, const StripFan& strip, KsHierStrip* node) {
    if (stripBox == nullptr || node == nullptr) return;
    ThrowOnFailure(GoDown(stripBox, node));
    ThrowOnFailure(KM::Host::Append(node->strips, static_cast<std::int32_t>(strip.nodes.size())));
    ThrowOnFailure(strip.kind == 2 ? AppendAll(node->strips, strip.nodes.rbegin(), strip.nodes.rend())
                                   : AppendAll(node->strips, strip.nodes.begin(), strip.nodes.end()));
    ++node->stripCount;
}

int KmHierStripFree(KsHierStrip** node) {
    if (node == nullptr || *node == nullptr) return 0;
    for (KsHierStrip** child : {&(*node)->low, &(*node)->high})
        if (const int code = KmHierStripFree(child); code != 0) return code;
    KmListDel(&(*node)->strips);
    return KM::Host::Free(node);
}

int PINToHier(SPIN* mesh, const KsLim1* box, KsHierStrip** root) try {
    if (root == nullptr) return 1;
    *root = nullptr;
    if (mesh == nullptr || box == nullptr) return 1;
    // A half-made root is used as far as it goes; the first strip that it cannot take ends the call.
    KmHierStripMk(box, DepthOfAMesh, 1, root);
    if (*root == nullptr) return 1;
    FileStrips(*mesh, *root);
    Redistribute(*mesh, *root);
    return 0;
} catch (...) { return 1; }
