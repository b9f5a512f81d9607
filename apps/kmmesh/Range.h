#pragma once

#include <limits>
#include <string>

namespace KM::Tool {

/// The numbers that an option takes. Without anything said, all finite ones.
struct Range {
    double least = -std::numeric_limits<double>::infinity();
    double most = std::numeric_limits<double>::infinity();
    bool hasEnds = true;  ///< whether `least` and `most` are taken, too

    /// What is wrong with a number, as in "0 is not from 1 to 100"; empty if it is taken.
    std::string FaultOf(double value) const;
};

}  // namespace KM::Tool
