// Filling of many holes in a large mesh, and of one large hole.
// Usage: HolesBench [segments along an edge of the octahedron; 354 gives a million triangles]

#include <cmath>
#include <cstdlib>
#include <numbers>

#include "Km.h"
#include "Support/Holes.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

using P = TPoint<double>;

/// Border edges of a mesh, which are what its holes are made of.
double OrphanCount(const PIN& mesh) {
    double count = 0.0;
    for (const auto& loop : AllOrphanLoops(mesh)) count += static_cast<double>(loop.size());
    return count;
}

/// A wavy ring of `count` nodes, whose faces outside meet in one more node.
PIN Cone(int count) {
    Test::IndexedFacets cone;
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / count;
        const double radius = 100.0 + std::sin(17.0 * angle) + 0.3 * (i % 3);
        cone.points.emplace_back(radius * std::cos(angle), radius * std::sin(angle), std::cos(5.0 * angle));
        cone.triples.insert(cone.triples.end(), {i, (i + 1) % count, count});
    }
    cone.points.emplace_back(0.0, 0.0, 100.0);
    return Test::FromFacets(cone);
}

void MeasureManyHoles(int n) {
    const PIN mesh = Test::WithHoles(Test::BumpySphere(n), 1, 1000, 10, 60);
    Report report("a thousand holes of 10 to 60 edges");
    const double triangles = static_cast<double>(mesh.edges.size()) / 3.0;
    report.Measure({"floor: copy of the mesh", triangles}, [&] { return mesh; });
    report.Measure({"AllOrphanLoops", triangles, 0.0, "floor: copy of the mesh"}, [&] { return AllOrphanLoops(mesh); });
    report.Measure(
        {"FillHoles", triangles, 0.0, "floor: copy of the mesh"}, [&] { return mesh; },
        [](PIN& copy) { return FillHoles(copy, 60), 0; });
    // The same with room for the new edges: what remains is the search for the borders, and the corners.
    const auto roomy = [&] {
        PIN copy = mesh;
        copy.edges.reserve(2 * mesh.edges.size());
        return copy;
    };
    report.Measure({"FillHoles, with room in the mesh", triangles, 0.0, "floor: copy of the mesh"}, roomy,
                   [](PIN& copy) { return FillHoles(copy, 60), 0; });
    report.Remark(std::to_string(AllOrphanLoops(mesh).size()) + " holes of " +
                  std::to_string(static_cast<int>(OrphanCount(mesh))) + " edges");
}

void MeasureOneHole(int count) {
    const PIN mesh = Cone(count);
    Report report("one hole of " + std::to_string(count) + " edges", 3);
    report.Measure(
        {"FillHoles", static_cast<double>(count)}, [&] { return mesh; },
        [](PIN& copy) { return FillHoles(copy, -1), 0; });
    report.Measure(
        {"FillHole, in XY", static_cast<double>(count)}, [&] { return mesh; },
        [](PIN& copy) { return FillHole(copy, copy.points, AllOrphanLoops(copy)[0]), 0; });
}

void MeasureAll(int n) {
    MeasureManyHoles(n);
    for (const int count : {500, 5000, 50000}) MeasureOneHole(count);
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    const int n = argc > 1 ? std::atoi(argv[1]) : 354;
    KM::Bench::MeasureAll(n > 0 ? n : 354);
}
