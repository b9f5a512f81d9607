#include "Mesh/Algorithms/ClosedFans.h"

#include <numeric>

#include "Mesh/Algorithms/CornerNormal.h"

namespace KM {

void ClosedFans::Finish() {
    double weights[VectorBlock::Size];
    if (isWeighted_)
        for (std::size_t k = 0; k < corners_; ++k) weights[k] = FlatArea(crosses_.Z[k]);
    MakeSafeUnits(crosses_, corners_);
    if (isWeighted_) Multiply(crosses_, weights, corners_);

    VectorBlock sums;
    double totals[VectorBlock::Size];
    std::size_t begin = 0;
    for (std::size_t fan = 0; fan < fans_; ++fan) {
        const std::size_t end = ends_[fan];
        TPoint<double> sum;
        for (std::size_t k = begin; k < end; ++k) sum += crosses_.Get(k);
        sums.Set(fan, sum);
        totals[fan] =
            isWeighted_ ? std::accumulate(weights + begin, weights + end, 0.0) : static_cast<double>(end - begin);
        begin = end;
    }
    Divide(sums, totals, fans_);
    MakeSafeUnits(sums, fans_);
    for (std::size_t fan = 0; fan < fans_; ++fan)
        if (totals[fan] != 0.0) normals_[nodes_[fan]] = sums.Get(fan);
    corners_ = 0;
    fans_ = 0;
}

}  // namespace KM
