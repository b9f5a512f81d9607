#include "Deviation.h"

#include <algorithm>

#include "LongTask.h"
#include "SurfaceDistance.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

/// Calls `take(from, to)` with the ends of each edge; of two twins with those of the lower one.
template <class Take>
void ForEachSegment(const PIN& mesh, Take take) {
    for (std::size_t e = 0; e < mesh.edges.size(); ++e) {
        const Edge& edge = mesh.edges[e];
        if (edge.NE == -1 || (edge.TE != -1 && edge.TE < static_cast<int>(e))) continue;
        take(mesh.points[static_cast<std::size_t>(edge.P0)],
             mesh.points[static_cast<std::size_t>(mesh.edges[static_cast<std::size_t>(edge.NE)].P0)]);
    }
}

}  // namespace

Deviation DeviationOf(const PIN& first, const PIN& second) {
    LongTask task("Comparing",
                  static_cast<double>(2 * (first.points.size() + second.points.size()) + second.edges.size() / 2));
    Deviation deviation;
    const SurfaceDistance fromSecond(second, task);
    for (std::size_t i = 0; i < first.points.size(); ++i) {
        task.Step();
        if (first.p2e[i] == -1) continue;
        deviation.ofNodes = std::max(deviation.ofNodes, fromSecond.To(first.points[i], deviation.ofNodes));
    }
    const SurfaceDistance fromFirst(first, task);
    ForEachSegment(second, [&](const Point& a, const Point& b) {
        task.Step();
        deviation.ofEdges = std::max(deviation.ofEdges, fromFirst.To((a + b) / 2.0, deviation.ofEdges));
    });
    return deviation;
}

}  // namespace KM::Tool
