// Builders and compaction on a bumpy sphere, in walk order and shuffled.
// Usage: MeshCoreBench [segments along an edge of the octahedron; 354 gives a million triangles]

#include <cstdlib>
#include <random>

#include "Km.h"
#include "Support/Floors.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

std::vector<std::vector<TPoint<double>>> AsFacets(const Test::Soup& soup) {
    std::vector<std::vector<TPoint<double>>> facets;
    for (std::size_t i = 0; i < soup.size(); i += 3) facets.push_back({soup[i], soup[i + 1], soup[i + 2]});
    return facets;
}

std::vector<std::vector<int>> AsFacets(const std::vector<int>& triples) {
    std::vector<std::vector<int>> facets;
    for (std::size_t i = 0; i < triples.size(); i += 3) facets.push_back({triples[i], triples[i + 1], triples[i + 2]});
    return facets;
}

PIN HalfDeleted(PIN mesh) {
    std::mt19937 random(1);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); e += 3)
        if (random() % 2 == 0 && mesh.edges[e].NE != -1) DeleteTriangle(mesh, e);
    return mesh;
}

template <class Build>
void MeasureBuilder(Report& report, const std::string& name, double triangles, const std::string& floor, Build build) {
    report.Measure({name, triangles, 0.0, floor}, [&] {
        PIN mesh;
        build(mesh);
        return mesh;
    });
}

void MeasureBuilders(const Test::IndexedFacets& facets, const std::string& order) {
    Report report("builders, " + order);
    const Test::Soup soup = facets.AsSoup();
    const double triangles = static_cast<double>(facets.triples.size()) / 3.0;

    report.Measure({"floor: merge", triangles}, [&] { return FloorMerge(soup); });
    report.Measure({"floor: twins", triangles}, [&] { return FloorTwins(facets.triples, facets.points.size()); });
    report.Measure({"floor: merge and twins", triangles}, [&] {
        MergedPoints merged = FloorMerge(soup);
        std::vector<std::int32_t> twins = FloorTwins(merged.nodes, merged.points.size());
        return std::pair(std::move(merged), std::move(twins));
    });
    const std::string merging = "floor: merge and twins";
    MeasureBuilder(report, "AddTriangles_1", triangles, merging, [&](PIN& mesh) { AddTriangles_1(mesh, soup); });
    {
        const auto lists = AsFacets(soup);
        MeasureBuilder(report, "AddTriangles_2", triangles, merging, [&](PIN& mesh) { AddTriangles_2(mesh, lists); });
    }
    MeasureBuilder(report, "AddTriangles_3", triangles, "floor: twins",
                   [&](PIN& mesh) { AddTriangles_3(mesh, facets.points, facets.triples); });
    {
        const auto lists = AsFacets(facets.triples);
        MeasureBuilder(report, "AddTriangles_4", triangles, "floor: twins",
                       [&](PIN& mesh) { AddTriangles_4(mesh, facets.points, lists); });
    }
}

void MeasureDisplayBuilder(const Test::IndexedFacets& facets, const std::string& order) {
    Report report("single precision and one by one, " + order);
    const double triangles = static_cast<double>(facets.triples.size()) / 3.0;
    std::vector<float> xyz;
    for (const TPoint<double>& p : facets.points)
        xyz.insert(xyz.end(), {static_cast<float>(p.X), static_cast<float>(p.Y), static_cast<float>(p.Z)});
    std::vector<int> triples = facets.triples;

    report.Measure({"floor: twins", triangles}, [&] { return FloorTwins(facets.triples, facets.points.size()); });
    report.Measure({"AddTrianglesSPIN", triangles, 0.0, "floor: twins"}, [&] {
        SPIN mesh;
        AddTrianglesSPIN(mesh, static_cast<int>(xyz.size() / 3), xyz.data(), static_cast<int>(triangles),
                         triples.data());
        return mesh;
    });
    report.Measure({"AddTriangle, one by one", triangles, 0.0, "floor: twins"}, [&] {
        PIN mesh;
        mesh.points = facets.points;
        mesh.p2e.assign(mesh.points.size(), -1);
        EdgesMap map(static_cast<int>(mesh.points.size()));
        for (std::size_t i = 0; i < triples.size(); i += 3)
            AddTriangle(mesh, triples[i], triples[i + 1], triples[i + 2], map, true);
        return mesh;
    });
}

void MeasurePasses(const Test::IndexedFacets& facets, const std::string& order) {
    Report report("passes, " + order);
    const PIN whole = Test::FromFacets(facets);
    const PIN half = HalfDeleted(whole);
    const double triangles = static_cast<double>(facets.triples.size()) / 3.0;
    VisitorOf<PIN> nobody;

    report.Measure({"floor: copy of the mesh", triangles}, [&] { return whole; });
    report.Measure(
        {"FixOrientation of a sound mesh", triangles, 0.0, "floor: copy of the mesh"}, [&] { return whole; },
        [&](PIN& mesh) { return FixOrientation(mesh, nobody), 0; });
    report.Measure(
        {"Compact of a compact mesh", triangles, 0.0, "floor: copy of the mesh"}, [&] { return whole; },
        [&](PIN& mesh) { return Compact(mesh, nobody), 0; });
    report.Measure(
        {"Compact after deleting half", triangles, 0.0, "floor: copy of the mesh"}, [&] { return half; },
        [&](PIN& mesh) { return Compact(mesh, nobody), 0; });
}

/// A fan of triangles round node 0: the bucket of that node holds everything.
void MeasureFan(int triangles) {
    Report report("one node with all triangles", 3);
    Test::IndexedFacets fan;
    fan.points.resize(static_cast<std::size_t>(triangles) + 1);
    for (int i = 1; i <= triangles; ++i) {
        fan.points[i] = TPoint<double>(i, 1, 0);
        fan.triples.insert(fan.triples.end(), {0, i, i % triangles + 1});
    }
    MeasureBuilder(report, "AddTriangles_3", triangles, "",
                   [&](PIN& mesh) { AddTriangles_3(mesh, fan.points, fan.triples); });
}

void MeasureAll(int n) {
    const Test::IndexedFacets ordered = Test::BumpySphereFacets(n);
    const Test::IndexedFacets shuffled = Test::Shuffled(ordered, 1);
    for (const bool isShuffled : {false, true}) {
        const std::string order = isShuffled ? "shuffled" : "walk order";
        const Test::IndexedFacets& facets = isShuffled ? shuffled : ordered;
        MeasureBuilders(facets, order);
        MeasureDisplayBuilder(facets, order);
        MeasurePasses(facets, order);
    }
    MeasureFan(8 * n * n);
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    const int n = argc > 1 ? std::atoi(argv[1]) : 354;
    KM::Bench::MeasureAll(n > 0 ? n : 354);
}
