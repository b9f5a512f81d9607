#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "Mesh/Algorithms/GeodesicWindow.h"
#include "Mesh/Core/Loops.h"
#include "Mesh/Core/Pin.h"

namespace KM::Test {

/// Shortest ways by brute force: from each node all rows of triangles are unfolded, and the nodes that are seen straight
/// through such a row are joined. A shortest way crosses no triangle twice, and bends at nodes only. For small meshes.
class PlainGeodesics {
public:
    explicit PlainGeodesics(const PIN& mesh) : mesh_(mesh), isCrossed_(mesh.edges.size(), false) {
        const int count = static_cast<int>(mesh.points.size());
        direct_.assign(count, std::vector<double>(count, 1e20));
        for (source_ = 0; source_ < count; ++source_) {
            direct_[source_][source_] = 0.0;
            for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
                if (mesh.edges[e].P0 == source_) LookOutFrom(e);
        }
        for (int k = 0; k < count; ++k)
            for (int i = 0; i < count; ++i)
                for (int j = 0; j < count; ++j) direct_[i][j] = std::min(direct_[i][j], direct_[i][k] + direct_[k][j]);
    }

    double Distance(int from, int to) const { return direct_[from][to]; }

private:
    int Start(int e) const { return mesh_.edges[e].P0; }
    double Side(int a, int b) const { return Length(mesh_.points[a] - mesh_.points[b]); }
    void See(int node, double distance) {
        direct_[source_][node] = std::min(direct_[source_][node], distance);
        direct_[node][source_] = direct_[source_][node];
    }

    /// The triangle of an edge that starts at the source, which lies in the origin.
    void LookOutFrom(int e) {
        const int n = mesh_.edges[e].NE;
        const int a = Start(n);
        const int b = Start(mesh_.edges[n].NE);
        const FlatPoint A{Side(source_, a), 0.0};
        const double x = (A.x * A.x + Side(source_, b) * Side(source_, b) - Side(a, b) * Side(a, b)) / (2.0 * A.x);
        const FlatPoint B{x, std::sqrt(std::max(0.0, Side(source_, b) * Side(source_, b) - x * x))};
        See(a, A.x);
        See(b, Length(B));
        Cross(n, A, B, A, B);
    }

    /// Unfolds the triangle behind `e`, which runs from A to B, and looks on between the rays right and left.
    void Cross(int e, FlatPoint A, FlatPoint B, FlatPoint right, FlatPoint left) {
        const int t = mesh_.edges[e].TE;
        if (t == -1) return;
        const int n = mesh_.edges[t].NE;
        const int p = mesh_.edges[n].NE;
        const int face = std::min({t, n, p});
        if (isCrossed_[face]) return;
        const int a = Start(n);
        const int b = Start(t);
        const int c = Start(p);
        const double base = Side(a, b);
        const double along = (base * base + Side(a, c) * Side(a, c) - Side(b, c) * Side(b, c)) / (2.0 * base);
        const double height = std::sqrt(std::max(0.0, Side(a, c) * Side(a, c) - along * along));
        const FlatPoint u = Unit(B - A);
        const FlatPoint C = A + u * along + FlatPoint{u.y, -u.x} * height;
        const bool isLeftOfRight = KM::Cross(right, C) >= -1e-12;
        const bool isRightOfLeft = KM::Cross(C, left) >= -1e-12;
        if (isLeftOfRight && isRightOfLeft) See(c, Length(C));
        isCrossed_[face] = true;
        if (isLeftOfRight) Cross(n, A, C, right, isRightOfLeft ? C : left);
        if (isRightOfLeft) Cross(p, C, B, isLeftOfRight ? C : right, left);
        isCrossed_[face] = false;
    }

    const PIN& mesh_;
    std::vector<bool> isCrossed_;  // by the lowest edge of a face
    std::vector<std::vector<double>> direct_;
    int source_ = 0;
};

}  // namespace KM::Test
