#include "Mesh/Core/TwinPairing.h"

#include <algorithm>
#include <cstdint>
#include <memory>

namespace KM {
namespace {

/// The edges are split into those that run up (to a higher node) and those that run down. The upward ones are laid into
/// one bucket per start node, in their order; then each downward edge in its turn takes the first that is left of those
/// that run the same segment.
class TwinPairing {
public:
    TwinPairing(std::vector<Edge>& edges, std::size_t first, std::size_t nodeCount)
        : edges_(edges), first_(first), nodeCount_(nodeCount), bucketEnd_(nodeCount + 1, 0) {}

    void Run() {
        FillBuckets();
        ForEachEdge([this](std::int32_t e, std::int32_t start, std::int32_t end) {
            if (start > end) PairDownward(e, start, end);
        });
        PairLate();
    }

private:
    struct Upward {
        std::int32_t end;  // -1 once it is paired
        std::int32_t edge;
    };
    struct Downward {
        std::int32_t end;
        std::int32_t start;
        std::int32_t edge;
    };

    template <class Visit>
    void ForEachEdge(Visit visit) const {
        for (std::size_t e = first_; e + 2 < edges_.size(); e += 3) {
            const std::int32_t a = edges_[e].P0;
            const std::int32_t b = edges_[e + 1].P0;
            const std::int32_t c = edges_[e + 2].P0;
            visit(static_cast<std::int32_t>(e), a, b);
            visit(static_cast<std::int32_t>(e + 1), b, c);
            visit(static_cast<std::int32_t>(e + 2), c, a);
        }
    }

    bool IsUpward(std::int32_t start, std::int32_t end) const {
        return start < end && static_cast<std::size_t>(end) < nodeCount_;
    }

    void FillBuckets() {
        ForEachEdge([this](std::int32_t, std::int32_t start, std::int32_t end) {
            if (IsUpward(start, end)) ++bucketEnd_[start + 1];
        });
        for (std::size_t n = 1; n <= nodeCount_; ++n) bucketEnd_[n] += bucketEnd_[n - 1];
        upward_ = std::make_unique_for_overwrite<Upward[]>(static_cast<std::size_t>(bucketEnd_[nodeCount_]));
        // Until here bucketEnd_[n] is where bucket n begins; each entry that is laid into it moves it on to its end.
        ForEachEdge([this](std::int32_t e, std::int32_t start, std::int32_t end) {
            if (IsUpward(start, end)) upward_[bucketEnd_[start]++] = {end, e};
        });
    }

    std::int32_t BucketBegin(std::int32_t node) const { return node == 0 ? 0 : bucketEnd_[node - 1]; }

    void PairDownward(std::int32_t e, std::int32_t start, std::int32_t end) {
        if (static_cast<std::size_t>(start) >= nodeCount_) return;
        const std::int32_t bucketEnd = bucketEnd_[end];
        std::int32_t i = BucketBegin(end);
        if (bucketEnd - i > longestScan) return late_.push_back({end, start, e});
        for (; i < bucketEnd; ++i)
            if (upward_[i].end == start) return Pair(upward_[i], e);
    }

    void Pair(Upward& upward, std::int32_t downward) {
        edges_[upward.edge].TE = downward;
        edges_[downward].TE = upward.edge;
        upward.end = -1;
    }

    /// Where many edges meet, a scan per edge would be quadratic: there both sides are sorted and run through together.
    void PairLate() {
        std::sort(late_.begin(), late_.end(), [](const Downward& a, const Downward& b) {
            return a.end != b.end ? a.end < b.end : a.start != b.start ? a.start < b.start : a.edge < b.edge;
        });
        for (std::size_t i = 0; i < late_.size();) {
            const std::int32_t node = late_[i].end;
            Upward* upward = &upward_[BucketBegin(node)];
            Upward* const bucketEnd = &upward_[0] + bucketEnd_[node];
            std::sort(upward, bucketEnd, [](const Upward& a, const Upward& b) {
                return a.end != b.end ? a.end < b.end : a.edge < b.edge;
            });
            for (; i < late_.size() && late_[i].end == node; ++i) {
                while (upward != bucketEnd && upward->end < late_[i].start) ++upward;
                if (upward != bucketEnd && upward->end == late_[i].start) Pair(*upward++, late_[i].edge);
            }
        }
    }

    static constexpr std::int32_t longestScan = 32;

    std::vector<Edge>& edges_;
    const std::size_t first_;
    const std::size_t nodeCount_;
    std::vector<std::int32_t> bucketEnd_;
    std::unique_ptr<Upward[]> upward_;
    std::vector<Downward> late_;
};

}  // namespace

void PairTwins(std::vector<Edge>& edges, std::size_t first, std::size_t nodeCount) {
    if (first < edges.size()) TwinPairing(edges, first, nodeCount).Run();
}

}  // namespace KM
