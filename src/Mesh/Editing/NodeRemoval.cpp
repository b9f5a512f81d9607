#include "Mesh/Editing/NodeRemoval.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "FillWithFan.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Fans.h"
#include "Mesh/Editing/Records.h"
#include "Surroundings.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

constexpr double Pi = 3.141592653589793;
constexpr double LeastLength = 1e-8;
/// Keeps the arc cosine away from where it is steep.
constexpr double CosineLimit = 0.99999999;

double AngleBetween(const TPoint<double>& u, const TPoint<double>& v) {
    const double product = Dot(u, v);
    const double uLength = Length(u);
    const double vLength = Length(v);
    if (uLength > LeastLength && vLength > LeastLength)
        return std::acos(std::clamp(product / (uLength * vLength), -CosineLimit, CosineLimit));
    return product > 0.0 ? 0.0 : Pi;
}

/// The faces round one node, each by its edge e that starts at the node: ne lies on the ring, and pe comes back to the
/// node. The edge e of one face is the twin of pe in the one before it.
class NodeRemoval {
public:
    NodeRemoval(PIN& mesh, int node) : mesh_(mesh), node_(node) {}

    bool Run() {
        // Compaction of a node needs every entry.
        if (mesh_.p2e.size() != mesh_.points.size() || !CollectFaces()) return false;
        std::rotate(fan_.begin(), fan_.begin() + SharpestCorner(), fan_.end());
        // Faces of any length come so far: a boundary is told whatever lies at it.
        if (!IsClosed() || IsFolded() || !AreTriangles()) return false;
        FillRing();
        Compact();
        return true;
    }

private:
    bool CollectFaces() {
        const std::vector<int> edges = AllStartingEdges(mesh_, node_);
        if (edges.size() < 3) return false;
        fan_.reserve(edges.size());
        for (const int e : edges) {
            const auto face = OnLoop(mesh_, e);
            if (!face || !IsNode(mesh_, StartOf(face->ne)) || !IsNode(mesh_, StartOf(Third(*face)))) return false;
            fan_.push_back(*face);
        }
        return true;
    }

    /// The same as pe on a triangle.
    int Third(const Surroundings& face) const { return mesh_.edges[face.ne].NE; }

    int StartOf(int e) const { return mesh_.edges[e].P0; }
    const TPoint<double>& StartPoint(int e) const { return mesh_.points[StartOf(e)]; }

    /// On a closed fan the ring edge of one triangle starts at the node where the ring edge of the next one ends; there
    /// the two make the angle. The first of equal ones counts.
    std::ptrdiff_t SharpestCorner() const {
        std::size_t sharpest = 0;
        double best = 1e10;
        for (std::size_t i = 0; i < fan_.size(); ++i) {
            const Surroundings& one = fan_[i];
            const Surroundings& next = fan_[(i + 1) % fan_.size()];
            const double angle = AngleBetween(StartPoint(one.ne) - StartPoint(Third(one)),  //
                                              StartPoint(Third(next)) - StartPoint(next.ne));
            if (angle < best) {
                best = angle;
                sharpest = i;
            }
        }
        return static_cast<std::ptrdiff_t>(sharpest);
    }

    /// Logs what it finds, and so must come before the first change.
    bool IsClosed() const {
        const auto refuse = [](const char* why) {
            Verbose::WriteMessage_1(Verbose::EMessageType::Error, why);
            return false;
        };
        for (const Surroundings& at : fan_) {
            if (IsOrphan(mesh_, at.e)) return refuse("Found orphan start edge in RemoveNode!");
            if (IsOrphan(mesh_, at.pe)) return refuse("Found orphan end edge in RemoveNode!");
            if (StartOf(at.e) != node_) return refuse("Found start edge that doesn't have correct starting point!");
        }
        // Links that lead nowhere end the walk round a node just as orphans do.
        for (std::size_t i = 0; i < fan_.size(); ++i)
            if (mesh_.edges[fan_[(i + 1) % fan_.size()].e].TE != fan_[i].pe) return false;
        return true;
    }

    /// True if an edge plays two parts.
    bool IsFolded() const {
        std::vector<int> parts;
        parts.reserve(3 * fan_.size());
        for (const auto& [e, ne, pe] : fan_) parts.insert(parts.end(), {e, ne, pe});
        std::sort(parts.begin(), parts.end());
        return std::adjacent_find(parts.begin(), parts.end()) != parts.end();
    }

    bool AreTriangles() const {
        return std::all_of(fan_.begin(), fan_.end(), [&](const Surroundings& face) { return Third(face) == face.pe; });
    }

    void FillRing() {
        std::vector<int> ring;
        ring.reserve(fan_.size());
        for (const Surroundings& at : fan_) ring.push_back(at.ne);
        const std::size_t leftOut = fan_.size() > 3 ? fan_.size() - 2 : fan_.size();
        for (std::size_t k = 0; k < ring.size(); ++k)
            // The entry of the one left out is set when the last chord, which starts there, moves into a gap.
            if (k != leftOut) NameNodeEdge(mesh_, StartOf(ring[k]), ring[k]);
        FillWithFan(mesh_, ring);
    }

    /// One gap after the other, so that the cost does not depend on the size of the mesh.
    void Compact() {
        VisitorOf<PIN> nobody;
        for (const Surroundings& at : fan_) mesh_.edges[at.e] = mesh_.edges[at.pe] = Edge();
        for (const Surroundings& at : fan_) {
            CompactEdge(mesh_, at.e, nobody);
            CompactEdge(mesh_, at.pe, nobody);
        }
        CompactNode(mesh_, node_, nobody);
    }

    PIN& mesh_;
    int node_;
    std::vector<Surroundings> fan_;
};

}  // namespace

bool RemoveNode(PIN& mesh, int node) { return NodeRemoval(mesh, node).Run(); }

}  // namespace KM
