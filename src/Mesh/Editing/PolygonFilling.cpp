#include "Mesh/Editing/PolygonFilling.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "Geometry/Planar.h"
#include "Mesh/Core/Loops.h"
#include "Mesh/Core/SafeLinks.h"
#include "Mesh/Editing/FillWithFan.h"
#include "Mesh/Editing/StartPoints.h"

namespace KM {
namespace {

/// Hosts rely on it that a regular polygon keeps its first corner, whatever the rounding of its angles.
constexpr double LeastAdvantage = 0.2;

/// The angle at a corner, on the left of the outline or, with `clockwise`, on its right.
double Opening(const std::vector<TPoint<double>>& outline, std::size_t i, bool clockwise) {
    const std::size_t count = outline.size();
    const double out = DirectionInXY(outline[i], outline[(i + 1) % count]);
    const double back = DirectionInXY(outline[i], outline[(i + count - 1) % count]);
    return clockwise ? WayRound(back, out) : WayRound(out, back);
}

std::ptrdiff_t WidestCorner(const std::vector<TPoint<double>>& outline, bool clockwise) {
    std::size_t widest = 0;
    double best = -1e10;
    for (std::size_t i = 0; i < outline.size(); ++i) {
        const double opening = Opening(outline, i, clockwise);
        if (!(opening - best > LeastAdvantage)) continue;
        best = opening;
        widest = i;
    }
    return static_cast<std::ptrdiff_t>(widest);
}

}  // namespace

void InsertFan(PIN& mesh, int e, int node) {
    const std::vector<int> loop = Loop(mesh, e);
    if (loop.empty() || !IsNode(mesh, node)) return;
    auto& edges = mesh.edges;
    const int base = static_cast<int>(edges.size());
    const int count = static_cast<int>(loop.size());
    edges.resize(edges.size() + 2 * loop.size());
    for (int i = 0; i < count; ++i) {
        const int next = (i + 1) % count;
        const int previous = (i + count - 1) % count;
        const int coming = base + 2 * i;
        const int leaving = coming + 1;
        edges[coming] = {leaving, base + 2 * next + 1, edges[loop[next]].P0};
        edges[leaving] = {loop[i], base + 2 * previous, node};
        edges[loop[i]].NE = coming;
    }
    NameNodeEdge(mesh, node, base + 1);
}

void TriangulatePolygon(PIN& mesh, int clockwise, int e) {
    std::vector<int> loop = Loop(mesh, e);
    if (loop.size() <= 3) return;
    const std::vector<TPoint<double>> outline = StartPoints(mesh, loop);
    if (outline.empty()) return;
    std::rotate(loop.begin(), loop.begin() + WidestCorner(outline, clockwise != 0), loop.end());
    FillWithFan(mesh, loop);
}

}  // namespace KM
