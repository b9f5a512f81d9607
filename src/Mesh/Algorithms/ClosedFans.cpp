#include "ClosedFans.h"

namespace KM {

void ClosedFans::Finish() {
    double weights[VectorBlock::Size];
    for (std::size_t k = 0; k < corners_; ++k) weights[k] = isWeighted_ ? FlatArea(crosses_.Z[k]) : 1.0;
    MakeSafeUnits(crosses_, corners_);

    VectorBlock sums;
    double totals[VectorBlock::Size];
    std::size_t k = 0;
    for (std::size_t fan = 0; fan < fans_; ++fan) {
        TPoint<double> sum;
        double total = 0.0;
        for (; k < ends_[fan]; ++k) {
            sum += crosses_.Get(k) * weights[k];
            total += weights[k];
        }
        sums.Set(fan, sum);
        totals[fan] = total;
    }
    Divide(sums, totals, fans_);
    MakeSafeUnits(sums, fans_);
    for (std::size_t fan = 0; fan < fans_; ++fan)
        if (totals[fan] != 0.0) normals_[nodes_[fan]] = sums.Get(fan);
    corners_ = 0;
    fans_ = 0;
}

}  // namespace KM
