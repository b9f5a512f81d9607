#include "Mesh/Algorithms/PlanarFilling.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Geometry/Planar.h"
#include "Geometry/Polygons.h"
#include "Geometry/Triangulation.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/FanWalk.h"

namespace KM {
namespace {

using P = TPoint<double>;

/// A border against its direction, as the faces on its other side have it.
struct Border {
    std::vector<P> polygon;
    std::vector<int> nodes;  // of the points of the polygon
    EdgesMap edges;
};

bool HasPoints(const PIN& mesh, const std::vector<P>& points, const std::vector<int>& loop) {
    return std::all_of(loop.begin(), loop.end(), [&](int e) {
        return IsAliveEdge(mesh, e) && static_cast<std::size_t>(mesh.edges[e].P0) < points.size();
    });
}

Border BackwardBorder(const PIN& mesh, const std::vector<P>& points, const std::vector<int>& loop) {
    Border border;
    for (auto e = loop.rbegin(); e != loop.rend(); ++e) {
        const int node = mesh.edges[*e].P0;
        border.polygon.push_back(points[node]);
        border.nodes.push_back(node);
        border.edges.AddEdge(*e, node, EndNode(mesh, *e));
    }
    return border;
}

bool HasNodeEdges(const PIN& mesh) { return mesh.p2e.size() == mesh.points.size(); }

void Fill(PIN& mesh, Border border) {
    std::vector<std::vector<int>> triangles;
    PointsUtils::TriangulateConcavePolygon(border.polygon, triangles);
    const std::vector<int>& nodes = border.nodes;
    const bool setNodeEdge = HasNodeEdges(mesh);
    for (const std::vector<int>& t : triangles)
        AddTriangle(mesh, nodes[t[0]], nodes[t[1]], nodes[t[2]], border.edges, setNodeEdge);
}

PlaneBox BoxOf(const std::vector<P>& polygon) {
    PlaneBox box = At(polygon.front());
    for (const P& p : polygon) box = Union(box, At(p));
    return box;
}

/// The corners of the box with a margin as wide as the longer of its sides, from the upper left.
std::array<P, 4> FrameRound(const PlaneBox& box) {
    const double margin = std::max(box.maxX - box.minX, box.maxY - box.minY);
    const double left = box.minX - margin;
    const double right = box.maxX + margin;
    const double bottom = box.minY - margin;
    const double top = box.maxY + margin;
    return {P(left, top, 0.0), P(left, bottom, 0.0), P(right, bottom, 0.0), P(right, top, 0.0)};
}

//  n ---------- n+3     Joins the frame to the border at its leftmost point P: to the first corner, round the frame
//  | \  .---.    |      and back. The way back is moved a little, at the corner and at P, towards the point Q behind it:
//  |  P'     \   |      two ways in exactly the same place are a dead end for the triangulator.
//  |  Q \___ /   |
// n+1 --------- n+2
void OpenToFrame(Border& border, const std::array<P, 4>& frame, int n) {
    const auto isFurtherLeft = [](const P& a, const P& b) { return a.X < b.X; };
    const auto leftmost = std::min_element(border.polygon.begin(), border.polygon.end(), isFurtherLeft);
    const std::ptrdiff_t at = leftmost - border.polygon.begin();
    const P p = *leftmost;
    const P q = border.polygon[static_cast<std::size_t>(at + 1) % border.polygon.size()];
    const P way[] = {
        frame[0], frame[1], frame[2], frame[3], P(frame[0].X + 0.0001, frame[0].Y, 0.0), p * 0.999 + q * 0.001};
    const int nodes[] = {n, n + 1, n + 2, n + 3, n, border.nodes[at]};
    border.polygon.insert(leftmost + 1, std::begin(way), std::end(way));
    border.nodes.insert(border.nodes.begin() + at + 1, std::begin(nodes), std::end(nodes));
}

}  // namespace

void FillHole(PIN& mesh, const std::vector<P>& points, const std::vector<int>& loop) {
    if (HasPoints(mesh, points, loop)) Fill(mesh, BackwardBorder(mesh, points, loop));
}

void Surround(PIN& mesh, std::vector<P>& points, const std::vector<int>& loop) {
    if (loop.empty() || !HasPoints(mesh, points, loop)) return;
    Border border = BackwardBorder(mesh, points, loop);
    const std::array<P, 4> frame = FrameRound(BoxOf(border.polygon));
    OpenToFrame(border, frame, static_cast<int>(points.size()));

    const bool hadNodeEdges = HasNodeEdges(mesh);
    points.insert(points.end(), frame.begin(), frame.end());
    if (mesh.points.size() + 4 == points.size()) mesh.points.resize(points.size());
    if (hadNodeEdges) mesh.p2e.resize(mesh.points.size(), -1);
    Fill(mesh, std::move(border));
}

double SignedArea(const PIN& mesh, const std::vector<P>& points, const std::vector<int>& loop) {
    if (!HasPoints(mesh, points, loop)) return 0.0;
    std::vector<P> polygon;
    for (const int e : loop) polygon.push_back(points[mesh.edges[e].P0]);
    return PointsUtils::SignedArea(polygon);
}

}  // namespace KM
