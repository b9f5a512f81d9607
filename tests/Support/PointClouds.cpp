#include "Support/PointClouds.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <utility>

namespace KM::Test {
namespace {

using P = TPoint<double>;
using Near = std::pair<double, int>;  // squared distance, node

/// Keeps the best of what is offered, best first.
void Offer(std::vector<Near>& best, std::size_t count, const Near& offer) {
    if (best.size() == count && !(offer < best.back())) return;
    best.insert(std::upper_bound(best.begin(), best.end(), offer), offer);
    if (best.size() > count) best.pop_back();
}

}  // namespace

std::vector<P> SpherePoints(int count) {
    const double golden = std::numbers::pi * (3.0 - std::sqrt(5.0));
    std::vector<P> points;
    for (int i = 0; i < count; ++i) {
        const double z = 1.0 - (2.0 * i + 1.0) / count;
        const double r = std::sqrt(1.0 - z * z);
        points.push_back(P(r * std::cos(golden * i), r * std::sin(golden * i), z));
    }
    return points;
}

std::vector<std::vector<int>> NearestNeighbours(const std::vector<P>& points, int count) {
    std::vector<int> byHeight(points.size());
    std::iota(byHeight.begin(), byHeight.end(), 0);
    std::sort(byHeight.begin(), byHeight.end(), [&](int a, int b) { return points[a].Z < points[b].Z; });

    std::vector<std::vector<int>> neighbours(points.size());
    std::vector<Near> best;
    for (std::size_t i = 0; i < byHeight.size(); ++i) {
        const P& p = points[byHeight[i]];
        best.clear();
        const auto isTooFar = [&](int node) {
            const double height = points[node].Z - p.Z;
            return best.size() == static_cast<std::size_t>(count) && height * height > best.back().first;
        };
        const auto offer = [&](int node) { Offer(best, count, {LengthSquared(points[node] - p), node}); };
        for (std::size_t k = i + 1; k < byHeight.size() && !isTooFar(byHeight[k]); ++k) offer(byHeight[k]);
        for (std::size_t k = i; k-- > 0 && !isTooFar(byHeight[k]);) offer(byHeight[k]);
        for (const Near& near : best) neighbours[byHeight[i]].push_back(near.second);
    }
    return neighbours;
}

}  // namespace KM::Test
