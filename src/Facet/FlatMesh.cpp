#include "Facet/FlatMesh.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Facet/FloatBlock.h"
#include "KmTools.h"

std::FILE* KgApplDbgFileDesc = nullptr;
std::int32_t KgApplDbgGroup = 0;
std::int32_t KgApplDbgLevel = 0;
std::int32_t KgApplFacetDecimate = 0;

namespace {

using Point = KM::TPoint<double>;

template <class Mesh>
Mesh* CreateMesh() {
    // No exception may reach a host that is written in C, whatever its allocator throws.
    try {
        return new Mesh;
    } catch (...) { return nullptr; }
}

template <class T>
float* WritePoint(const KM::TPoint<T>& point, float* to) {
    *to++ = static_cast<float>(point.X);
    *to++ = static_cast<float>(point.Y);
    *to++ = static_cast<float>(point.Z);
    return to;
}

float* WriteEdge(const KM::Edge& edge, float* to) {
    *to++ = static_cast<float>(edge.NE);
    *to++ = static_cast<float>(edge.TE);
    *to++ = static_cast<float>(edge.P0);
    return to;
}

void SetBox(const float at[3], double box[6]) {
    for (int k = 0; k < 3; ++k) box[2 * k] = box[2 * k + 1] = at[k];
}

/// NaN if any of the three is.
double ProductOfTwoLargest(double x, double y, double z) {
    if (x <= y && x <= z) return y * z;
    if (y <= x && y <= z) return x * z;
    if (z <= x && z <= y) return x * y;
    return std::numeric_limits<double>::quiet_NaN();
}

}  // namespace

int KmPinInit(int, int) {
    KgApplDbgFileDesc = stderr;
    KgApplDbgGroup = 0;
    KgApplDbgLevel = 0;
    KgApplFacetDecimate = 0;
    return 0;
}

KM::PIN* PINCreate() { return CreateMesh<KM::PIN>(); }

KM::SPIN* SPINCreate() { return CreateMesh<KM::SPIN>(); }

void PINDestroy(KM::PIN* mesh) { delete mesh; }

void SPINDestroy(KM::SPIN* mesh) { delete mesh; }

int PINExtractPoints(KM::SPIN* mesh, int* count, float** points) {
    if (mesh == nullptr || count == nullptr || points == nullptr) return 1;
    const std::vector<KM::TPoint<float>>& from = mesh->points;
    *count = static_cast<int>(from.size());
    if (KM::AllocateFloats(3 * from.size(), points) != 0) return 1;
    float* to = *points;
    for (const KM::TPoint<float>& point : from) to = WritePoint(point, to);
    return 0;
}

int PINGetFloatArray(KM::PIN* mesh, int withPoints, int* count, float** array) {
    if (mesh == nullptr || count == nullptr || array == nullptr) return 1;
    const std::size_t roomForPoints = withPoints != 0 ? 3 * mesh->points.size() : 0;
    const std::size_t size = 3 + 3 * mesh->edges.size() + mesh->p2e.size() + roomForPoints;
    float* stream = nullptr;
    if (const int code = KM::AllocateFloats(size, &stream); code != 0) return code;

    float* to = stream;
    *to++ = static_cast<float>(mesh->edges.size());
    *to++ = static_cast<float>(mesh->p2e.size());
    *to++ = static_cast<float>(mesh->points.size());
    for (const KM::Edge& edge : mesh->edges) to = WriteEdge(edge, to);
    for (const std::int32_t edge : mesh->p2e) *to++ = static_cast<float>(edge);
    // With any number but 1 the room is the host's to fill.
    if (withPoints == 1)
        for (const Point& point : mesh->points) to = WritePoint(point, to);

    *count = static_cast<int>(size);
    *array = stream;
    return 0;
}

int PINGetPointIdx(KM::PIN* mesh, double toleranceSquared, double x, double y, double z, int* index) {
    if (index == nullptr) return 1;
    *index = -1;
    if (mesh == nullptr) return 1;
    const Point at(x, y, z);
    const auto found = std::find_if(mesh->points.begin(), mesh->points.end(),
                                    [&](const Point& node) { return KM::LengthSquared(node - at) < toleranceSquared; });
    if (found == mesh->points.end()) return 1;
    *index = static_cast<int>(found - mesh->points.begin());
    return 0;
}

int PINMkVTRIVTXs(KM::PIN* mesh, long long, double box[6], int* count, float** vertices) {
    if (mesh == nullptr || box == nullptr || count == nullptr || vertices == nullptr) return 1;
    const std::vector<Point>& points = mesh->points;
    double grown[6] = {};
    KmBndBoxInit(3, grown);
    float* floats = nullptr;
    if (const int code = KM::AllocateFloats(3 * points.size(), &floats); code != 0) return code;

    float* to = floats;
    for (const Point& point : points) {
        float* const start = to;
        to = WritePoint(point, start);
        // Only the first point is rounded on its way into the box: hosts compare this box between runs, bit by bit.
        if (start == floats) {
            SetBox(start, grown);
        } else {
            const double full[3] = {point.X, point.Y, point.Z};
            KmBndBoxGrowPnt(3, grown, full, grown);
        }
    }
    std::copy_n(grown, 6, box);
    *count = static_cast<int>(points.size());
    *vertices = floats;
    return 0;
}

double PINTolForLod(int triangles, double box[6]) {
    if (box == nullptr) return std::numeric_limits<double>::quiet_NaN();
    const double area = ProductOfTwoLargest(box[1] - box[0], box[3] - box[2], box[5] - box[4]);
    return 1.0 / std::sqrt(2.0 * triangles / area);  // 2.0, since 2 * triangles can exceed an int
}
