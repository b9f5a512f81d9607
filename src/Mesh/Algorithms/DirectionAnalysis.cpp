#include "Mesh/Algorithms/DirectionAnalysis.h"

#include <cmath>
#include <cstddef>
#include <numbers>

#include "Geometry/ClampedAngle.h"
#include "Mesh/Algorithms/Normals.h"

namespace KM {
namespace {

/// Coarser than what counts as zero elsewhere. A length that is no number is not short.
bool IsShort(double length) { return length <= 1e-8; }

}  // namespace

void DirToAnalysis(const std::vector<TPoint<double>>& normals, std::vector<double>& values, const TPoint<double>& dir) {
    const TPoint<double> unit = SafeUnit(dir);
    values.resize(normals.size());
    for (std::size_t i = 0; i < normals.size(); ++i) values[i] = Dot(normals[i], unit);
}

void CriticalAreas(const PIN& mesh, std::vector<double>& angles, const TPoint<double>& dir) {
    const TPoint<double> unit = SafeUnit(dir);
    std::vector<TPoint<double>> normals;
    Normals(mesh, normals, true);
    angles.resize(normals.size());
    for (std::size_t node = 0; node < normals.size(); ++node) {
        const double degrees = std::fabs(ClampedAngle(unit, normals[node], IsShort) / std::numbers::pi * 180.0);
        angles[node] = degrees > 90.0 ? 180.0 - degrees : degrees;
    }
}

}  // namespace KM
