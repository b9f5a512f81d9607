#include "Mesh/Core/PinTolerance.h"

#include <cmath>

namespace KM {

double PINTolerance(const TPoint<double>& lo, const TPoint<double>& hi, double accuracy) {
    const TPoint<double> extent = hi - lo;
    double largest = extent.X > extent.Y ? extent.X : extent.Y;
    largest = largest > extent.Z ? largest : extent.Z;
    // Hidden from the optimiser: one compiler would turn pow(2, x) into exp2(x), whose last bit can differ.
    const volatile double two = 2.0;
    return largest / 1000.0 / std::pow(two, accuracy * 8.0) * 3.0;
}

double PINGridStep(const TPoint<double>& lo, const TPoint<double>& hi, int count, double accuracy) {
    const TPoint<double> extent = hi - lo;
    const double average = (extent.X + extent.Y + extent.Z) / 3.0;
    const double step = average / std::sqrt(static_cast<double>(count)) / (accuracy * 0.9 + 0.1);
    return step + step;
}

}  // namespace KM
