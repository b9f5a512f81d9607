#pragma once

#include <cmath>
#include <utility>
#include <vector>

#include "Km.h"

// The rules of analysis and division, written down as plainly as they can be said: step by step, with every copy and every
// pass, for sound meshes only.

namespace KM::Test {

inline TPoint<double> PlainTriangleNormal(const PIN& mesh, int e, bool weighted, double& weight) {
    const int n = mesh.edges[e].NE;
    const TPoint<double> A = mesh.points[mesh.edges[e].P0];
    const TPoint<double> B = mesh.points[mesh.edges[n].P0];
    const TPoint<double> C = mesh.points[mesh.edges[mesh.edges[n].NE].P0];
    weight = 1.0;
    if (weighted) weight = std::fabs((B.X - A.X) * (C.Y - A.Y) - (B.Y - A.Y) * (C.X - A.X)) / 2.0;
    const TPoint<double> cross = Cross(B - A, C - A);
    const double length = std::sqrt(cross.X * cross.X + cross.Y * cross.Y + cross.Z * cross.Z);
    if (5e-9 > std::fabs(length)) return {0.0, 0.0, 1.0};
    return {cross.X / length, cross.Y / length, cross.Z / length};
}

inline TPoint<double> PlainNodeNormal(const PIN& mesh, int edge, bool weighted) {
    TPoint<double> sum;
    double total = 0.0;
    for (int e = edge; mesh.edges[e].TE != -1; e = mesh.edges[mesh.edges[e].TE].NE) {
        if (e == edge && total != 0.0) break;
        double weight = 0.0;
        const TPoint<double> normal = PlainTriangleNormal(mesh, e, weighted, weight);
        sum = sum + normal * weight;
        total += weight;
    }
    return SafeUnit(sum / total);
}

inline std::vector<TPoint<double>> PlainNormals(PIN mesh, bool weighted) {
    std::vector<TPoint<double>> normals(mesh.points.size());
    RebuildNodeEdges(mesh);
    for (std::size_t node = 0; node < normals.size(); ++node) {
        const int start = StartingEdge(mesh, mesh.p2e[node]);
        if (start == -1) continue;
        double total = 0.0;
        int e = start;
        do {
            double weight = 0.0;
            const TPoint<double> normal = PlainTriangleNormal(mesh, e, weighted, weight);
            normals[node] = normals[node] + normal * weight;
            total += weight;
            if (mesh.edges[e].TE == -1) break;
            e = mesh.edges[mesh.edges[e].TE].NE;
        } while (e != start);
        if (total != 0.0) normals[node] = SafeUnit(normals[node] / total);
        else normals[node] = TPoint<double>();
    }
    return normals;
}

inline std::vector<std::vector<int>> PlainSolids(const PIN& mesh) {
    std::vector<std::vector<int>> solids;
    std::vector<bool> visited(mesh.edges.size());
    for (int first = 0; first < static_cast<int>(mesh.edges.size()); ++first) {
        if (visited[first]) continue;
        solids.emplace_back();
        std::vector<int> stack{first};
        while (!stack.empty()) {
            const int e = stack.back();
            stack.pop_back();
            const int n = mesh.edges[e].NE;
            for (const int x : {e, n, mesh.edges[n].NE}) {
                const int twin = mesh.edges[x].TE;
                if (twin != -1 && !visited[twin]) stack.push_back(twin);
                visited[x] = true;
                solids.back().push_back(x);
            }
        }
    }
    return solids;
}

struct PlainDivision {
    int result = 1;
    PIN below;
    PIN above;
};

inline PlainDivision PlainDivide(const PIN& mesh, const TPoint<double>& point, const TPoint<double>& normal) {
    PlainDivision parts;
    if (mesh.edges.empty() || mesh.points.empty()) return parts;
    PIN work = mesh;
    const Plane plane(normal, point);

    std::vector<bool> visited(work.edges.size());
    std::vector<int> crossing;
    std::vector<TPoint<double>> at;
    bool touches = false;
    for (int e = 0; e < static_cast<int>(work.edges.size()); ++e) {
        if (visited[e]) continue;
        visited[e] = true;
        if (work.edges[e].TE != -1) visited[work.edges[e].TE] = true;
        const TPoint<double> A = work.points[work.edges[e].P0];
        const TPoint<double> B = work.points[work.edges[work.edges[e].NE].P0];
        const double dA = plane.Dist(A);
        const double dB = plane.Dist(B);
        if (dB * dA < 0) {
            crossing.push_back(e);
            at.push_back(A + (B - A) * dA / (dA - dB));
        } else if (std::fabs(dA) < 1e-7 || std::fabs(dB) < 1e-7) {
            touches = true;
        }
    }
    if (crossing.empty() && !touches) return parts;
    for (std::size_t i = 0; i < crossing.size(); ++i) SplitEdge(work, crossing[i], at[i]);

    std::vector<int> side, lower, upper;
    for (const TPoint<double>& p : work.points) {
        const double d = plane.Dist(p);
        side.push_back(std::fabs(d) >= 1e-5 ? (d < 0 ? 1 : 2) : 0);
        lower.push_back(side.back() == 2 ? -1 : static_cast<int>(parts.below.points.size()));
        upper.push_back(side.back() == 1 ? -1 : static_cast<int>(parts.above.points.size()));
        if (side.back() != 2) parts.below.points.push_back(p);
        if (side.back() != 1) parts.above.points.push_back(p);
    }
    std::vector<int> lowerEdge, upperEdge;
    for (int e = 0; e < static_cast<int>(work.edges.size()); ++e) {
        Edge edge = work.edges[e];
        const int s = side[edge.P0];
        const int t = side[work.edges[edge.NE].P0];
        bool isBelow = s == 1 || t == 1;
        if (s == 0 && t == 0) isBelow = side[work.edges[PrevEdge(work, e)].P0] == 1;
        lowerEdge.push_back(isBelow ? static_cast<int>(parts.below.edges.size()) : -1);
        upperEdge.push_back(isBelow ? -1 : static_cast<int>(parts.above.edges.size()));
        edge.P0 = isBelow ? lower[edge.P0] : upper[edge.P0];
        (isBelow ? parts.below : parts.above).edges.push_back(edge);
    }
    for (const auto& [part, map] : {std::pair(&parts.below, &lowerEdge), std::pair(&parts.above, &upperEdge)}) {
        for (Edge& edge : part->edges) {
            edge.NE = (*map)[edge.NE];
            if (edge.TE != -1) edge.TE = (*map)[edge.TE];
        }
        RebuildNodeEdges(*part);
    }
    parts.result = 0;
    return parts;
}

}  // namespace KM::Test
