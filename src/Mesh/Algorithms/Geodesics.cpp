#include "Mesh/Algorithms/Geodesics.h"

#include "GeodesicSearch.h"

namespace KM {

void GeodesicDist(PIN& mesh, const std::vector<int>& sources, std::vector<double>& distances) {
    GeodesicSearch search(mesh);
    for (const int source : sources) search.Seed(source);
    while (search.Step()) {}
    const int count = static_cast<int>(mesh.points.size());
    distances.resize(mesh.points.size());
    for (int node = 0; node < count; ++node) distances[node] = search.DistanceOf(node);
}

}  // namespace KM
