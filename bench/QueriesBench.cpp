// Topology queries and whole-mesh chores on a bumpy sphere, in walk order and shuffled.
// Usage: QueriesBench [segments along an edge of the octahedron; 354 gives a million triangles]

#include <cstdlib>
#include <numeric>

#include "Km.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

int NodeCount(const PIN& mesh) { return static_cast<int>(mesh.points.size()); }
int EdgeCount(const PIN& mesh) { return static_cast<int>(mesh.edges.size()); }

/// Where sums go, so that no compiler drops the work behind them.
volatile long long kept;

/// Floor: the turn round each node of a closed mesh of triangles, which adds up what it meets and keeps nothing.
int TurnRoundAllNodes(const PIN& mesh) {
    long long sum = 0;
    for (const int first : mesh.p2e) {
        int e = first;
        do {
            sum += e;
            e = mesh.edges[mesh.edges[e].TE].NE;
        } while (e != first);
    }
    kept = sum;
    return 0;
}

/// Floor: the edges of all nodes behind each other in one vector, and where each node's begin.
Tuple2<std::vector<int>, std::vector<int>> EdgesInOneVector(const PIN& mesh) {
    std::vector<int> begin(mesh.points.size() + 1, 0);
    for (const Edge& edge : mesh.edges) ++begin[edge.P0];
    std::exclusive_scan(begin.begin(), begin.end(), begin.begin(), 0);
    std::vector<int> edges(mesh.edges.size());
    std::vector<int> next = begin;
    for (int e = 0; e < EdgeCount(mesh); ++e) edges[next[mesh.edges[e].P0]++] = e;
    return {std::move(begin), std::move(edges)};
}

/// Calls `query(node)` for all nodes and adds up what it gives.
template <class Query>
auto AddUp(const PIN& mesh, Query query) {
    return [&mesh, query] {
        long long sum = 0;
        for (int node = 0; node < NodeCount(mesh); ++node) sum += query(node);
        kept = sum;
        return 0;
    };
}

void MeasureFans(const PIN& mesh, const std::string& order) {
    Report report("fans of all nodes, " + order);
    const double triangles = EdgeCount(mesh) / 3.0;
    const std::string turn = "floor: turn round each node";

    report.Measure({turn, triangles}, [&] { return TurnRoundAllNodes(mesh); });
    report.Measure({"StartingEdge", triangles, 0.0, turn},
                   AddUp(mesh, [&](int node) { return StartingEdge(mesh, mesh.p2e[node]); }));
    report.Measure({"AllStartingEdges", triangles, 0.0, turn},
                   AddUp(mesh, [&](int node) { return AllStartingEdges(mesh, node).back(); }));
    report.Measure({"Neighbors", triangles, 0.0, turn},
                   AddUp(mesh, [&](int node) { return Neighbors(mesh, node).back().First; }));
    report.Measure({"EdgeOfSEVertices", triangles, 0.0, turn},
                   AddUp(mesh, [&](int node) { return EdgeOfSEVertices(mesh, node, node + 1); }));
    report.Measure({"floor: edges in one vector", triangles}, [&] { return EdgesInOneVector(mesh); });
    report.Measure({"EmanatingEdges", triangles, 0.0, "floor: edges in one vector"},
                   [&] { return EmanatingEdges(mesh); });
}

void MeasureChores(const PIN& mesh, const std::string& order) {
    Report report("loops and chores, " + order);
    const double triangles = EdgeCount(mesh) / 3.0;
    const std::string copy = "floor: copy of the mesh";
    const auto copied = [&] { return mesh; };

    report.Measure({copy, triangles}, copied);
    report.Measure({"AllOrphanLoops of a closed mesh", triangles, 0.0, copy}, [&] { return AllOrphanLoops(mesh); });
    report.Measure({"CollectNonTriangularLoops", triangles, 0.0, copy},
                   [&] { return CollectNonTriangularLoops(mesh); });
    report.Measure({"Reverse", triangles, 0.0, copy}, copied, [](PIN& turned) { return Reverse(turned), 0; });
    report.Measure({"Append", triangles, 0.0, copy}, copied, [&](PIN& grown) { return Append(grown, mesh), 0; });
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM;
    const int n = argc > 1 ? std::atoi(argv[1]) : 354;
    const Test::IndexedFacets ordered = Test::BumpySphereFacets(n > 0 ? n : 354);
    for (const bool isShuffled : {false, true}) {
        const PIN mesh = Test::FromFacets(isShuffled ? Test::Shuffled(ordered, 1) : ordered);
        const std::string order = isShuffled ? "shuffled" : "walk order";
        Bench::MeasureFans(mesh, order);
        Bench::MeasureChores(mesh, order);
    }
}
