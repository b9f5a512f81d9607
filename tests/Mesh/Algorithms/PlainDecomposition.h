#pragma once

#include <algorithm>
#include <array>
#include <vector>

#include "Geometry/Point.h"

namespace KM::Test {

using Triangle = std::array<TPoint<double>, 3>;

/// The splitting of triangles into slabs, word by word, of a model in memory, without any thought of speed.
class PlainDecomposition {
public:
    int axis = 0;
    std::vector<std::vector<Triangle>> slabs;

    PlainDecomposition(const std::vector<Triangle>& triangles, int domains, int axes, double overlap) {
        double low[3] = {1e20, 1e20, 1e20};
        double high[3] = {-1e20, -1e20, -1e20};
        for (const Triangle& t : triangles)
            for (const TPoint<double>& p : t)
                for (int k = 0; k < 3; ++k) {
                    low[k] = std::min(low[k], At(p, k));
                    high[k] = std::max(high[k], At(p, k));
                }
        double extent[3];
        for (int k = 0; k < 3; ++k) extent[k] = (axes >> k) % 2 == 1 ? high[k] - low[k] : -1e20;
        if (axes == 1 || axes == 2 || axes == 4) {
            axis = axes / 2;
        } else {
            axis = extent[0] > extent[1] ? 0 : 1;
            if (extent[2] > extent[axis]) axis = 2;
        }
        const double n = domains;
        const double ext = high[axis] - low[axis];
        slabs.resize(static_cast<std::size_t>(std::max(domains, 0)));
        for (Triangle t : triangles) {
            std::stable_sort(t.begin(), t.end(), [this](const auto& p, const auto& q) { return Level(p) < Level(q); });
            for (int i = 0; i < domains; ++i)
                Put(t, ext * (i / n) + low[axis] - overlap, ext * ((i + 1) / n) + low[axis] + overlap,
                    slabs[static_cast<std::size_t>(i)]);
        }
    }

private:
    static double At(const TPoint<double>& p, int k) { return k == 0 ? p.X : k == 1 ? p.Y : p.Z; }
    double Level(const TPoint<double>& p) const { return At(p, axis); }

    bool IsDefined(const TPoint<double>& p, const TPoint<double>& q, double v) const {
        return v > Level(p) && Level(q) >= v;
    }
    TPoint<double> X(const TPoint<double>& p, const TPoint<double>& q, double v) const {
        const double t = Level(q) == Level(p) ? 0.0 : (v - Level(p)) / (Level(q) - Level(p));
        return {p.X + (q.X - p.X) * t, p.Y + (q.Y - p.Y) * t, p.Z + (q.Z - p.Z) * t};
    }

    void Put(const Triangle& t, double lo, double hi, std::vector<Triangle>& slab) const {
        const TPoint<double>&A = t[0], &B = t[1], &C = t[2];
        if (lo > Level(C) || Level(A) > hi) return;
        if (Level(A) >= lo && hi >= Level(C)) return slab.push_back(t);
        std::vector<TPoint<double>> polygon;
        const bool acLo = IsDefined(A, C, lo), acHi = IsDefined(A, C, hi);
        const bool abLo = IsDefined(A, B, lo), abHi = IsDefined(A, B, hi);
        const bool bcLo = IsDefined(B, C, lo), bcHi = IsDefined(B, C, hi);
        if (!acLo && acHi) {
            polygon.push_back(X(A, C, hi));
            if (bcHi) polygon.insert(polygon.end(), {X(B, C, hi), B, A});
            else if (abHi) polygon.insert(polygon.end(), {X(A, B, hi), A});
        } else if (acLo && !acHi) {
            polygon.insert(polygon.end(), {X(A, C, lo), C});
            if (bcLo) polygon.push_back(X(B, C, lo));
            else if (abLo) polygon.insert(polygon.end(), {B, X(A, B, lo)});
        } else if (acLo && acHi) {
            polygon.insert(polygon.end(), {X(A, C, lo), X(A, C, hi)});
            if (bcHi) polygon.push_back(X(B, C, hi));
            else if (abHi) polygon.push_back(X(A, B, hi));
            if (lo < Level(B) && Level(B) < hi) polygon.push_back(B);
            if (bcLo) polygon.push_back(X(B, C, lo));
            else if (abLo) polygon.push_back(X(A, B, lo));
        }
        if (polygon.size() > 2 && !(polygon.front() == polygon.back())) polygon.push_back(TPoint<double>(polygon[0]));
        for (std::size_t k = 1; k + 1 < polygon.size(); ++k) slab.push_back({polygon[0], polygon[k], polygon[k + 1]});
    }
};

}  // namespace KM::Test
