#include <algorithm>

#include "Mesh/Algorithms/Geodesics.h"
#include "Mesh/Core/FanWalk.h"

namespace KM {
namespace {

constexpr double Unreached = 1e20;

struct Reached {
    double distance;
    int node;
};

/// Nearest last; of equal distances the lower node comes first out of the heap.
struct IsFarther {
    bool operator()(const Reached& a, const Reached& b) const {
        return a.distance != b.distance ? a.distance > b.distance : a.node > b.node;
    }
};

/// Calls `visit(neighbour)` for the far ends of all edges at a node, in the fan of `p2e`: the one that comes into the
/// node along the border included.
template <class Visit>
void VisitNeighbors(const PIN& mesh, int node, Visit visit) {
    const int first = static_cast<std::size_t>(node) < mesh.p2e.size() ? mesh.p2e[node] : -1;
    if (!IsAliveEdge(mesh, first)) return;
    // Most fans are closed, and then one turn is enough: where it begins does not matter here. On broken links a turn need
    // not come round; no fan is longer than `edges`.
    std::size_t left = mesh.edges.size();
    int e = first;
    do {
        visit(EndNode(mesh, e));
        e = NextInFan(mesh, e);
    } while (e != first && e != -1 && --left != 0);
    if (e != -1) return;

    // Backward, over the edges that come in, so that the one along the border is met as well.
    for (e = first; e != -1 && left-- != 0; e = PreviousInFan(mesh, e)) {
        const int incoming = PrevEdge(mesh, e);
        if (incoming != -1) visit(mesh.edges[incoming].P0);
    }
}

}  // namespace

void GeodesicDistByDijkstra(PIN& mesh, int source, std::vector<double>& distances) {
    distances.assign(mesh.points.size(), Unreached);
    if (!(static_cast<std::size_t>(source) < mesh.points.size())) return;
    distances[source] = 0.0;
    // A node whose distance gets better is queued once more; what was queued before is passed over when it comes.
    std::vector<Reached> heap{{0.0, source}};
    while (!heap.empty()) {
        const auto [distance, node] = heap.front();
        std::pop_heap(heap.begin(), heap.end(), IsFarther());
        heap.pop_back();
        if (distance > distances[node]) continue;
        const TPoint<double> start = mesh.points[node];
        VisitNeighbors(mesh, node, [&, from = distance](int neighbor) {
            if (static_cast<std::size_t>(neighbor) >= distances.size()) return;
            const double through = from + Length(mesh.points[neighbor] - start);
            if (!(through < distances[neighbor])) return;
            distances[neighbor] = through;
            heap.push_back({through, neighbor});
            std::push_heap(heap.begin(), heap.end(), IsFarther());
        });
    }
}

}  // namespace KM
