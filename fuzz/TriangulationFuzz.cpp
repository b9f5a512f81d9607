// Feeds polygons to the triangulators and to the repair, and compares with the plain rules.

#include <cstdint>
#include <cstdlib>
#include <limits>
#include <vector>

#include "FuzzBytes.h"
#include "Geometry/PlainPolygons.h"
#include "Km.h"
#include "Support/HostilePoints.h"

namespace {

using KM::Fuzz::Bytes;
using KM::Fuzz::Require;
using Polygon = std::vector<KM::TPoint<double>>;
using Triangles = std::vector<std::vector<int>>;

void CheckTriangles(const Polygon& polygon) {
    Triangles triangles;
    Triangles plain;
    KM::PointsUtils::TriangulateConcavePolygon(polygon, triangles);
    KM::Test::PlainTriangulateConcavePolygon(polygon, plain);
    Require(triangles == plain);
    KM::PointsUtils::TriangulateConvexPolygon(polygon, triangles);
}

void CheckRepair(const Polygon& polygon) {
    Polygon repaired;
    Polygon plain;
    Require(KM::PointsUtils::MakePolygonNonSelfIntersecting(polygon, repaired) ==
            KM::Test::PlainMakePolygonNonSelfIntersecting(polygon, plain));
    Require(repaired.size() == plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i) Require(KM::Test::SameBits(repaired[i], plain[i]));
}

void CheckEntry(const Polygon& polygon) {
    std::vector<KsPoint> points;
    for (const auto& p : polygon) points.push_back({p.X, p.Y, p.Z});
    std::vector<int> indices;
    for (const int project : {0, 1}) Require(KmPolyConvexToTri(project, points, indices) == 0);
    for (const int index : indices) Require(index >= 0 && static_cast<std::size_t>(index) < points.size());
}

void CheckSurface(Bytes& bytes, const Polygon& points) {
    const int count = static_cast<int>(points.size());
    std::vector<std::vector<int>> neighbours(bytes.Byte() % (count + 3));
    for (auto& list : neighbours)
        for (int k = bytes.Byte() % 8; k > 0; --k) list.push_back(bytes.Byte() % (count + 2) - 1);
    std::vector<int> triangles;
    KM::PointsToTrianglesHelper::Tesselate3D(triangles, points, neighbours, 0);
    Require(triangles.size() % 3 == 0);
    for (const int node : triangles) Require(node >= 0 && node < count);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    const double scale = bytes.Byte() % 2 == 0 ? 1.0 : bytes.Coordinate();
    Polygon polygon(bytes.Byte() % 64);
    for (auto& p : polygon) {
        p.X = bytes.Coordinate() * scale;
        p.Y = bytes.Coordinate() * scale;
        p.Z = bytes.Coordinate();
    }
    CheckTriangles(polygon);
    CheckRepair(polygon);
    CheckEntry(polygon);
    CheckSurface(bytes, polygon);
    return 0;
}
