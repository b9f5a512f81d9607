// Strips and the strip hierarchy on a bumpy sphere, in walk order and shuffled.
// Usage: StripBench [segments along an edge of the octahedron; 354 gives a million triangles]

#include <cstdlib>
#include <utility>

#include "Km.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

SPIN Single(const PIN& mesh) {
    SPIN single;
    single.edges = mesh.edges;
    single.p2e = mesh.p2e;
    for (const TPoint<double>& p : mesh.points)
        single.points.push_back({static_cast<float>(p.X), static_cast<float>(p.Y), static_cast<float>(p.Z)});
    return single;
}

/// The least that any strip builder does: read each triangle by its links, mark it and write it down.
std::vector<int> SeparateTriangles(const PIN& mesh) {
    std::vector<int> words;
    std::vector<char> taken(mesh.edges.size(), 0);
    for (std::size_t e = 0; e < mesh.edges.size(); ++e) {
        if (taken[e]) continue;
        const int next = mesh.edges[e].NE;
        const int third = mesh.edges[next].NE;
        taken[e] = taken[next] = taken[third] = 1;
        words.insert(words.end(), {3, mesh.edges[e].P0, mesh.edges[next].P0, mesh.edges[third].P0});
    }
    return words;
}

void MeasureStrips(Report& report, PIN& mesh, double triangles) {
    report.Measure({"floor: separate triangles", triangles}, [&] { return SeparateTriangles(mesh); });
    int words = 0;
    std::size_t count = 0;
    report.Measure({"BuildStrips", triangles, 0.0, "floor: separate triangles"}, [&] {
        std::vector<StripFan> strips;
        words = BuildStrips(mesh, strips);
        count = strips.size();
        return strips;
    });
    report.Remark(std::to_string(words / triangles) + " words per triangle, " +
                  std::to_string(triangles / static_cast<double>(count)) + " triangles per strip");
}

/// A tree that is given back outside the clock.
struct Tree {
    KsHierStrip* root = nullptr;

    Tree() = default;
    Tree(Tree&& other) noexcept : root(std::exchange(other.root, nullptr)) {}
    ~Tree() { KmHierStripFree(&root); }
};

void MeasureHierarchy(Report& report, const PIN& mesh, double triangles) {
    SPIN single = Single(mesh);
    double box[6];
    KmBndBoxInit(3, box);
    for (const TPoint<double>& p : mesh.points) KmBndBoxGrowPnt(3, box, &p.X, box);
    const KsLim1 sides[] = {{box[0], box[1]}, {box[2], box[3]}, {box[4], box[5]}};
    report.Measure({"PINToHier", triangles, 0.0, "floor: separate triangles"}, [&] {
        Tree tree;
        PINToHier(&single, sides, &tree.root);
        return tree;
    });
}

void MeasureAll(const Test::IndexedFacets& facets, const std::string& order) {
    Report report("strips, " + order);
    PIN mesh = Test::FromFacets(facets);
    const double triangles = static_cast<double>(facets.triples.size()) / 3.0;
    MeasureStrips(report, mesh, triangles);
    MeasureHierarchy(report, mesh, triangles);
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM;
    const int segments = argc > 1 ? std::atoi(argv[1]) : 354;
    const Test::IndexedFacets facets = Test::BumpySphereFacets(segments);
    Bench::MeasureAll(facets, "walk order");
    Bench::MeasureAll(Test::Shuffled(facets, 1), "shuffled");
}
