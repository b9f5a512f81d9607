#include "Mesh/Algorithms/Refinement.h"

#include <cmath>
#include <cstddef>
#include <limits>
#include <string>

#include "Mesh/Algorithms/BoundedRefinement.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/FanWalk.h"
#include "Mesh/Editing/EdgeSplits.h"
#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

/// Some five gigabytes of mesh. Who asks for more has mistaken the unit, and would run out of memory.
constexpr int MostNewTriangles = 100'000'000;
constexpr int MostParts = 100'000'000;

bool CanSplit(const PIN& mesh, int edge) {
    if (!IsAliveEdge(mesh, edge) || !IsNode(mesh, mesh.edges[edge].P0) || !IsNode(mesh, EndNode(mesh, edge)))
        return false;
    const int twin = mesh.edges[edge].TE;
    return twin == -1 || (twin != edge && IsAliveEdge(mesh, twin));
}

bool HasRoom(const PIN& mesh, double parts) {
    return parts <= MostParts &&
           static_cast<double>(mesh.edges.size()) + 2.0 * parts <= std::numeric_limits<std::int32_t>::max();
}

/// At once, so that lack of memory leaves the mesh as it is.
void ReserveNodes(PIN& mesh, int count) {
    const std::size_t more = static_cast<std::size_t>(count);
    mesh.points.reserve(mesh.points.size() + more);
    mesh.p2e.reserve(mesh.p2e.size() + more);
    mesh.edges.reserve(mesh.edges.size() + 2 * more);
}

}  // namespace

void Refine(PIN& mesh, double maxLength) { RefineWithin(mesh, maxLength, MostNewTriangles, nullptr); }

void WatchedRefine(PIN& mesh, double maxLength, const std::function<void(double)>& watch) {
    RefineWithin(mesh, maxLength, MostNewTriangles, watch);
}

void SampleEdge(PIN& mesh, int edge, double step) {
    if (!CanSplit(mesh, edge)) return;
    const TPoint<double> A = mesh.points[mesh.edges[edge].P0];
    const TPoint<double> B = mesh.points[EndNode(mesh, edge)];
    const double parts = std::ceil(Length(B - A) / step);
    if (!(parts >= 2.0)) return;  // negated, so that a NaN ends here too
    if (!HasRoom(mesh, parts))
        return Verbose::WriteMessage_1(
            Verbose::EMessageType::Error,
            "SampleEdge: a step of " + NumberText(step) + " makes more than " + std::to_string(MostParts) + " parts");
    const int n = static_cast<int>(parts);
    ReserveNodes(mesh, n - 1);
    for (int k = 1; k < n; ++k)
        edge = SplitEdge2(mesh, edge, AddPoint(mesh, A + (B - A) * static_cast<double>(k) / parts));
}

}  // namespace KM
