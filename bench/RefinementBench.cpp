// Refinement of a sphere from ten thousand triangles to a million.
// Usage: RefinementBench [segments along an edge of the octahedron; 35 gives 9,800 triangles]

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "Km.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

struct Triangles {
    std::vector<TPoint<double>> points;
    std::vector<std::int32_t> triples;
    std::vector<std::int32_t> twins;
};

Triangles FloorInput(const PIN& mesh) {
    Triangles triangles{mesh.points, {}, {}};
    for (const Edge& edge : mesh.edges) {
        triangles.triples.push_back(edge.P0);
        triangles.twins.push_back(edge.TE);
    }
    return triangles;
}

/// Floor: each triangle of a closed mesh into four, whatever its lengths; triangle t owns the half-edges 3 t to 3 t + 2, and
/// becomes the triangles 4 t to 4 t + 3, the last of them in the middle.
Triangles FloorQuarter(const Triangles& from) {
    const std::int32_t count = static_cast<std::int32_t>(from.triples.size());
    std::vector<std::int32_t> middles(from.triples.size());
    Triangles to;
    to.points.reserve(from.points.size() + from.triples.size() / 2);
    to.points = from.points;
    const auto endOf = [](std::int32_t h) { return h % 3 == 2 ? h - 2 : h + 1; };
    for (std::int32_t h = 0; h < count; ++h) {
        if (h > from.twins[h]) continue;
        middles[h] = middles[from.twins[h]] = static_cast<std::int32_t>(to.points.size());
        to.points.push_back((from.points[from.triples[h]] + from.points[from.triples[endOf(h)]]) * 0.5);
    }
    to.triples.resize(4 * from.triples.size());
    to.twins.resize(to.triples.size());
    // Corner k of the triangle is the first corner of its part k, whose other sides are half-edges k and k - 1, halved.
    const auto firstHalf = [](std::int32_t h) { return 12 * (h / 3) + 3 * (h % 3); };
    const auto secondHalf = [&](std::int32_t h) { return firstHalf(endOf(h)) + 2; };
    for (std::int32_t h = 0; h < count; ++h) {
        const std::int32_t before = h % 3 == 0 ? h + 2 : h - 1;
        const std::int32_t base = firstHalf(h);
        const std::int32_t inner = 12 * (h / 3) + 9 + h % 3;
        to.triples[base] = from.triples[h];
        to.triples[base + 1] = middles[h];
        to.triples[base + 2] = middles[before];
        to.triples[inner] = middles[before];
        to.twins[base] = secondHalf(from.twins[h]);
        to.twins[base + 2] = firstHalf(from.twins[before]);
        to.twins[base + 1] = inner;
        to.twins[inner] = base + 1;
    }
    return to;
}

/// The highest limit at which the sphere has at least `wanted` triangles.
double LimitFor(const PIN& mesh, std::size_t wanted) {
    double low = 0.05;
    double high = 10.0;
    for (int i = 0; i < 12; ++i) {
        const double middle = (low + high) / 2.0;
        PIN refined = mesh;
        Refine(refined, middle);
        (refined.edges.size() / 3 >= wanted ? low : high) = middle;
    }
    return low;
}

void MeasureToAMillion(const PIN& mesh) {
    const double limit = LimitFor(mesh, 1000000);
    PIN refined = mesh;
    Refine(refined, limit);
    const double triangles = static_cast<double>(refined.edges.size()) / 3.0;
    const double bytes = static_cast<double>(refined.edges.size() * sizeof(Edge) +
                                             refined.points.size() * (sizeof(TPoint<double>) + sizeof(std::int32_t)));
    const PIN coarse = Test::BumpySphere(22);
    const Triangles input = FloorInput(coarse);
    const std::string quarters = "floor: 3,872 triangles quartered four times";
    Report report(std::to_string(mesh.edges.size() / 3) + " triangles to a million");
    report.Measure({quarters, 256.0 * 3872.0}, [&] {
        Triangles all = input;
        for (int i = 0; i < 4; ++i) all = FloorQuarter(all);
        return all;
    });
    report.Measure({"floor: copy of the result", triangles, bytes}, [&] { return refined; });
    report.Measure(
        {"Refine", triangles, bytes, quarters}, [&] { return mesh; },
        [&](PIN& copy) { return Refine(copy, limit), 0; });
    report.Measure(
        {"WatchedRefine", triangles, bytes, quarters}, [&] { return mesh; },
        [&](PIN& copy) { return WatchedRefine(copy, limit, [](double f) { benchmark::DoNotOptimize(f); }), 0; });
    report.Remark("limit " + std::to_string(limit) + ": " + std::to_string(static_cast<int>(triangles)) +
                  " triangles, to which times and memory refer");
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    const int n = argc > 1 ? std::atoi(argv[1]) : 35;
    KM::Bench::MeasureToAMillion(KM::Test::BumpySphere(n > 0 ? n : 35));
}
