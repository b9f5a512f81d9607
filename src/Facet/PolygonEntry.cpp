#include "Facet/PolygonEntry.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include "Geometry/AveragePlane.h"
#include "Geometry/Triangulation.h"

namespace KM {

namespace {

using Points = std::vector<TPoint<double>>;
using Triangles = std::vector<std::vector<int>>;

/// Turns the points so that their average plane becomes level. Points that are level already, or have no plane, stay.
void Flatten(Points& points) {
    const auto [code, plane] = AveragePlane(points, 0.001);
    if (code != 0 && code != 1) return;
    const TPoint<double> origin = plane.CachedPoint();
    const double r = std::sqrt(plane.a * plane.a + plane.b * plane.b);
    const double s = std::sqrt(r * r + plane.c * plane.c);
    const bool isUpright = r < 1e-6;  // then any azimuth serves
    const double cosA = isUpright ? -1.0 : plane.a / r;
    const double sinA = isUpright ? 0.0 : plane.b / r;
    const double cosB = plane.c / s;
    const double sinB = r / s;
    for (TPoint<double>& p : points) {
        const TPoint<double> q = p - origin;
        const double u = q.Y * sinA + q.X * cosA;
        p = TPoint<double>(q.Z * sinB - u * cosB, q.X * sinA - q.Y * cosA, q.Z * cosB + u * sinB);
    }
}

void Sort(Triangles& triangles) {
    for (std::vector<int>& triangle : triangles) std::sort(triangle.begin(), triangle.end());
    std::sort(triangles.begin(), triangles.end());
}

Triangles Triangulate(Points& points, bool project) {
    if (project) Flatten(points);
    Triangles triangles;
    PointsUtils::TriangulateConcavePolygon(points, triangles);
    if (project) Sort(triangles);
    return triangles;
}

/// @return  0, or the code of the host's service that failed
int Copy(const KmList* list, Points& points) {
    if (list->itemSize != static_cast<int>(sizeof(KsPoint))) return KmListSizeError();
    KmListItr iterator;
    if (const int code = KmListItrInit2(list, 1, &iterator); code != 0) return code;
    points.reserve(static_cast<std::size_t>(list->count));
    while (true) {
        void* item = nullptr;
        if (const int code = KmListItrPtr(&iterator, &item); code != 0) return code;
        if (item == nullptr) return 0;
        const auto* p = static_cast<const KsPoint*>(item);
        points.emplace_back(p->x, p->y, p->z);
    }
}

/// @return  0, or another number if the host fails
int Store(const Triangles& triangles, KmList** indices) {
    if (triangles.size() > INT_MAX / 3) return 1;
    if (*indices == nullptr) {
        const int room = 3 * static_cast<int>(triangles.size());
        if (const int code = KmListMk(2, 4, room, 3, 0, indices); code != 0) return code;
    }
    for (const std::vector<int>& triangle : triangles)
        for (const int index : triangle)
            if (const int code = Host::Append(*indices, index); code != 0) return code;
    return 0;
}

int FillList(bool project, const KmList* list, KmList** indices) {
    if (*indices != nullptr && KmListReset(*indices) != 0) return 1;
    if (list == nullptr || list->count == 0) return 0;
    Points points;
    if (Copy(list, points) != 0) return 1;
    return Store(Triangulate(points, project), indices) != 0;
}

void AppendTriangles(bool project, const std::vector<KsPoint>& polygon, std::vector<int>& indices) {
    Points points;
    points.reserve(polygon.size());
    for (const KsPoint& p : polygon) points.emplace_back(p.x, p.y, p.z);
    const Triangles triangles = Triangulate(points, project);
    std::vector<int> flat;
    flat.reserve(3 * triangles.size());
    for (const std::vector<int>& triangle : triangles) flat.insert(flat.end(), triangle.begin(), triangle.end());
    indices.insert(indices.end(), flat.begin(), flat.end());
}

}  // namespace

}  // namespace KM

int KmPolyToTri(int project, const KmList* points, KmList** indices) {
    if (indices == nullptr) return 1;
    // No exception may reach a host that is written in C, whatever its allocator throws.
    try {
        return KM::FillList(project != 0, points, indices);
    } catch (...) {
        return 1;
    }
}

int KmPolyConvexToTri(int project, const std::vector<KsPoint>& points, std::vector<int>& indices) {
    try {
        if (!points.empty()) KM::AppendTriangles(project != 0, points, indices);
        return 0;
    } catch (...) {
        return 1;
    }
}
