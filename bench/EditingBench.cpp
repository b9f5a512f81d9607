// Splits, swaps, collapses and removals of nodes: the time of one edit, which should not depend on the size of the mesh.
// Usage: EditingBench [--benchmark_filter=REGEX]
//
// Each edit is done on three sizes, going through the mesh in order, and at random. In order shows the work; at random adds
// the cache misses, which grow with the mesh.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <map>
#include <random>
#include <vector>

#include "Km.h"
#include "Support/Meshes.h"

namespace KM::Bench {
namespace {

const PIN& BumpySphereOf(int n) {
    static std::map<int, PIN> meshes;
    const auto [entry, isNew] = meshes.try_emplace(n);
    if (isNew) entry->second = Test::BumpySphere(n);
    return entry->second;
}

/// Where to edit: one place in 40, so that few edits meet, in order or at random.
std::vector<int> Places(std::size_t count, bool isRandom) {
    std::vector<int> places;
    for (std::size_t i = 0; i < count; i += 40) places.push_back(static_cast<int>(i));
    if (isRandom) std::shuffle(places.begin(), places.end(), std::mt19937(1));
    return places;
}

/// Times `edit(mesh, place)`. The mesh is made anew, outside the clock, when each place has been edited once.
template <class Edit>
void OneEdit(benchmark::State& state, Edit edit, bool isOfNodes) {
    const PIN& original = BumpySphereOf(static_cast<int>(state.range(0)));
    const auto places = Places(isOfNodes ? original.points.size() : original.edges.size(), state.range(1) != 0);
    PIN mesh;
    std::size_t done = places.size();
    for (auto _ : state) {
        if (done == places.size()) {
            state.PauseTiming();
            mesh = original;
            // Else one growth of a large vector would pass for the cost of small edits.
            mesh.edges.reserve(original.edges.size() + 6 * places.size());
            mesh.points.reserve(original.points.size() + places.size());
            mesh.p2e.reserve(original.p2e.size() + places.size());
            done = 0;
            state.ResumeTiming();
        }
        edit(mesh, places[done++]);
    }
    state.SetItemsProcessed(state.iterations());
    state.counters["triangles"] = static_cast<double>(original.edges.size()) / 3.0;
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgNames({"n", "random"})->ArgsProduct({{35, 112, 354}, {0, 1}});
}

/// Floor: what the least of the edits reads and writes, a twin pair and its four neighbours.
void TouchDiamond(PIN& mesh, int e) {
    const Edge edge = mesh.edges[e];
    const Edge twin = mesh.edges[edge.TE];
    for (const int x : {edge.NE, twin.NE, mesh.edges[edge.NE].NE, mesh.edges[twin.NE].NE}) mesh.edges[x].P0 ^= 1;
}

const TPoint<double> Somewhere(100.0, 0.0, 0.0);

BENCHMARK_CAPTURE(OneEdit, floor_TouchDiamond, TouchDiamond, false)->Apply(Sizes);
BENCHMARK_CAPTURE(
    OneEdit, SplitEdge, [](PIN& mesh, int e) { SplitEdge(mesh, e, Somewhere); }, false)
    ->Apply(Sizes);
BENCHMARK_CAPTURE(OneEdit, SwapEdge, SwapEdge, false)->Apply(Sizes);
BENCHMARK_CAPTURE(
    OneEdit, RemoveEdge, [](PIN& mesh, int e) { RemoveEdge(mesh, e, Somewhere); }, false)
    ->Apply(Sizes);
BENCHMARK_CAPTURE(
    OneEdit, RemoveNode, [](PIN& mesh, int node) { benchmark::DoNotOptimize(RemoveNode(mesh, node)); }, true)
    ->Apply(Sizes);

}  // namespace
}  // namespace KM::Bench

BENCHMARK_MAIN();
