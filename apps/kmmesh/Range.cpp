#include "Range.h"

#include <cmath>

#include "Output.h"

namespace KM::Tool {

std::string Range::FaultOf(double value) const {
    const std::string number = Format("%.9g", value);
    if (!std::isfinite(value)) return number + " is no finite number";
    const bool isAbove = hasEnds ? value >= least : value > least;
    const bool isBelow = hasEnds ? value <= most : value < most;
    if (isAbove && isBelow) return "";
    if (std::isinf(most)) return number + Format(hasEnds ? " is less than %.9g" : " is not more than %.9g", least);
    if (std::isinf(least)) return number + Format(hasEnds ? " is more than %.9g" : " is not less than %.9g", most);
    return number + Format(hasEnds ? " is not from %.9g to %.9g" : " is not between %.9g and %.9g", least, most);
}

}  // namespace KM::Tool
