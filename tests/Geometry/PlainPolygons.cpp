#include "Geometry/PlainPolygons.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <list>

#include "Geometry/Segments.h"

namespace KM::Test {
namespace {

using P = TPoint<double>;

struct Entry {
    int place;
    P p;
};
using Ring = std::list<Entry>;
using Cursor = Ring::iterator;

Cursor After(Ring& ring, Cursor at) { return ++at == ring.end() ? ring.begin() : at; }

double CrossAt(const P& A, const P& B, const P& C) { return (A.X - B.X) * (C.Y - B.Y) - (A.Y - B.Y) * (C.X - B.X); }

bool PointInTriangle(const P& V, const P& A, const P& B, const P& C) {
    const double c1 = (V.X - A.X) * (B.Y - A.Y) - (V.Y - A.Y) * (B.X - A.X);
    if (c1 > 0) return false;
    const double c2 = (V.X - C.X) * (C.Y - B.Y) - (V.Y - C.Y) * (C.X - B.X);
    if (c2 > 0) return false;
    const double c3 = (V.X - C.X) * (A.Y - C.Y) - (V.Y - C.Y) * (A.X - C.X);
    if (c3 >= 0) return false;
    return true;
}

bool IsBlocked(Ring& ring, Cursor a, Cursor b, Cursor c) {
    for (Cursor v = After(ring, c); v != a; v = After(ring, v))
        if (PointInTriangle(v->p, a->p, b->p, c->p)) return true;
    return false;
}

}  // namespace

void PlainTriangulateConcavePolygon(const std::vector<P>& polygon, std::vector<std::vector<int>>& triangles) {
    std::vector<P> copy = polygon;
    const int n = static_cast<int>(copy.size());
    double s = 0.0;
    for (int i = 0; i < n; ++i) {
        const P& p = copy[i];
        const P& q = copy[(i + 1) % n];
        s += (q.X - p.X) * (q.Y + p.Y);
    }
    const bool isReversed = s > 0.0;
    if (isReversed) std::reverse(copy.begin(), copy.end());
    if (n < 3) return;

    Ring ring;
    for (int i = 0; i < n; ++i) ring.push_back({i, copy[i]});
    const auto output = [&](Cursor a, Cursor b, Cursor c) {
        const auto place = [&](Cursor x) { return isReversed ? n - 1 - x->place : x->place; };
        triangles.push_back({place(a), place(b), place(c)});
    };

    Cursor cursor = ring.begin();
    std::size_t before = 0;
    while (true) {
        if (cursor == ring.begin()) {
            if (ring.size() == before) break;
            before = ring.size();
        }
        const Cursor b = After(ring, cursor);
        const Cursor c = After(ring, b);
        if (std::fabs(CrossAt(cursor->p, b->p, c->p)) < 1e-7) {
            output(cursor, b, c);
            ring.erase(b);
            cursor = c;
            if (ring.size() < 3) return;
        } else {
            cursor = b;
        }
    }

    before = 0;
    while (ring.size() >= 3) {
        if (cursor == ring.begin()) {
            if (ring.size() == before) break;
            before = ring.size();
        }
        const Cursor b = After(ring, cursor);
        const Cursor c = After(ring, b);
        if (CrossAt(cursor->p, b->p, c->p) > 0 || IsBlocked(ring, cursor, b, c)) {
            cursor = b;
        } else {
            output(cursor, b, c);
            ring.erase(b);
        }
    }
}

bool PlainMakePolygonNonSelfIntersecting(const std::vector<P>& polygon, std::vector<P>& result) {
    result.clear();
    if (polygon.empty()) return false;
    const auto lengthSquared = [](const P& a, const P& b) {
        return (b.X - a.X) * (b.X - a.X) + (b.Y - a.Y) * (b.Y - a.Y);
    };
    bool isChanged = false;
    const std::size_t n = polygon.size();
    result.push_back(polygon[0]);
    P prev = polygon[0];
    for (std::size_t i = 1; i <= n; ++i) {
        const P cur = polygon[i == n ? 0 : i];
        if (result.size() > 2 && lengthSquared(prev, cur) > 1e-14)
            for (std::size_t j = 0; j + 2 < result.size(); ++j) {
                if (lengthSquared(result[j], result[j + 1]) < 1e-14) continue;
                double t = 0.0;
                double u = 0.0;
                if (!IntSegmSegm(t, u, prev, cur, result[j], result[j + 1])) continue;
                result.resize(j + 1);
                result.push_back(prev + (cur - prev) * t);
                isChanged = true;
                break;
            }
        result.push_back(cur);
        prev = cur;
    }
    return isChanged;
}

}  // namespace KM::Test
