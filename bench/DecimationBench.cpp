// Reduction of a bumpy sphere to a tenth, clean-up behind it, swaps, and the choice of the largest solids.
// Usage: DecimationBench [segments along an edge of the octahedron; 354 gives a million triangles] [tolerance]
// A tolerance of 0.36 takes nine tenths of the triangles out, at that size.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "Km.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

using P = TPoint<double>;
using Visitor = TPinManipulationVisitor<P>;

double TriangleCount(const PIN& mesh) { return static_cast<double>(mesh.edges.size()) / 3.0; }

/// Floor: each inner node's distance from the planes of its fan.
double FloorDistances(const PIN& mesh) {
    double sum = 0.0;
    for (std::size_t node = 0; node < mesh.points.size(); ++node) {
        const int first = mesh.p2e[node];
        const P apex = mesh.points[mesh.edges[mesh.edges[first].NE].P0];
        int e = mesh.edges[mesh.edges[first].TE].NE;
        P b = mesh.points[mesh.edges[mesh.edges[e].NE].P0];
        double most = 0.0;
        for (e = mesh.edges[mesh.edges[e].TE].NE; e != first; e = mesh.edges[mesh.edges[e].TE].NE) {
            const P c = mesh.points[mesh.edges[mesh.edges[e].NE].P0];
            const P normal = Cross(b - apex, c - apex);
            most = std::max(most, std::fabs(Dot(normal, mesh.points[node] - apex)) / Length(normal));
            b = c;
        }
        sum += most;
    }
    return sum;
}

/// Floor: the lengths of both diagonals of each pair of triangles.
int FloorDiagonals(const PIN& mesh) {
    int longer = 0;
    const auto start = [&](int e) { return mesh.points[mesh.edges[e].P0]; };
    const auto third = [&](int e) { return mesh.edges[mesh.edges[e].NE].NE; };
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        const int t = mesh.edges[e].TE;
        if (t > e) longer += Length(start(t) - start(e)) > Length(start(third(t)) - start(third(e)));
    }
    return longer;
}

std::string Percent(double part, double whole) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", 100.0 * part / whole);
    return text;
}

PIN Decimated(PIN mesh, double tolerance) {
    Visitor nobody;
    DecimateNodes(mesh, tolerance, nobody);
    return mesh;
}

void MeasureReduction(const PIN& mesh, const std::string& order, double tolerance) {
    Report report("reduction, " + order);
    const double triangles = TriangleCount(mesh);
    const std::string floor = "floor: distances from planes";
    report.Measure({floor, triangles}, [&] { return FloorDistances(mesh); });
    Visitor nobody;
    report.Measure(
        {"DecimateNodes", triangles, 0.0, floor}, [&] { return mesh; },
        [&](PIN& copy) { return DecimateNodes(copy, tolerance, nobody), 0; });
    const double left = TriangleCount(Decimated(mesh, tolerance));
    report.Remark(Percent(triangles - left, triangles) + " % of the triangles have gone");
}

void MeasureSwaps(const PIN& mesh, const std::string& order, double tolerance) {
    Report report("better triangles, " + order);
    const double triangles = TriangleCount(mesh);
    const std::string floor = "floor: lengths of diagonals";
    report.Measure({floor, triangles}, [&] { return FloorDiagonals(mesh); });
    report.Measure(
        {"SwapEdges", triangles, 0.0, floor}, [&] { return mesh; },
        [&](PIN& copy) { return SwapEdges(copy, tolerance, 0.9), 0; });
    Visitor nobody;
    report.Measure(
        {"Decimate", triangles, 0.0, floor}, [&] { return mesh; },
        [&](PIN& copy) { return Decimate(copy, tolerance, nobody), 0; });
}

/// Nine tenths of the triangles lie in small solids, one behind the other along X.
PIN Solids(int n) {
    PIN mesh = Test::BumpySphere(n / 3);
    PIN part = Test::BumpySphere(n / 30);
    mesh.edges.reserve(mesh.edges.size() + 800 * part.edges.size());
    mesh.points.reserve(mesh.points.size() + 800 * part.points.size());
    mesh.p2e.reserve(mesh.p2e.size() + 800 * part.p2e.size());
    for (int i = 0; i < 800; ++i) {
        for (P& p : part.points) p.X += 250.0;
        Append(mesh, part);
    }
    return mesh;
}

void MeasureChoice(const PIN& mesh) {
    Report report("largest of 801 solids");
    const double triangles = TriangleCount(mesh);
    const std::string floor = "floor: CollectSolids";
    report.Measure({floor, triangles}, [&] {
        std::vector<std::vector<int>> solids;
        CollectSolids(mesh, solids);
        return solids;
    });
    Visitor nobody;
    report.Measure(
        {"Keep", triangles, 0.0, floor}, [&] { return mesh; }, [&](PIN& copy) { return Keep(copy, 1, nobody), 0; });
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM;
    const int given = argc > 1 ? std::atoi(argv[1]) : 354;
    const int n = given > 0 ? given : 354;
    const double tolerance = argc > 2 ? std::atof(argv[2]) : 0.36;
    const Test::IndexedFacets ordered = Test::BumpySphereFacets(n);
    for (const bool isShuffled : {false, true}) {
        const PIN mesh = Test::FromFacets(isShuffled ? Test::Shuffled(ordered, 1) : ordered);
        const std::string order = isShuffled ? "shuffled" : "walk order";
        Bench::MeasureReduction(mesh, order, tolerance);
        Bench::MeasureSwaps(mesh, order, tolerance);
    }
    Bench::MeasureChoice(Bench::Solids(n));
}
