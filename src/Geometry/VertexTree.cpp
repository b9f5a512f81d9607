#include "Geometry/VertexTree.h"

#include <algorithm>
#include <bit>

namespace KM {

void VertexTree::Ruler::Set(const double* values, int count, double least, double most) {
    least_ = least;
    const double extent = most - least;
    // Below that the quotient could overflow; such points then share one step.
    scale_ = extent > 1e-290 ? Steps / extent : 0.0;
    for (int i = 0; i < count; ++i) below_[Step(values[i]) + 1] |= std::uint64_t{1} << i;
    for (int step = 0; step < Steps; ++step) below_[step + 1] |= below_[step];
}

int VertexTree::Ruler::Step(double value) const {
    return static_cast<int>(std::clamp((value - least_) * scale_, 0.0, Steps - 1.0));
}

VertexTree::VertexTree(std::vector<Vertex> vertices, int bound) : slots_(static_cast<std::size_t>(bound), -1) {
    const std::size_t leaves = std::bit_ceil((vertices.size() + LeafSize - 1) / LeafSize);
    leaves_.resize(leaves);
    boxes_.resize(2 * leaves, EmptyBox);
    Build(1, vertices.begin(), vertices.end());
}

void VertexTree::Build(std::size_t node, Range begin, Range end) {
    PlaneBox& box = boxes_[node];
    for (Range v = begin; v != end; ++v) box = Union(box, {v->x, v->y, v->x, v->y});
    if (node >= leaves_.size()) return Fill(leaves_[node - leaves_.size()], box, begin, end);

    const Range middle = begin + (end - begin) / 2;
    if (!IsSmall()) Halve(box, begin, middle, end);
    Build(2 * node, begin, middle);
    Build(2 * node + 1, middle, end);
}

void VertexTree::Halve(const PlaneBox& box, Range begin, Range middle, Range end) {
    if (box.maxX - box.minX > box.maxY - box.minY) {
        std::nth_element(begin, middle, end, [](const Vertex& a, const Vertex& b) { return a.x < b.x; });
    } else {
        std::nth_element(begin, middle, end, [](const Vertex& a, const Vertex& b) { return a.y < b.y; });
    }
}

void VertexTree::Fill(Leaf& leaf, const PlaneBox& box, Range begin, Range end) {
    const int first = static_cast<int>(&leaf - leaves_.data()) * LeafSize;
    int count = 0;
    for (Range v = begin; v != end; ++v, ++count) {
        leaf.xs[count] = v->x;
        leaf.ys[count] = v->y;
        leaf.ids[count] = v->id;
        leaf.alive |= std::uint64_t{1} << count;
        slots_[static_cast<std::size_t>(v->id)] = first + count;
    }
    if (count == 0) return;  // there is no box then
    leaf.x.Set(leaf.xs, count, box.minX, box.maxX);
    leaf.y.Set(leaf.ys, count, box.minY, box.maxY);
}

void VertexTree::Remove(int id) {
    const int slot = slots_[static_cast<std::size_t>(id)];
    if (slot == -1) return;
    const auto leaf = static_cast<std::size_t>(slot / LeafSize);
    leaves_[leaf].alive &= ~(std::uint64_t{1} << (slot % LeafSize));
    if (leaves_[leaf].alive != 0) return;
    std::size_t node = leaves_.size() + leaf;
    boxes_[node] = EmptyBox;
    while ((node /= 2) > 0) boxes_[node] = Union(boxes_[2 * node], boxes_[2 * node + 1]);
}

int VertexTree::FindBlocker(const Query& query) const {
    if (IsSmall()) {
        // The masks are as quick as the boxes above them.
        const int blocker = FindInLeaf(leaves_.front(), query);
        return blocker != -1 || leaves_.size() == 1 ? blocker : FindInLeaf(leaves_.back(), query);
    }
    std::size_t waiting[64];  // one a level
    int depth = 0;
    waiting[depth++] = 1;
    while (depth > 0) {
        const std::size_t node = waiting[--depth];
        // An ear lies in the root as a rule.
        if (node > 1 && (!boxes_[node].Meets(query.box) || query.region.IsOff(boxes_[node]))) continue;
        if (node < leaves_.size()) {
            waiting[depth++] = 2 * node + 1;
            waiting[depth++] = 2 * node;
            continue;
        }
        const int blocker = FindInLeaf(leaves_[node - leaves_.size()], query);
        if (blocker != -1) return blocker;
    }
    return -1;
}

int VertexTree::FindInLeaf(const Leaf& leaf, const Query& query) {
    const PlaneBox& box = query.box;
    std::uint64_t left = leaf.alive & leaf.x.Between(box.minX, box.maxX) & leaf.y.Between(box.minY, box.maxY);
    for (; left != 0; left &= left - 1) {
        const int i = std::countr_zero(left);
        if (query.region.Contains(leaf.xs[i], leaf.ys[i]) && leaf.ids[i] != query.tip) return leaf.ids[i];
    }
    return -1;
}

}  // namespace KM
