// Triangulation and repair of outlines of several kinds and sizes, and the surface over a cloud of points. "Per triangle"
// is per point of the outline here.
// Usage: TriangulationBench [most points of an outline; 100000] [points of the cloud; 100000]

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "Km.h"
#include "Support/PointClouds.h"
#include "Support/Polygons.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

struct Kind {
    std::string name;
    Test::Outline (*make)(int count);
};

const Kind Kinds[] = {
    {"circle", Test::Circle},
    {"spiral, 4 turns", [](int count) { return Test::Spiral(count, 4); }},
    {"spiral, 100 points a turn", [](int count) { return Test::Spiral(count, std::max(1, count / 100)); }},
    {"spiky star", Test::SpikyStar},
    {"star of random spikes", [](int count) { return Test::StarShaped(1, count); }},
    {"digitised, on pixels", [](int count) { return Test::Digitised(count, 1.0); }},
    {"digitised, on tenths", [](int count) { return Test::Digitised(count, 0.1); }},
    {"comb", [](int count) { return Test::Comb(count / 4); }},
    {"holes on bridges", [](int count) { return Test::KeyHoles(static_cast<int>(std::sqrt(count / 8.0)), 1e-4); }},
    {"there and back", Test::ThereAndBack},
};

/// Small outlines are cut many times in one measurement, for the sake of the clock.
int Repeats(const Test::Outline& outline) { return std::max(1, static_cast<int>(20000 / outline.size())); }

/// The least that any triangulator does: one list per triangle.
std::vector<std::vector<int>> Fan(const Test::Outline& outline) {
    std::vector<std::vector<int>> triangles;
    for (int i = 1; i + 1 < static_cast<int>(outline.size()); ++i) triangles.push_back({0, i, i + 1});
    return triangles;
}

void MeasureOutlines(int count) {
    Report report("outlines of " + std::to_string(count) + " points", 3);
    for (const Kind& kind : Kinds) {
        const Test::Outline outline = kind.make(count);
        const int repeats = Repeats(outline);
        const double points = static_cast<double>(outline.size()) * repeats;
        const std::string floor = "floor: fan, " + kind.name;
        report.Measure({floor, points}, [&] {
            std::vector<std::vector<int>> triangles;
            for (int i = 0; i < repeats; ++i) triangles = Fan(outline);
            return triangles;
        });
        report.Measure({"triangulate: " + kind.name, points, 0.0, floor}, [&] {
            std::vector<std::vector<int>> triangles;
            for (int i = 0; i < repeats; ++i) {
                triangles.clear();
                PointsUtils::TriangulateConcavePolygon(outline, triangles);
            }
            return triangles;
        });
        report.Measure({"repair: " + kind.name, points}, [&] {
            Test::Outline repaired;
            for (int i = 0; i < repeats; ++i) PointsUtils::MakePolygonNonSelfIntersecting(outline, repaired);
            return repaired;
        });
    }
}

void MeasureCloud(int count) {
    const Test::Outline points = Test::SpherePoints(count);
    const auto neighbours = Test::NearestNeighbours(points, 12);
    Report report("cloud of " + std::to_string(count) + " points, 12 neighbours each", 3);
    std::size_t triangles = 0;
    report.Measure({"Tesselate3D", 2.0 * count - 4.0}, [&] {
        std::vector<int> surface;
        PointsToTrianglesHelper::Tesselate3D(surface, points, neighbours, 0);
        triangles = surface.size() / 3;
        return surface;
    });
    report.Remark(std::to_string(triangles) + " triangles");
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    const int most = argc > 1 ? std::atoi(argv[1]) : 100000;
    for (int count = 100; count <= most; count *= 10) KM::Bench::MeasureOutlines(count);
    KM::Bench::MeasureCloud(argc > 2 ? std::atoi(argv[2]) : 100000);
}
