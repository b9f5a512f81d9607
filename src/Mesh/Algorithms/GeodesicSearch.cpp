#include "GeodesicSearch.h"

#include "Mesh/Core/Fans.h"
#include "WindowPropagation.h"

namespace KM {

void GeodesicSearch::Seed(int source) {
    for (const int e : AllStartingEdges(mesh_, source))
        if (surface_.Canonical(e) != -1 && mesh_.edges[e].P0 == source) SeedWindows(source, e);
}

bool GeodesicSearch::Step() {
    if (!lists_.HasQueued()) return false;
    const GeodesicWindow window = lists_.TakeNearest();
    reached_ = NearestDistance(window);
    PropagateWindow(surface_, window, lists_);
    return true;
}

double GeodesicSearch::DistanceOf(int node) const {
    const int e = static_cast<std::size_t>(node) < mesh_.p2e.size() ? mesh_.p2e[node] : -1;
    const std::int32_t c = surface_.Canonical(e);
    if (c == -1 || mesh_.edges[e].P0 != node) return 0.0;
    const auto distances = lists_.DistancesAt(c);
    if (!distances) return 0.0;
    return mesh_.edges[c].P0 == node ? distances->atStart : distances->atEnd;
}

/// The light of a source on the triangle of an edge that starts there. The two edges at the source need no propagation:
/// each triangle round it is seeded.
void GeodesicSearch::SeedWindows(int source, std::int32_t e) {
    SeedSpoke(source, surface_.Canonical(e));
    SeedSpoke(source, surface_.Canonical(surface_.Previous(e)));
    const std::int32_t opposite = surface_.Next(e);
    const std::int32_t c = surface_.Canonical(opposite);
    const TPoint<double>& s = mesh_.points[source];
    const double d0 = Length(surface_.Start(c) - s);
    const double d1 = Length(surface_.End(c) - s);
    const std::int8_t tau = c == opposite ? 1 : -1;
    lists_.InsertWindow({0.0, surface_.Length(c), d0, d1, 0.0, tau, c}, true);
}

void GeodesicSearch::SeedSpoke(int source, std::int32_t c) {
    const double length = surface_.Length(c);
    const bool isAtStart = mesh_.edges[c].P0 == source;
    lists_.InsertWindow({0.0, length, isAtStart ? 0.0 : length, isAtStart ? length : 0.0, 0.0, 1, c}, false);
}

}  // namespace KM
