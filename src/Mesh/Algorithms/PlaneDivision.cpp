#include "Mesh/Algorithms/PlaneDivision.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "Geometry/Plane.h"
#include "Mesh/Algorithms/CutTriangles.h"
#include "Mesh/Algorithms/MeshView.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/FanWalk.h"
#include "Mesh/Core/PreviousEdges.h"

namespace KM {
namespace {

/// Two tolerances, on purpose: the narrow one notices a touch, the wide one catches the new nodes, which are not quite on
/// the plane.
constexpr double TouchLimit = 1e-7;
constexpr double OnPlaneLimit = 1e-5;

// What is known of a node, in one byte: all questions about an edge are asked of a table that stays in the cache. A node on
// neither side is on the plane, and so is one whose distance is no number.
using Flags = unsigned char;
constexpr Flags IsBelow = 1;
constexpr Flags IsAbove = 2;
constexpr Flags IsNegative = 4;
constexpr Flags IsPositive = 8;
constexpr Flags IsTouching = 16;

Flags FlagsOf(double distance) {
    int flags = 0;
    if (distance <= -OnPlaneLimit) flags |= IsBelow;
    if (distance >= OnPlaneLimit) flags |= IsAbove;
    if (distance < 0.0) flags |= IsNegative;
    if (distance > 0.0) flags |= IsPositive;
    if (std::fabs(distance) < TouchLimit) flags |= IsTouching;
    return static_cast<Flags>(flags);
}

/// The part and the number of an edge in it: twice the number, and 1 for the part above.
using Place = std::uint32_t;
constexpr Place Nowhere = UINT32_MAX;

int NumberIn(std::uint32_t part, Place place) {
    return (place & 1u) == part && place != Nowhere ? static_cast<int>(place >> 1) : -1;
}

/// What is known of the first three corners on the loop of an alive edge, together; -1 if one of the links or nodes does not
/// exist.
int FlagsOfCorners(const MeshView& mesh, const Flags* flags, int edge) {
    const int next = mesh.edges[edge].NE;
    if (!mesh.IsEdge(next)) return -1;
    const int third = mesh.edges[next].NE;
    if (!mesh.IsEdge(third)) return -1;
    const int a = mesh.edges[edge].P0;
    const int b = mesh.edges[next].P0;
    const int c = mesh.edges[third].P0;
    if (!mesh.IsNode(a) || !mesh.IsNode(b) || !mesh.IsNode(c)) return -1;
    return flags[a] | flags[b] | flags[c];
}

class Division {
public:
    Division(const PIN& mesh, const Plane& plane) : mesh_(mesh), plane_(plane), cut_(mesh) {}

    /// Looks for edges to split, and for flaws. False if there is nothing to divide, or no way to.
    bool Examine();
    void Split();
    void AppendTo(PIN& below, PIN& above);

private:
    struct Parts {
        std::array<PIN*, 2> meshes;
        std::vector<std::array<int, 2>> nodes;  // by node of the mesh that is divided: its numbers in both, or -1
    };

    void ClassifyNodes();
    bool ExamineCut(int edge, int third);
    bool HasTrueTwin(int edge) const;
    void AppendNodes(Parts& parts) const;
    void AppendNode(Parts& parts, const TPoint<double>& p) const;
    void PlaceEdges(Parts& parts);
    void AppendEdges(Parts& parts);

    /// The part that an edge of `mesh` belongs to, be it the whole mesh or the strip, whose numbers `flagsOf(node)` takes.
    template <class FlagsOfNode>
    static Place PartOf(const PIN& mesh, int edge, PreviousEdges<PIN>& previous, FlagsOfNode flagsOf) {
        int ends = flagsOf(mesh.edges[edge].P0) | flagsOf(mesh.edges[mesh.edges[edge].NE].P0);
        if ((ends & (IsBelow | IsAbove)) == 0) {
            const int before = previous.Of(edge);
            if (before != -1) ends = flagsOf(mesh.edges[before].P0);
        }
        return PartAt(ends);
    }
    Place& PlaceAt(int edge) {
        const std::size_t e = static_cast<std::size_t>(edge);
        return e < mesh_.edges.size() ? places_[e] : newPlaces_[e - mesh_.edges.size()];
    }
    static Place PartAt(int flags) { return (flags & IsBelow) != 0 ? 0 : 1; }

    const PIN& mesh_;
    const Plane plane_;
    CutTriangles cut_;
    std::vector<Flags> flags_;         // by node, new ones included
    std::unique_ptr<Place[]> places_;  // by edge: the part alone, until all splits are made
    std::vector<Place> newPlaces_;     // the same for the edges that splits have made
};

void Division::ClassifyNodes() {
    flags_.reserve(mesh_.points.size());
    for (const TPoint<double>& p : mesh_.points) flags_.push_back(FlagsOf(plane_.Dist(p)));
}

bool Division::Examine() {
    ClassifyNodes();
    const MeshView mesh(mesh_);
    const Flags* flags = flags_.data();
    const auto flagsOf = [&](int node) -> int { return mesh.IsNode(node) ? flags[node] : 0; };
    PreviousEdges<PIN> previous(mesh_);
    places_ = std::make_unique_for_overwrite<Place[]>(mesh.edgeCount);
    Place* places = places_.get();
    int met = 0;
    for (int e = 0; mesh.IsEdge(e); ++e) {
        places[e] = Nowhere;
        if (IsDead(mesh.edges[e])) continue;
        const int corners = FlagsOfCorners(mesh, flags, e);
        if (corners == -1) return false;
        met |= corners;
        const int third = mesh.edges[mesh.edges[e].NE].NE;
        const bool isCut = (corners & (IsNegative | IsPositive)) == (IsNegative | IsPositive);
        if (isCut && !ExamineCut(e, third)) return false;
        // A triangle that is not split has no corners on both sides, so any of them speaks for its three edges.
        if (mesh.edges[third].NE == e) places[e] = PartAt(corners);
        else places[e] = PartOf(mesh_, e, previous, flagsOf);
    }
    return cut_.SplitCount() != 0 || (met & IsTouching) != 0;
}

/// Takes note of an edge of a triangle with corners on both sides. False if it has to be split and cannot be.
bool Division::ExamineCut(int edge, int third) {
    const bool isTriangle = mesh_.edges[third].NE == edge && third != edge;
    const TPoint<double> A = mesh_.points[mesh_.edges[edge].P0];
    const TPoint<double> B = mesh_.points[EndNode(mesh_, edge)];
    const double dA = plane_.Dist(A);
    const double dB = plane_.Dist(B);
    if (isTriangle) cut_.AddEdge(edge);
    // The product decides, not the signs: so close to the plane that it is 0, both ends are on it.
    if (!(dB * dA < 0.0)) return true;

    const int twin = mesh_.edges[edge].TE;
    if (!isTriangle || (IsEdge(mesh_, twin) && !HasTrueTwin(edge))) return false;
    if (!IsEdge(mesh_, twin) || edge < twin) cut_.AddSplit(edge, A + (B - A) * dA / (dA - dB));
    return true;
}

/// True if the twin runs the other way, on another loop.
bool Division::HasTrueTwin(int edge) const {
    const int twin = mesh_.edges[edge].TE;
    const int next = mesh_.edges[edge].NE;
    return AreTwins(mesh_, edge, twin) && twin != next && mesh_.edges[next].NE != twin;
}

void Division::Split() {
    cut_.Split();
    const std::vector<TPoint<double>>& points = cut_.Strip().points;
    for (std::size_t k = points.size() - cut_.SplitCount(); k < points.size(); ++k)
        flags_.push_back(FlagsOf(plane_.Dist(points[k])));
}

void Division::AppendTo(PIN& below, PIN& above) {
    Parts parts{{&below, &above}, {}};
    AppendNodes(parts);
    PlaceEdges(parts);
    AppendEdges(parts);
}

void Division::AppendNodes(Parts& parts) const {
    std::array<std::size_t, 2> counts{parts.meshes[0]->points.size(), parts.meshes[1]->points.size()};
    for (const Flags flags : flags_) {
        counts[0] += (flags & IsAbove) == 0;
        counts[1] += (flags & IsBelow) == 0;
    }
    for (int part = 0; part < 2; ++part) parts.meshes[part]->points.reserve(counts[part]);
    parts.nodes.reserve(flags_.size());

    for (const TPoint<double>& p : mesh_.points) AppendNode(parts, p);
    const std::vector<TPoint<double>>& points = cut_.Strip().points;
    for (std::size_t k = points.size() - cut_.SplitCount(); k < points.size(); ++k) AppendNode(parts, points[k]);
}

void Division::AppendNode(Parts& parts, const TPoint<double>& p) const {
    const Flags flags = flags_[parts.nodes.size()];
    std::array<int, 2> numbers{-1, -1};
    for (int part = 0; part < 2; ++part) {
        if ((flags & (part == 0 ? IsAbove : IsBelow)) != 0) continue;
        numbers[part] = static_cast<int>(parts.meshes[part]->points.size());
        parts.meshes[part]->points.push_back(p);
    }
    parts.nodes.push_back(numbers);
}

void Division::PlaceEdges(Parts& parts) {
    Place below = static_cast<Place>(parts.meshes[0]->edges.size());
    Place above = static_cast<Place>(parts.meshes[1]->edges.size());
    // No branch, nor a count in memory: of a shuffled mesh the next edge can be on either side.
    const auto next = [&](Place part) {
        const Place place = 2 * (part == 0 ? below : above) + part;
        below += 1 - part;
        above += part;
        return place;
    };
    const PIN& strip = cut_.Strip();
    PreviousEdges<PIN> previous(strip);
    const auto flagsOf = [&](int node) -> int { return flags_[cut_.NodeNumber(node)]; };
    newPlaces_.resize(static_cast<std::size_t>(cut_.NewEdgeCount()));
    cut_.ForEachEdge(
        [&, places = places_.get()](int e) {
            if (places[e] != Nowhere) places[e] = next(places[e]);
        },
        [&](int k) { PlaceAt(cut_.EdgeNumber(k)) = next(PartOf(strip, k, previous, flagsOf)); });
    parts.meshes[0]->edges.reserve(below);
    parts.meshes[1]->edges.reserve(above);
}

void Division::AppendEdges(Parts& parts) {
    // Rebuilt before and continued below, so that nobody has to read the new edges once more.
    for (PIN* mesh : parts.meshes) RebuildNodeEdges(*mesh);
    const std::array<int, 2>* nodes = parts.nodes.data();
    std::vector<Edge>* const edges[] = {&parts.meshes[0]->edges, &parts.meshes[1]->edges};
    std::int32_t* const nodeEdges[] = {parts.meshes[0]->p2e.data(), parts.meshes[1]->p2e.data()};
    const auto append = [&](Place place, Place next, Place twin, int node) {
        const Place part = place & 1u;
        const int start = nodes[node][part];
        if (start != -1) nodeEdges[part][start] = NumberIn(part, place);
        edges[part]->push_back({NumberIn(part, next), NumberIn(part, twin), start});
    };
    cut_.ForEachEdge(
        [&, old = mesh_.edges.data(), count = mesh_.edges.size(), places = places_.get()](int e) {
            if (places[e] == Nowhere) return;
            const Place twin = static_cast<std::size_t>(old[e].TE) < count ? places[old[e].TE] : Nowhere;
            append(places[e], places[old[e].NE], twin, old[e].P0);
        },
        [&](int k) {
            const Edge edge = cut_.Record(k);
            const Place twin = edge.TE != -1 ? PlaceAt(edge.TE) : Nowhere;
            append(PlaceAt(cut_.EdgeNumber(k)), PlaceAt(edge.NE), twin, edge.P0);
        });
}

TPoint<double> PointFrom(const double* xyz) { return {xyz[0], xyz[1], xyz[2]}; }

}  // namespace

int PlnDivMesh(const PIN& mesh, const double* point, const double* normal, PIN& below, PIN& above) {
    if (mesh.edges.empty() || mesh.points.empty()) return 1;
    if (point == nullptr || normal == nullptr || &below == &above) return 1;
    if (&below == &mesh || &above == &mesh) {
        const PIN copy = mesh;  // the parts grow while the mesh is read
        return PlnDivMesh(copy, point, normal, below, above);
    }
    Division division(mesh, Plane(PointFrom(normal), PointFrom(point)));
    if (!division.Examine()) return 1;
    division.Split();
    division.AppendTo(below, above);
    return 0;
}

}  // namespace KM
