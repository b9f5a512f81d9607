#include "WorkingScale.h"

#include <cmath>

#include "PartFile.h"

namespace KM::Tool {

double WorkingScale(const PIN& mesh) {
    const double diagonal = DiagonalOf(mesh);
    if (diagonal == 0.0 || (diagonal >= 1.0 && diagonal <= 1e6)) return 1.0;
    constexpr int usual = 10;
    return std::ldexp(1.0, usual - std::ilogb(diagonal));
}

void Scale(PIN& mesh, double factor) {
    if (factor == 1.0) return;
    for (TPoint<double>& p : mesh.points) p *= factor;
}

}  // namespace KM::Tool
