#include "Mesh/Algorithms/PlaneDivision.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "CutTriangles.h"
#include "Geometry/Plane.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/FanWalk.h"
#include "Mesh/Core/PreviousEdges.h"

namespace KM {
namespace {

/// Two tolerances, on purpose: the narrow one notices a touch, the wide one catches the new nodes, which are not quite on
/// the plane.
constexpr double TouchLimit = 1e-7;
constexpr double OnPlaneLimit = 1e-5;

// What is known of a node, in one byte: all questions about an edge are asked of a table that stays in the cache. Neither
// side is on the plane; so is a node whose distance is no number.
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
        std::unique_ptr<Place[]> edges;         // by edge of that mesh
    };

    void ClassifyNodes();
    bool ExamineCut(int edge, int third);
    bool HasTrueTwin(int edge) const;
    void AppendNodes(Parts& parts) const;
    void AppendNode(Parts& parts, const TPoint<double>& p) const;
    void PlaceEdges(Parts& parts) const;
    void AppendEdges(Parts& parts) const;

    /// The part that an edge of `mesh` belongs to, be it the whole mesh or the strip; `number` makes the node's number in
    /// the whole mesh from that in `mesh`.
    template <class Number>
    std::uint32_t PartOf(const PIN& mesh, int edge, PreviousEdges<PIN>& previous, Number number) const {
        int ends = flags_[number(mesh.edges[edge].P0)] | flags_[number(mesh.edges[mesh.edges[edge].NE].P0)];
        if ((ends & (IsBelow | IsAbove)) == 0) {
            const int before = previous.Of(edge);
            if (before != -1) ends = flags_[number(mesh.edges[before].P0)];
        }
        return (ends & IsBelow) != 0 ? 0 : 1;
    }

    const PIN& mesh_;
    const Plane plane_;
    CutTriangles cut_;
    std::vector<Flags> flags_;  // by node, new ones included
};

void Division::ClassifyNodes() {
    flags_.reserve(mesh_.points.size());
    for (const TPoint<double>& p : mesh_.points) flags_.push_back(FlagsOf(plane_.Dist(p)));
}

bool Division::Examine() {
    ClassifyNodes();
    int met = 0;
    for (int e = 0; IsEdge(mesh_, e); ++e) {
        const Edge& edge = mesh_.edges[e];
        if (IsDead(edge)) continue;
        if (!IsAliveEdge(mesh_, edge.NE)) return false;
        const Edge& next = mesh_.edges[edge.NE];
        if (!IsAliveEdge(mesh_, next.NE)) return false;
        const int c = mesh_.edges[next.NE].P0;
        if (!IsNode(mesh_, edge.P0) || !IsNode(mesh_, next.P0) || !IsNode(mesh_, c)) return false;

        met |= flags_[edge.P0];
        const int corners = flags_[edge.P0] | flags_[next.P0] | flags_[c];
        const bool isCut = (corners & IsNegative) != 0 && (corners & IsPositive) != 0;
        if (isCut && !ExamineCut(e, next.NE)) return false;
    }
    // Where no edge crosses, each is asked for a touch; and each end of an edge is the start of another one.
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
    return IsAliveEdge(mesh_, twin) && mesh_.edges[twin].TE == edge && twin != next && mesh_.edges[next].NE != twin &&
           mesh_.edges[twin].P0 == mesh_.edges[next].P0 && EndNode(mesh_, twin) == mesh_.edges[edge].P0;
}

void Division::Split() {
    cut_.Split();
    const std::vector<TPoint<double>>& points = cut_.Strip().points;
    for (std::size_t k = points.size() - cut_.SplitCount(); k < points.size(); ++k)
        flags_.push_back(FlagsOf(plane_.Dist(points[k])));
}

void Division::AppendTo(PIN& below, PIN& above) {
    Parts parts{{&below, &above}, {}, {}};
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

void Division::PlaceEdges(Parts& parts) const {
    const std::size_t count = mesh_.edges.size() + cut_.NewEdgeCount();
    parts.edges = std::make_unique_for_overwrite<Place[]>(count);
    std::array<std::size_t, 2> ends{parts.meshes[0]->edges.size(), parts.meshes[1]->edges.size()};
    const auto put = [&](int edge, std::uint32_t part) {
        parts.edges[edge] = 2 * static_cast<Place>(ends[part]++) + part;
    };
    PreviousEdges<PIN> previous(mesh_);
    PreviousEdges<PIN> previousInStrip(cut_.Strip());
    cut_.ForEachEdge(
        [&](int e) {
            if (IsDead(mesh_.edges[e])) parts.edges[e] = Nowhere;
            else put(e, PartOf(mesh_, e, previous, [](int node) { return node; }));
        },
        [&](int k) {
            const auto number = [&](int node) { return cut_.NodeNumber(node); };
            put(cut_.EdgeNumber(k), PartOf(cut_.Strip(), k, previousInStrip, number));
        });
    for (int part = 0; part < 2; ++part) parts.meshes[part]->edges.reserve(ends[part]);
}

void Division::AppendEdges(Parts& parts) const {
    // Rebuilt before and continued below, so that nobody has to read the new edges once more.
    for (PIN* mesh : parts.meshes) RebuildNodeEdges(*mesh);
    const auto append = [&](Place place, const Edge& edge) {
        const std::uint32_t part = place & 1u;
        const int node = parts.nodes[edge.P0][part];
        const int twin = edge.TE != -1 ? NumberIn(part, parts.edges[edge.TE]) : -1;
        parts.meshes[part]->edges.push_back({NumberIn(part, parts.edges[edge.NE]), twin, node});
        if (node != -1) parts.meshes[part]->p2e[node] = NumberIn(part, place);
    };
    cut_.ForEachEdge(
        [&](int e) {
            Edge edge = mesh_.edges[e];
            if (IsDead(edge)) return;
            if (!IsEdge(mesh_, edge.TE)) edge.TE = -1;
            append(parts.edges[e], edge);
        },
        [&](int k) { append(parts.edges[cut_.EdgeNumber(k)], cut_.Record(k)); });
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
