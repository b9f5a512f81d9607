// Distances from one node over a bumpy sphere: exact ones at several sizes, and those along edges.
// Usage: GeodesicsBench [the most triangles of an exact search; all of them, up to 250,632, if not given]

#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <queue>

#include "Km.h"
#include "Mesh/Algorithms/GeodesicSearch.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

// 9,800 / 49,928 / 100,352 / 250,632 triangles
constexpr int SegmentsOfExact[] = {35, 79, 112, 177};
constexpr int SegmentsOfAMillion = 354;

void MeasureExact(Report& report, int segments) {
    PIN mesh = Test::BumpySphere(segments);
    const double triangles = static_cast<double>(mesh.edges.size()) / 3.0;
    const std::string name = std::to_string(static_cast<int>(triangles)) + " triangles";
    report.Measure({name, triangles}, [&] {
        std::vector<double> distances;
        GeodesicDist(mesh, {0}, distances);
        return distances;
    });

    double windows = 0.0;
    GeodesicSearch search(mesh);
    search.Seed(0);
    while (search.Step()) ++windows;
    const double slotBytes = WindowLists::SlotBytes;
    char text[160];
    std::snprintf(text, sizeof text, "%.2f us a node; %.1f windows an edge at %.0f bytes, %.2f of them at one time",
                  report.Seconds(name) * 1e6 / static_cast<double>(mesh.points.size()), windows / (1.5 * triangles),
                  slotBytes, static_cast<double>(search.Lists().SlotCount()) / (1.5 * triangles));
    report.Remark(text);
}

struct Adjacency {
    std::vector<int> begin;
    std::vector<int> neighbors;
};

/// The ends of the edges of all nodes, behind each other.
Adjacency FlatAdjacency(const PIN& mesh) {
    Adjacency flat{std::vector<int>(mesh.points.size() + 1, 0), std::vector<int>(mesh.edges.size())};
    for (const Edge& edge : mesh.edges) ++flat.begin[edge.P0];
    std::exclusive_scan(flat.begin.begin(), flat.begin.end(), flat.begin.begin(), 0);
    std::vector<int> next = flat.begin;
    for (const Edge& edge : mesh.edges) flat.neighbors[next[edge.P0]++] = mesh.edges[edge.NE].P0;
    return flat;
}

/// Floor: a flat adjacency of a closed mesh, and a binary heap.
std::vector<double> FloorDijkstra(const PIN& mesh) {
    const Adjacency flat = FlatAdjacency(mesh);
    std::vector<double> distances(mesh.points.size(), 1e20);
    using Item = std::pair<double, int>;
    std::priority_queue<Item, std::vector<Item>, std::greater<>> queue;
    distances[0] = 0.0;
    queue.emplace(0.0, 0);
    while (!queue.empty()) {
        const auto [distance, node] = queue.top();
        queue.pop();
        if (distance > distances[node]) continue;
        for (int i = flat.begin[node]; i < flat.begin[node + 1]; ++i) {
            const int other = flat.neighbors[i];
            const double through = distance + Length(mesh.points[other] - mesh.points[node]);
            if (!(through < distances[other])) continue;
            distances[other] = through;
            queue.emplace(through, other);
        }
    }
    return distances;
}

void MeasureAlongEdges(const std::string& order, PIN mesh) {
    Report report("distances along edges, " + order);
    const double triangles = static_cast<double>(mesh.edges.size()) / 3.0;
    const std::string floor = "floor: flat adjacency, binary heap";
    report.Measure({floor, triangles}, [&] { return FloorDijkstra(mesh); });
    report.Measure({"GeodesicDistByDijkstra", triangles, 0.0, floor}, [&] {
        std::vector<double> distances;
        GeodesicDistByDijkstra(mesh, 0, distances);
        return distances;
    });
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM;
    const int most = argc > 1 ? std::atoi(argv[1]) : 251000;
    const Test::IndexedFacets million = Test::BumpySphereFacets(Bench::SegmentsOfAMillion);
    Bench::MeasureAlongEdges("walk order", Test::FromFacets(million));
    Bench::MeasureAlongEdges("shuffled", Test::FromFacets(Test::Shuffled(million, 1)));
    Bench::Report report("exact distances", 3);
    for (const int segments : Bench::SegmentsOfExact)
        if (8 * segments * segments <= most) Bench::MeasureExact(report, segments);
}
