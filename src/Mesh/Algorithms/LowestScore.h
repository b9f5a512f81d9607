#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <vector>

namespace KM {

/// Scores by place, of which the lowest is found at once; of equal ones that in the first place. A score is changed in time
/// log n.
class LowestScore {
public:
    /// A place without a score. Scores that are not below it count as none; so does NaN.
    static constexpr double None = 1e20;

    /// Takes all scores back, and makes room for `count` places.
    void Reset(std::size_t count) {
        leaves_ = std::bit_ceil(count);
        tree_.assign(2 * leaves_, None);
    }

    void Set(std::size_t place, double score) {
        std::size_t node = leaves_ + place;
        tree_[node] = score < None ? score : None;
        while (node > 1) {
            node /= 2;
            const double lowest = std::min(tree_[2 * node], tree_[2 * node + 1]);
            if (tree_[node] == lowest) return;
            tree_[node] = lowest;
        }
    }

    /// The place of the lowest score, or -1 where there is none.
    int Find() const {
        if (tree_[1] == None) return -1;
        std::size_t node = 1;
        while (node < leaves_) {
            node *= 2;
            if (tree_[node + 1] < tree_[node]) ++node;
        }
        return static_cast<int>(node - leaves_);
    }

private:
    // A complete binary tree: the children of node i are 2 i and 2 i + 1, and each node has the lower of their scores.
    std::size_t leaves_ = 1;
    std::vector<double> tree_ = {None, None};
};

}  // namespace KM
