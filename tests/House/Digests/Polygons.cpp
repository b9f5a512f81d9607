#include <string>
#include <utility>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/PointClouds.h"
#include "Support/Polygons.h"

namespace KM::Test {
namespace {

void PrintPolygon(const std::string& name, const Outline& outline) {
    std::vector<std::vector<int>> triangles;
    PointsUtils::TriangulateConcavePolygon(outline, triangles);
    PointsUtils::TriangulateConvexPolygon(outline, triangles);
    Digest triangulated;
    for (const std::vector<int>& triangle : triangles) triangulated.Add(triangle);
    Print(name + ": triangles", triangulated);

    Outline repaired;
    PointsUtils::MakePolygonNonSelfIntersecting(outline, repaired);
    Digest points;
    points.Add(repaired);
    PointsUtils::AdjustConvexPolygonVertices(outline, repaired, 0.3);
    points.Add(repaired);
    PointsUtils::RemoveCollinearPoints(repaired, 0.01, 0.3, true);
    points.Add(repaired);
    const double area = PointsUtils::SignedArea(outline);
    points.Add(&area, 1);
    const T2NT places(outline, true);
    for (int i = 0; i < 100; ++i) {
        const double t = places(0.37 * i).t;
        points.Add(&t, 1);
    }
    Print(name + ": repair, cleaning, places", points);
}

void PrintProjection(const std::string& name, const Outline& outline) {
    std::vector<KsPoint> points;
    for (const auto& p : outline) points.push_back({p.X, 0.3 * p.X + 0.9 * p.Y, 0.4 * p.Y - 0.7 * p.X});
    std::vector<int> indices;
    KmPolyConvexToTri(1, points, indices);
    Digest digest;
    digest.Add(indices);
    Print(name + ": projected triangles", digest);
}

}  // namespace

void PrintPolygonDigests() {
    const std::pair<std::string, Outline> outlines[] = {
        {"circle", Circle(500)},          {"spiral", Spiral(900, 7)},       {"spiky star", SpikyStar(600)},
        {"pixels", Digitised(2000, 1.0)}, {"tenths", Digitised(2000, 0.1)}, {"comb", Comb(100)},
        {"holes", KeyHoles(6, 1e-3)},     {"star", StarShaped(4, 700)},     {"random", RandomOutline(0, 200)}};
    for (const auto& [name, outline] : outlines) {
        PrintPolygon(name, outline);
        PrintProjection(name, outline);
    }
    const Outline points = SpherePoints(2000);
    std::vector<int> triangles;
    PointsToTrianglesHelper::Tesselate3D(triangles, points, NearestNeighbours(points, 12), 0);
    Digest digest;
    digest.Add(triangles);
    Print("surface over a sphere of points", digest);
}

}  // namespace KM::Test
