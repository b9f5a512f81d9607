#include "Facet/HostileFacets.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace KM::Test {
namespace {

using P = TPoint<double>;

/// mt19937 gives the same numbers everywhere; the distributions of the standard library do not.
class Dice {
public:
    explicit Dice(unsigned seed) : random_(seed) {}
    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    double Unit() { return static_cast<double>(random_()) / 4294967296.0; }
    bool OneIn(int n) { return Below(n) == 0; }
    // Braces, because the arguments of a call may be evaluated in any order.
    P Corner(int side) { return P{double(Below(side)), double(Below(side)), double(Below(side))}; }
    P Offset(double size) { return P{size * Unit(), size * Unit(), size * Unit()}; }

private:
    std::mt19937 random_;
};

IndexedFacets Tangle(Dice& dice) {
    IndexedFacets facets;
    const int nodes = 3 + dice.Below(20);
    const int side = 1 + dice.Below(6);
    for (int i = 0; i < nodes; ++i) facets.points.push_back(dice.Corner(side));
    const int count = 1 + dice.Below(60);
    for (int i = 0; i < 3 * count; ++i) facets.triples.push_back(dice.Below(nodes));
    return facets;
}

IndexedFacets Terrain(Dice& dice) {
    const int n = 2 + dice.Below(12);
    IndexedFacets facets = GridFacets(n);
    const int steps = dice.Below(4);
    for (P& p : facets.points) p.Z = steps == 0 ? dice.Unit() : dice.Below(steps) * 0.25;
    return facets;
}

IndexedFacets BaseFacets(Dice& dice) {
    switch (dice.Below(7)) {
        case 0:
            return Tangle(dice);
        case 1:
            return Terrain(dice);
        case 2:
            return SphereFacets(1 + dice.Below(8));
        case 3:
            return BumpySphereFacets(1 + dice.Below(8));
        case 4:
            return CubeFacets();
        case 5:
            return RandomFacets(static_cast<unsigned>(dice.Below(1 << 20)), 60);
        default:
            return GridFacets(1 + dice.Below(8));
    }
}

void AddTwice(IndexedFacets& facets, Dice& dice) {
    const int triangles = static_cast<int>(facets.triples.size()) / 3;
    for (int i = dice.Below(8); i > 0; --i) {
        const int from = 3 * dice.Below(triangles);
        int copy[3] = {facets.triples[from], facets.triples[from + 1], facets.triples[from + 2]};
        if (dice.OneIn(2)) std::swap(copy[0], copy[1]);
        facets.triples.insert(facets.triples.end(), copy, copy + 3);
    }
}

void DropSome(IndexedFacets& facets, Dice& dice) {
    for (int i = dice.Below(6); i > 0 && facets.triples.size() > 3; --i) {
        const auto at = facets.triples.begin() + 3 * dice.Below(static_cast<int>(facets.triples.size()) / 3);
        facets.triples.erase(at, at + 3);
    }
}

void JoinNodes(IndexedFacets& facets, Dice& dice) {
    const int nodes = static_cast<int>(facets.points.size());
    for (int i = dice.Below(4); i > 0; --i) {
        const int from = dice.Below(nodes);
        const int to = dice.Below(nodes);
        std::replace(facets.triples.begin(), facets.triples.end(), from, to);
    }
}

void MovePoints(IndexedFacets& facets, Dice& dice) {
    const int nodes = static_cast<int>(facets.points.size());
    const double tiny = std::pow(10.0, -dice.Below(16));
    for (int i = dice.Below(nodes) + 1; i > 0; --i) {
        P& p = facets.points[dice.Below(nodes)];
        const P& other = facets.points[dice.Below(nodes)];
        if (dice.OneIn(3))
            p = other;
        else if (dice.OneIn(2))
            p.X = other.X + tiny * dice.Unit();
        else
            p = p + dice.Offset(tiny);
    }
}

void PoisonPoints(IndexedFacets& facets, Dice& dice) {
    const double poison[] = {std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity(),
                             1e200,
                             -1e160,
                             1e-300};
    for (int i = 1 + dice.Below(3); i > 0; --i) {
        P& p = facets.points[dice.Below(static_cast<int>(facets.points.size()))];
        (dice.OneIn(2) ? p.X : p.Z) = poison[dice.Below(6)];
    }
}

void TurnSome(IndexedFacets& facets, Dice& dice) {
    for (std::size_t i = 0; i + 2 < facets.triples.size(); i += 3)
        if (dice.OneIn(6)) std::swap(facets.triples[i], facets.triples[i + 1]);
}

}  // namespace

IndexedFacets HostileFacets(unsigned seed) {
    Dice dice(seed);
    IndexedFacets facets = BaseFacets(dice);
    if (dice.OneIn(2)) AddTwice(facets, dice);
    if (dice.OneIn(2)) DropSome(facets, dice);
    if (dice.OneIn(3)) JoinNodes(facets, dice);
    if (dice.OneIn(3)) MovePoints(facets, dice);
    if (dice.OneIn(6)) TurnSome(facets, dice);
    if (dice.OneIn(12)) PoisonPoints(facets, dice);
    if (dice.OneIn(4))
        for (P& p : facets.points) p = p * 1e-4;
    return dice.OneIn(2) ? Shuffled(facets, seed) : facets;
}

std::vector<double> HostileTolerances(unsigned seed, double size) {
    Dice dice(seed ^ 0x5bd1e995u);
    std::vector<double> tolerances;
    const int kind = dice.Below(8);
    for (int i = 1 + dice.Below(5); i > 0; --i) tolerances.push_back(size * std::pow(10.0, -6.0 * dice.Unit()));
    if (kind < 4) std::sort(tolerances.begin(), tolerances.end());
    if (kind == 4) std::fill(tolerances.begin(), tolerances.end(), tolerances.front());
    if (kind == 5) tolerances.front() = 0.0;
    if (kind == 6) tolerances.back() *= -10.0;
    if (kind == 3) tolerances.back() *= 1000.0;
    return tolerances;
}

std::vector<KsEvent> EventsOf(const IndexedFacets& facets) {
    std::vector<KsEvent> events(facets.points.size());
    for (std::size_t i = 0; i < events.size(); ++i) {
        events[i].x = facets.points[i].X;
        events[i].y = facets.points[i].Y;
        events[i].z = facets.points[i].Z;
    }
    return events;
}

std::vector<KsShadingfacet> RecordsOf(const IndexedFacets& facets) {
    std::vector<KsShadingfacet> records(facets.triples.size() / 3);
    for (std::size_t i = 0; i < 3 * records.size(); ++i) records[i / 3].node[i % 3] = facets.triples[i];
    return records;
}

}  // namespace KM::Test
