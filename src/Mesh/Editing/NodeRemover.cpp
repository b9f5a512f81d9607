#include "Mesh/Editing/NodeRemover.h"

#include <algorithm>

#include "Geometry/ClampedAngle.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Editing/FillWithFan.h"
#include "Mesh/Editing/Records.h"
#include "Utils/U_Debug/Verbose.h"

// The faces round one node, each by its edge e that starts at the node: ne lies on the ring, and pe comes back to the
// node. The edge e of one face is the twin of pe in the one before it.

namespace KM {
namespace {

/// Coarser than what counts as zero elsewhere. A length that is no number gives no direction.
bool HasNoDirection(double length) { return !(length > 1e-8); }

bool Refuse(const char* why) {
    Verbose::WriteMessage_1(Verbose::EMessageType::Error, why);
    return false;
}

}  // namespace

bool NodeRemover::Remove(int node, Fan& fan) {
    // Compaction of a node needs every entry.
    if (mesh_.p2e.size() != mesh_.points.size() || fan.size() < 3) return false;
    std::rotate(fan.begin(), fan.begin() + SharpestCorner(fan), fan.end());
    // Faces of any length come so far: a boundary is told whatever lies at it.
    if (!IsClosed(node, fan) || !AreTriangles(fan) || IsFolded(fan)) return false;
    FillRing(fan);
    Compact(node, fan);
    return true;
}

/// On a closed fan the ring edge of one triangle starts at the node where the ring edge of the next one ends; there
/// the two make the angle. The first of equal ones counts.
std::ptrdiff_t NodeRemover::SharpestCorner(const Fan& fan) const {
    std::size_t sharpest = 0;
    double best = 1e10;
    for (std::size_t i = 0; i < fan.size(); ++i) {
        const Surroundings& one = fan[i];
        const Surroundings& next = fan[i + 1 < fan.size() ? i + 1 : 0];
        const double angle = ClampedAngle(StartPoint(one.ne) - StartPoint(Third(one)),
                                          StartPoint(Third(next)) - StartPoint(next.ne), HasNoDirection);
        if (angle < best) {
            best = angle;
            sharpest = i;
        }
    }
    return static_cast<std::ptrdiff_t>(sharpest);
}

/// Logs what it finds, and so must come before the first change.
bool NodeRemover::IsClosed(int node, const Fan& fan) const {
    for (const Surroundings& at : fan) {
        if (IsOrphan(mesh_, at.e)) return Refuse("Found orphan start edge in RemoveNode!");
        if (IsOrphan(mesh_, at.pe)) return Refuse("Found orphan end edge in RemoveNode!");
        if (StartOf(at.e) != node) return Refuse("Found start edge that doesn't have correct starting point!");
    }
    // Links that lead nowhere end the walk round a node just as orphans do.
    for (std::size_t i = 0; i < fan.size(); ++i)
        if (mesh_.edges[fan[i + 1 < fan.size() ? i + 1 : 0].e].TE != fan[i].pe) return false;
    return true;
}

bool NodeRemover::AreTriangles(const Fan& fan) const {
    return std::all_of(fan.begin(), fan.end(),
                       [&](const Surroundings& face) { return Third(face) == face.pe && face.ne != face.e; });
}

/// True if an edge plays two parts; then two faces are one, and its lowest edge tells it.
bool NodeRemover::IsFolded(const Fan& fan) {
    faces_.clear();
    for (const auto& [e, ne, pe] : fan) faces_.push_back(std::min({e, ne, pe}));
    std::sort(faces_.begin(), faces_.end());
    return std::adjacent_find(faces_.begin(), faces_.end()) != faces_.end();
}

void NodeRemover::FillRing(const Fan& fan) {
    ring_.clear();
    for (const Surroundings& at : fan) ring_.push_back(at.ne);
    const std::size_t leftOut = fan.size() > 3 ? fan.size() - 2 : fan.size();
    for (std::size_t k = 0; k < ring_.size(); ++k)
        // The entry of the one left out is set when the last chord, which starts there, moves into a gap.
        if (k != leftOut) NameNodeEdge(mesh_, StartOf(ring_[k]), ring_[k]);
    FillWithFan(mesh_, ring_);
}

/// One gap after the other, so that the cost does not depend on the size of the mesh.
void NodeRemover::Compact(int node, const Fan& fan) {
    VisitorOf<PIN> nobody;
    for (const Surroundings& at : fan) mesh_.edges[at.e] = mesh_.edges[at.pe] = Edge();
    for (const Surroundings& at : fan) {
        CompactEdge(mesh_, at.e, nobody);
        CompactEdge(mesh_, at.pe, nobody);
    }
    CompactNode(mesh_, node, nobody);
}

}  // namespace KM
