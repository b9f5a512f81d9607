#include "Mesh/Algorithms/Geodesics.h"

#include "GeodesicSearch.h"

namespace KM {

namespace {

/// How many windows are propagated in a few milliseconds.
constexpr int Stride = 4096;

void Finish(GeodesicSearch& search, const std::function<void(double)>& watch) {
    for (int left = Stride; search.Step(); --left) {
        if (left != 0) continue;
        left = Stride;
        if (watch) watch(search.Reached());
    }
}

}  // namespace

void GeodesicDist(PIN& mesh, const std::vector<int>& sources, std::vector<double>& distances) {
    WatchedGeodesicDist(mesh, sources, distances, nullptr);
}

void WatchedGeodesicDist(PIN& mesh, const std::vector<int>& sources, std::vector<double>& distances,
                         const std::function<void(double)>& watch) {
    GeodesicSearch search(mesh);
    for (const int source : sources) search.Seed(source);
    Finish(search, watch);
    const int count = static_cast<int>(mesh.points.size());
    distances.resize(mesh.points.size());
    for (int node = 0; node < count; ++node) distances[node] = search.DistanceOf(node);
}

}  // namespace KM
