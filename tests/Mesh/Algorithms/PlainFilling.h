#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Geometry/Circles.h"
#include "Geometry/Polygons.h"
#include "Geometry/Triangulation.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/Loops.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Verbose.h"

// The plain form of each rule of filling: lists that are searched from the front, a map that is searched by value.

namespace KM::Test {

inline int EndOf(const PIN& mesh, int e) { return mesh.edges[mesh.edges[e].NE].P0; }

inline double PlainScore(const PIN& mesh, int a, int b) {
    const TPoint<double> A = mesh.points[mesh.edges[a].P0];
    const TPoint<double> B = mesh.points[EndOf(mesh, a)];
    const TPoint<double> C = mesh.points[EndOf(mesh, b)];
    const double R = Length(A - Circle3P3D(A, B, C));
    return R > 1e10 ? 10.0 * Length(A - C) : R;
}

inline int PlainBestCorner(const PIN& mesh, const std::vector<int>& list) {
    double best = 1e20;
    int found = -1;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const int a = list[i];
        const int b = list[(i + 1) % list.size()];
        if (mesh.edges[a].NE == b) continue;
        const double score = PlainScore(mesh, a, b);
        if (score < best) {
            best = score;
            found = static_cast<int>(i);
        }
    }
    return found;
}

inline int PlainCutCorner(PIN& mesh, int a, int b) {
    const int n = static_cast<int>(mesh.edges.size());
    const int ends[] = {mesh.edges[b].P0, mesh.edges[a].P0, EndOf(mesh, b)};
    mesh.edges.push_back({n + 1, a, ends[0]});
    mesh.edges.push_back({n + 2, -1, ends[1]});
    mesh.edges.push_back({n, b, ends[2]});
    mesh.edges[a].TE = n;
    mesh.edges[b].TE = n + 2;
    return n + 1;
}

inline void PlainCloseTriangle(PIN& mesh, int l0, int l1, int l2) {
    const int n = static_cast<int>(mesh.edges.size());
    const int starts[] = {mesh.edges[l1].P0, mesh.edges[l0].P0, mesh.edges[l2].P0};
    mesh.edges.push_back({n + 1, l0, starts[0]});
    mesh.edges.push_back({n + 2, l2, starts[1]});
    mesh.edges.push_back({n, l1, starts[2]});
    mesh.edges[l0].TE = n;
    mesh.edges[l2].TE = n + 1;
    mesh.edges[l1].TE = n + 2;
}

inline void PlainCloseHole(PIN& mesh, std::vector<int> list) {
    using Verbose::EMessageType;
    while (!list.empty()) {
        if (list.size() == 1) {
            Verbose::WriteMessage_1(EMessageType::Error, "FillHole: found a loop with only one orphan edge.");
            return;
        }
        if (list.size() == 2) {
            mesh.edges[list[0]].TE = list[1];
            mesh.edges[list[1]].TE = list[0];
            return;
        }
        if (list.size() == 3) return PlainCloseTriangle(mesh, list[0], list[1], list[2]);
        const int i = PlainBestCorner(mesh, list);
        if (i == -1) {
            const std::string text = "FillHole: didn't find a possible candidate hole can't be filled. ";
            Verbose::WriteMessage_1(EMessageType::Warning, text + std::to_string(list.size()));
            return;
        }
        const int a = list[i];
        const int b = list[(i + 1) % list.size()];
        const int g = PlainCutCorner(mesh, a, b);
        if (b == list.front()) {
            list.front() = g;
            list.pop_back();
        } else {
            list.erase(list.begin() + i);
            list[i] = g;
        }
    }
}

inline void PlainExtraHill(PIN& mesh) {
    std::map<std::pair<int, int>, int> known;
    for (const auto& loop : AllOrphanLoops(mesh))
        for (const int e : loop) {
            const int s = mesh.edges[e].P0;
            const int t = EndOf(mesh, e);
            if (known.count({s, t})) {
                Application::Services::DumpStream() << "x";
            } else if (known.count({t, s})) {
                Application::Services::DumpStream() << "X";
                mesh.edges[e].TE = known[{t, s}];
                mesh.edges[known[{t, s}]].TE = e;
                known.erase({t, s});
            } else {
                known[{s, t}] = e;
            }
        }
    auto loops = AllOrphanLoops(mesh);
    std::vector<std::pair<std::size_t, std::size_t>> order;
    for (std::size_t i = 0; i < loops.size(); ++i) order.emplace_back(loops[i].size(), i);
    std::sort(order.begin(), order.end());
    std::reverse(order.begin(), order.end());
    for (const auto& [size, index] : order) {
        known.clear();
        for (const int e : loops[index]) {
            const int s = mesh.edges[e].P0;
            const int t = EndOf(mesh, e);
            if (!known.count({s, t}) && known.count({t, s}))
                Verbose::WriteMessage_1(Verbose::EMessageType::Error, "PIN.ExtraHill: Can't arrive here!");
            if (!known.count({s, t}) && !known.count({t, s})) known[{s, t}] = e;
        }
    }
    mesh.p2e.clear();
}

inline void PlainFillHoles(PIN& mesh, int maxEdges) {
    for (const auto& loop : AllOrphanLoops(mesh))
        if (static_cast<unsigned>(loop.size()) <= static_cast<unsigned>(maxEdges)) PlainCloseHole(mesh, loop);
    mesh.p2e.clear();
    PlainExtraHill(mesh);
}

struct PlainBorder {
    std::vector<TPoint<double>> polygon;
    std::vector<int> nodes;
    EdgesMap map;
};

inline PlainBorder PlainWalk(const PIN& mesh, const std::vector<TPoint<double>>& points, const std::vector<int>& loop) {
    PlainBorder border;
    for (int i = static_cast<int>(loop.size()) - 1; i >= 0; --i) {
        border.polygon.push_back(points[mesh.edges[loop[i]].P0]);
        border.nodes.push_back(mesh.edges[loop[i]].P0);
        border.map.AddEdge(loop[i], mesh.edges[loop[i]].P0, EndOf(mesh, loop[i]));
    }
    return border;
}

inline void PlainTriangulate(PIN& mesh, PlainBorder& border) {
    std::vector<std::vector<int>> triangles;
    PointsUtils::TriangulateConcavePolygon(border.polygon, triangles);
    for (const auto& t : triangles)
        AddTriangle(mesh, border.nodes[t[0]], border.nodes[t[1]], border.nodes[t[2]], border.map, true);
}

inline void PlainFillHole(PIN& mesh, const std::vector<TPoint<double>>& points, const std::vector<int>& loop) {
    PlainBorder border = PlainWalk(mesh, points, loop);
    PlainTriangulate(mesh, border);
}

inline void PlainSurround(PIN& mesh, std::vector<TPoint<double>>& points, const std::vector<int>& loop) {
    PlainBorder border = PlainWalk(mesh, points, loop);
    auto& polygon = border.polygon;
    double xmin = polygon[0].X, xmax = polygon[0].X, ymin = polygon[0].Y, ymax = polygon[0].Y;
    std::size_t left = 0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        if (polygon[i].X < xmin) {
            xmin = polygon[i].X;
            left = i;
        }
        if (polygon[i].X > xmax) xmax = polygon[i].X;
        if (polygon[i].Y < ymin) ymin = polygon[i].Y;
        if (polygon[i].Y > ymax) ymax = polygon[i].Y;
    }
    const double m = xmax - xmin > ymax - ymin ? xmax - xmin : ymax - ymin;
    const double xl = xmin - m, xr = xmax + m, yb = ymin - m, yt = ymax + m;
    const int n = static_cast<int>(points.size());
    points.emplace_back(xl, yt, 0.0);
    points.emplace_back(xl, yb, 0.0);
    points.emplace_back(xr, yb, 0.0);
    points.emplace_back(xr, yt, 0.0);
    const TPoint<double> p = polygon[left];
    const TPoint<double> q = polygon[(left + 1) % polygon.size()];
    const int nodeOfP = border.nodes[left];
    const auto insert = [&](const TPoint<double>& point, int node) {
        ++left;
        polygon.insert(polygon.begin() + static_cast<std::ptrdiff_t>(left), point);
        border.nodes.insert(border.nodes.begin() + static_cast<std::ptrdiff_t>(left), node);
    };
    insert({xl, yt, 0.0}, n);
    insert({xl, yb, 0.0}, n + 1);
    insert({xr, yb, 0.0}, n + 2);
    insert({xr, yt, 0.0}, n + 3);
    insert({xl + 0.0001, yt, 0.0}, n);
    insert({0.999 * p.X + 0.001 * q.X, 0.999 * p.Y + 0.001 * q.Y, 0.999 * p.Z + 0.001 * q.Z}, nodeOfP);
    PlainTriangulate(mesh, border);
    if (mesh.points.size() + 4 == points.size())
        for (int i = 0; i < 4; ++i) mesh.points.emplace_back(0.0, 0.0, 0.0);
}

}  // namespace KM::Test
