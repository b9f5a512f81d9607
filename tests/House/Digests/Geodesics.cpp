#include <string>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/Meshes.h"

namespace KM::Test {
namespace {

void PrintDistances(const std::string& name, PIN mesh, const std::vector<int>& sources) {
    std::vector<double> distances;
    GeodesicDist(mesh, sources, distances);
    Digest exact;
    for (const double distance : distances) exact.Add(distance);
    Print(name + ": geodesic distances", exact);
    GeodesicDistByDijkstra(mesh, sources[0], distances);
    Digest alongEdges;
    for (const double distance : distances) alongEdges.Add(distance);
    Print(name + ": distances along edges", alongEdges);
}

}  // namespace

void PrintGeodesicDigests() {
    PrintDistances("cube", Cube(), {0});
    PrintDistances("grid", Grid(24), {40, 41, 300});
    PrintDistances("sphere", Sphere(16), {0, 100});
    PrintDistances("bumpy sphere", BumpySphere(24), {7});
    for (unsigned seed = 0; seed < 100; ++seed) {
        const std::string number = std::to_string(seed);
        PIN rough = FromFacets(Shuffled(GridFacets(10), seed));
        Numbers numbers(seed);
        for (auto& p : rough.points) p += numbers.PointBetween(-0.4, 0.4);
        PrintDistances("rough grid " + number, rough, {static_cast<int>(seed), 0});
        for (int i = 0; i < 20; ++i)
            rough.points[numbers.Below(static_cast<int>(rough.points.size()))] = numbers.HostilePoint();
        PrintDistances("hostile grid " + number, rough, {static_cast<int>(seed), 0});
        PrintDistances("broken grid " + number, WithBrokenLinks(Grid(10), seed), {static_cast<int>(seed), 0});
    }
}

}  // namespace KM::Test
