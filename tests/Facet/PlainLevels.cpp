#include "Facet/PlainLevels.h"

#include <cmath>
#include <deque>
#include <limits>
#include <list>
#include <map>
#include <utility>

#include "Facet/Strips.h"

namespace KM::Test {
namespace {

using P = TPoint<double>;

P Sub(P a, P b) { return P(a.X - b.X, a.Y - b.Y, a.Z - b.Z); }
P Neg(P a) { return P(-a.X, -a.Y, -a.Z); }
double Times(P a, P b) { return a.X * b.X + a.Y * b.Y + a.Z * b.Z; }
P Across(P a, P b) { return P(a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X); }
double Norm(P a) { return std::sqrt(a.X * a.X + a.Y * a.Y + a.Z * a.Z); }
P UnitOrNull(P a) {
    const double length = Norm(a);
    return length > 1e-12 ? P(a.X / length, a.Y / length, a.Z / length) : P(0, 0, 0);
}

struct PlainQuadric {
    double q[10] = {};
};

class PlainReducer {
public:
    PlainReducer(PIN& mesh, const std::vector<double>& tolerances)
        : mesh_(mesh),
          quadrics_(mesh.points.size()),
          places_(mesh.edges.size(), {-1, {}}),
          keepStart_(mesh.edges.size(), false),
          retries_(mesh.edges.size(), 0) {
        double scale = 1.0;
        for (const double tolerance : tolerances) {
            scale *= 1.3;
            thresholds_.push_back((tolerance * scale) * (tolerance * scale));
            buckets_.emplace_back();
        }
        thresholds_.push_back(1e30);
        buckets_.emplace_back();
        AccumulateQuadrics();
        PriceAll();
        FillBuckets();
    }

    void Stage(double limit) {
        std::size_t bucket = 0;
        while (bucket < buckets_.size()) {
            if (thresholds_[bucket] > limit) return;
            if (buckets_[bucket].empty()) {
                ++bucket;
                continue;
            }
            const int e = buckets_[bucket].back();
            const bool keep = keepStart_[e];
            const double penalty = Check(e, keep);
            if (penalty == 0.0) {
                const int removed = keep ? P0(NE(e)) : P0(e);
                const int survivor = keep ? P0(e) : P0(NE(e));
                for (int i = 0; i < 10; ++i) quadrics_[survivor].q[i] += quadrics_[removed].q[i];
                Collapse(e, keep);
                bucket = 0;
                continue;
            }
            TakeOut(e);
            if (retries_[e] >= 3) {
                costs_[e] += penalty;
                retries_[e] = 0;
            } else {
                ++retries_[e];
            }
            PutIn(e, BucketFor(costs_[e]));
        }
    }

private:
    int NE(int e) const { return mesh_.edges.at(e).NE; }
    int TE(int e) const { return mesh_.edges.at(e).TE; }
    int P0(int e) const { return mesh_.edges.at(e).P0; }
    int Previous(int e) const {
        int p = e;
        while (NE(p) != e) p = NE(p);
        return p;
    }
    P At(int node) const { return mesh_.points.at(node); }

    // --- quadrics

    void AddPlane(int node, P n, double d, double weight) {
        const double terms[10] = {n.X * n.X, n.X * n.Y, n.Y * n.Y, n.X * n.Z, n.Y * n.Z,
                                  n.Z * n.Z, n.X * d,   n.Y * d,   n.Z * d,   d * d};
        for (int i = 0; i < 10; ++i) quadrics_[node].q[i] += terms[i] * weight;
    }

    double Value(int node, P p) const {
        const double* q = quadrics_[node].q;
        const double sum = (q[0] * p.X + q[1] * p.Y + q[3] * p.Z) * p.X + (q[1] * p.X + q[2] * p.Y + q[4] * p.Z) * p.Y +
                           (q[3] * p.X + q[4] * p.Y + q[5] * p.Z) * p.Z + 2 * (q[6] * p.X + q[7] * p.Y + q[8] * p.Z) +
                           q[9];
        return sum < 0.0 ? 0.0 : sum;
    }

    void AccumulateQuadrics() {
        for (int i = 0; i < static_cast<int>(mesh_.edges.size()); i += 3) {
            const int nodes[3] = {P0(i), P0(NE(i)), P0(NE(NE(i)))};
            P n = Across(Sub(At(nodes[1]), At(nodes[0])), Sub(At(nodes[2]), At(nodes[0])));
            const double length = Norm(n);
            n = 5e-9 > length ? P(0, 0, 1) : P(n.X / length, n.Y / length, n.Z / length);
            const double d = -Times(n, At(nodes[0]));
            for (const int node : nodes) AddPlane(node, n, d, 1.0);
        }
        for (int e = 0; e < static_cast<int>(mesh_.edges.size()); ++e) {
            if (TE(e) != -1) continue;
            const P n = BoundaryNormal(e);
            const double d = -Times(n, At(P0(e)));
            AddPlane(P0(e), n, d, 10000.0);
            AddPlane(P0(NE(e)), n, d, 10000.0);
        }
    }

    P InPlane(int e) const {
        const P u = Sub(At(P0(NE(e))), At(P0(e)));
        const P w = Sub(At(P0(NE(NE(e)))), At(P0(e)));
        return Across(u, Across(u, w));
    }

    P BoundaryNormal(int e) const {
        const P v = InPlane(e);
        if (Norm(v) > 1e-12) return UnitOrNull(v);
        const P u = Sub(At(P0(NE(e))), At(P0(e)));
        const P w = Sub(At(P0(NE(NE(e)))), At(P0(e)));
        if (Times(u, u) < 1e-12) return UnitOrNull(Neg(w));
        if (TE(e) != -1) return Neg(UnitOrNull(InPlane(TE(e))));
        const P cb = Sub(At(P0(NE(NE(e)))), At(P0(NE(e))));
        const bool isClose = Times(cb, cb) < Times(u, u) / 10.0;
        const bool keepsSign = (!isClose && Times(w, u) > 0) || isClose;
        const int borrowed = keepsSign ? TE(Previous(e)) : TE(NE(e));
        if (borrowed == -1) return P(0, 0, 0);
        const P unit = UnitOrNull(InPlane(borrowed));
        return keepsSign ? unit : Neg(unit);
    }

    // --- costs and buckets

    void PriceAll() {
        for (int e = 0; e < static_cast<int>(mesh_.edges.size()); ++e) {
            const int start = P0(e);
            const int end = P0(NE(e));
            double cost = Value(start, At(end));
            if (TE(e) == -1) {
                const double back = Value(end, At(start));
                if (cost > back) keepStart_[e] = true;
                cost = (cost + back) * 0.5;
            }
            costs_.push_back(cost);
        }
    }

    void FillBuckets() {
        for (int e = 0; e < static_cast<int>(mesh_.edges.size()); ++e) {
            const int t = TE(e);
            if (t != -1 && !(costs_[t] > costs_[e])) continue;
            PutIn(e, BucketFor(costs_[e]));
        }
    }

    int BucketFor(double cost) const {
        for (std::size_t i = 0; i < thresholds_.size(); ++i)
            if (thresholds_[i] > cost) return static_cast<int>(i);
        return static_cast<int>(thresholds_.size()) - 1;
    }

    void PutIn(int e, int bucket) {
        buckets_[bucket].push_front(e);
        places_[e] = {bucket, buckets_[bucket].begin()};
    }

    void TakeOut(int e) {
        if (places_[e].first == -1) return;
        buckets_[places_[e].first].erase(places_[e].second);
        places_[e].first = -1;
    }

    void MoveTo(int e, int bucket) {
        retries_[e] = 0;
        if (places_[e].first == bucket) return;
        TakeOut(e);
        PutIn(e, bucket);
    }

    // --- check

    bool HeightFails(int l, P stay, P leave) const {
        const P n = BoundaryNormal(l);
        const double base = Times(n, At(P0(l)));
        const double heightOfStay = base - Times(n, stay);
        const double heightOfLeave = base - Times(n, leave);
        return heightOfStay < 0 || heightOfLeave * 0.5 > heightOfStay;
    }

    double Check(int e, bool k) const {
        if (TE(e) != -1 && !k) {
            int x = e;
            do {
                x = TE(Previous(x));
                if (x == -1) return 1e15;
            } while (x != e);
        }
        const P start = At(P0(e));
        const P end = At(P0(NE(e)));
        if (Norm(Sub(start, end)) < 1e-12) return 0.0;
        const P stay = k ? start : end;
        const P leave = k ? end : start;
        const int g = k ? TE(e) : e;
        const int h = g != -1 ? TE(Previous(g)) : -1;
        const int m = k ? e : TE(e);
        const int stop = m != -1 ? Previous(m) : -1;
        int l = h != -1 ? NE(h) : -1;
        while (l != -1 && l != stop) {
            if (HeightFails(l, stay, leave)) return 1e15;
            const int across = TE(NE(l));
            l = across != -1 ? NE(across) : -1;
        }
        if (l != -1 || stop == -1) return 0.0;
        for (int s = stop;;) {
            const int across = TE(Previous(s));
            if (across == -1) return 0.0;
            s = Previous(across);
            if (HeightFails(s, stay, leave)) return 1e15;
        }
    }

    // --- collapse

    void SetTE(int e, int value) {
        if (e != -1) mesh_.edges.at(e).TE = value;
    }

    void Collapse(int e, bool k) {
        const int e1 = NE(e), e2 = Previous(e), t = TE(e);
        const int t1 = t != -1 ? NE(t) : -1, t2 = t != -1 ? Previous(t) : -1;
        const int o1 = TE(e1) == e1 ? -1 : TE(e1);
        const int o2 = TE(e2) == e2 ? -1 : TE(e2);
        const int p1 = t == -1 || TE(t1) == t1 ? -1 : TE(t1);
        const int p2 = t == -1 || TE(t2) == t2 ? -1 : TE(t2);
        const auto dying = [&](int x) { return x == e || x == e1 || x == e2 || x == t || x == t1 || x == t2; };
        const auto alive = [&](int x) { return dying(x) ? -1 : x; };
        const int survivor = k ? P0(e) : P0(e1);

        enum { Folded, AtStart, AtEnd, Other } situation = Other;
        if (t == e2)
            situation = Folded;
        else if (t1 == o2 && t1 != -1)
            situation = AtStart;
        else if (o1 == t2 && o1 != -1)
            situation = AtEnd;
        if (situation == Folded) {
            SetTE(o1, -1);
        } else if (situation == AtStart) {
            SetTE(o1, alive(p2));
            SetTE(p2, alive(o1));
        } else if (situation == AtEnd) {
            SetTE(o2, alive(p1));
            SetTE(p1, alive(o2));
        } else {
            SetTE(o1, alive(o2));
            SetTE(o2, alive(o1));
            SetTE(p1, alive(p2));
            SetTE(p2, alive(p1));
        }

        int a = -1, b = -1;
        if (situation == AtStart && k) {
            a = o1 != -1 ? NE(o1) : -1;
            b = p2;
        } else if (situation == AtEnd && !k) {
            a = p1 != -1 ? NE(p1) : -1;
            b = o2;
        } else if (situation == Other && k) {
            a = o2 == -1 || o2 == e1 ? -1 : o2;
            b = p2 == -1 || p2 == t1 ? -1 : TE(Previous(p2));
        } else if (situation == Other) {
            a = p2 == t1 ? -1 : p2;
            b = o2 == -1 || o2 == e1 ? -1 : TE(Previous(o2));
        }

        int anchor = -1;
        if (alive(p2) != -1)
            anchor = p2;
        else if (alive(o2) != -1)
            anchor = o2;
        else if (o1 != -1 && (NE(o1) == -1 ? p1 == -1 : !dying(NE(o1))))
            anchor = NE(o1);
        else if (p1 != -1 && !dying(NE(p1)))
            anchor = NE(p1);

        for (const int x : {e2, e1, e, t2, t1, t}) {
            if (x == -1 || NE(x) == -1) continue;
            TakeOut(x);
        }
        for (const int x : {e2, e1, e, t2, t1, t})
            if (x != -1) mesh_.edges[x].NE = mesh_.edges[x].P0 = -1;
        RepriceRound(survivor, anchor, a, b);
    }

    void RepriceRound(int survivor, int anchor, int a, int b) {
        if (anchor == -1) return;
        mesh_.edges[anchor].P0 = survivor;
        Reprice(anchor, anchor == a || anchor == b);
        int x = TE(anchor) != -1 ? NE(TE(anchor)) : -1;
        bool force = (anchor == a && anchor != b) || (x != -1 && x == a);
        while (x != -1) {
            if (x == anchor) return;
            mesh_.edges[x].P0 = survivor;
            Reprice(x, force);
            if (x == b) force = false;
            x = TE(x) != -1 ? NE(TE(x)) : -1;
        }
        int last = Previous(anchor);
        x = TE(last);
        force = anchor == b || (x != -1 && x == b);
        while (x != -1) {
            mesh_.edges[x].P0 = survivor;
            Reprice(x, force);
            if (x == a) force = false;
            last = Previous(x);
            x = TE(last);
            if (x != -1 && x == b) force = true;
        }
        Reprice(last, false);
    }

    void Reprice(int e, bool force) {
        if (e == -1) return;
        const int start = P0(e), end = P0(NE(e)), t = TE(e);
        double own = Value(start, At(end));
        const double twin = force || t == -1 ? Value(end, At(start)) : costs_[t];
        if (t == -1) {
            keepStart_[e] = own > twin;
            own = (own + twin) * 0.5;
            MoveTo(e, BucketFor(own));
        } else if (twin > own) {
            TakeOut(t);
            MoveTo(e, BucketFor(own));
        } else {
            TakeOut(e);
            MoveTo(t, BucketFor(twin));
        }
        costs_[e] = own;
        if (force && t != -1) costs_[t] = twin;
    }

    PIN& mesh_;
    std::vector<PlainQuadric> quadrics_;
    std::vector<std::list<int>> buckets_;
    std::vector<double> costs_;
    std::vector<double> thresholds_;
    std::vector<std::pair<int, std::list<int>::iterator>> places_;
    std::vector<bool> keepStart_;
    std::vector<int> retries_;
};

}  // namespace

PIN PlainFacetMesh(const IndexedFacets& facets) {
    PIN mesh;
    mesh.points = facets.points;
    mesh.p2e.assign(facets.points.size(), -1);
    std::map<std::pair<int, int>, std::deque<int>> waiting;
    for (std::size_t i = 0; i + 2 < facets.triples.size(); i += 3) {
        const int node[3] = {facets.triples[i], facets.triples[i + 1], facets.triples[i + 2]};
        if (node[0] == node[1] || node[1] == node[2] || node[2] == node[0]) continue;
        const int first = static_cast<int>(mesh.edges.size());
        for (int k = 0; k < 3; ++k) {
            const int start = node[k], end = node[(k + 1) % 3];
            mesh.edges.push_back({first + (k + 1) % 3, -1, start});
            std::deque<int>& opposite = waiting[{end, start}];
            if (opposite.empty()) {
                waiting[{start, end}].push_back(first + k);
                continue;
            }
            mesh.edges[first + k].TE = opposite.front();
            mesh.edges[opposite.front()].TE = first + k;
            opposite.pop_front();
        }
    }
    return mesh;
}

std::vector<KsLod> PlainDecimatedLods(PIN& mesh, const std::vector<double>& tolerances) {
    PlainReducer reducer(mesh, tolerances);
    std::vector<KsLod> lods;
    double scale = 1.0;
    for (const double tolerance : tolerances) {
        scale *= 1.3;
        reducer.Stage((tolerance * scale) * (tolerance * scale));
        lods.emplace_back();
        lods.back().size = 3 + BuildStrips(mesh, lods.back().strips);
        lods.back().tolerance = tolerance;
    }
    return lods;
}

std::vector<std::int32_t> PlainStream(const std::vector<KsLod>& lods) {
    std::vector<std::int32_t> words;
    for (std::size_t i = 0; i < lods.size(); ++i) {
        if (i > 0 && lods[i].size == lods[i - 1].size) continue;
        const double tolerance = std::trunc(lods[i].tolerance * 100000.0);
        words.push_back(std::fabs(tolerance) < 2147483648.0 ? static_cast<std::int32_t>(tolerance) : std::numeric_limits<std::int32_t>::min());
        words.push_back(lods[i].size);
        words.push_back(static_cast<std::int32_t>(lods[i].strips.size()));
        for (const StripFan& strip : lods[i].strips) {
            words.push_back(static_cast<std::int32_t>(strip.nodes.size()));
            if (strip.kind == 2)
                words.insert(words.end(), strip.nodes.rbegin(), strip.nodes.rend());
            else
                words.insert(words.end(), strip.nodes.begin(), strip.nodes.end());
        }
    }
    return words;
}

}  // namespace KM::Test
