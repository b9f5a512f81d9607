#include "Mesh/Algorithms/Decimation.h"

#include <cmath>
#include <cstddef>
#include <vector>

#include "Geometry/Plane.h"
#include "InnerFan.h"
#include "Mesh/Algorithms/EdgeSwaps.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Editing/NodeRemover.h"
#include "Utils/U_App/Progress.h"
#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

/// How far edges at a node may reach, in tolerances, so that it can go.
constexpr double Reach = 100.0;

/// A new diagonal is to be a tenth shorter, or the swap is not worth it.
constexpr double SwapRatio = 0.9;

/// Each test asks what holds a node back. So what is no number holds none back.
class FlatNodes {
public:
    FlatNodes(PIN& mesh, double tolerance)
        : mesh_(mesh), tolerance_(tolerance), longestSquared_(tolerance * tolerance * Reach * Reach), remover_(mesh) {}

    /// Takes a node out, if it is one to go.
    bool Remove(int node) {
        return CollectInnerFan(mesh_, node, fan_) && HasNodes() && !HasLongEdge() && !IsOffSurface(node) &&
               remover_.Remove(node, fan_);
    }

private:
    int EndOf(const Surroundings& face) const { return mesh_.edges[face.ne].P0; }
    const TPoint<double>& EndPoint(const Surroundings& face) const { return mesh_.points[EndOf(face)]; }

    /// A removal moves one fan of the last node only, so edges of another one can name a node that is no more.
    bool HasNodes() const {
        for (const Surroundings& face : fan_)
            if (!IsNode(mesh_, mesh_.edges[face.e].P0) || !IsNode(mesh_, EndOf(face))) return false;
        return true;
    }

    /// Comes first, as it costs less than planes.
    bool HasLongEdge() const {
        for (const Surroundings& face : fan_)
            if (LengthSquared(EndPoint(face) - mesh_.points[mesh_.edges[face.e].P0]) > longestSquared_) return true;
        return false;
    }

    bool IsOffSurface(int node) const {
        const TPoint<double>& point = mesh_.points[node];
        const TPoint<double>& first = EndPoint(fan_[0]);
        for (std::size_t k = 1; k + 1 < fan_.size(); ++k) {
            const Plane plane(first, EndPoint(fan_[k]), EndPoint(fan_[k + 1]));
            if (std::fabs(plane.Dist(point)) > tolerance_) return true;
        }
        return false;
    }

    PIN& mesh_;
    double tolerance_;
    double longestSquared_;
    NodeRemover remover_;
    std::vector<Surroundings> fan_;
};

int NodeCount(const PIN& mesh) { return static_cast<int>(mesh.points.size()); }

void RemoveFlatNodes(PIN& mesh, double tolerance, Progress::Auto& progress) {
    // The chords of a removal come before the dead records go. Without this the vector would double for the first ones.
    constexpr std::size_t roomForChords = 256;
    mesh.edges.reserve(mesh.edges.size() + roomForChords);
    FlatNodes nodes(mesh, tolerance);
    for (int n = 0; n < NodeCount(mesh);) {
        progress(n, NodeCount(mesh));
        // Another node has come into the slot of one that goes.
        if (!nodes.Remove(n)) ++n;
    }
}

bool IsCollapsed(const PIN& mesh, int e) {
    const Edge& edge = mesh.edges[e];
    return !IsDead(edge) && IsEdge(mesh, edge.TE) && mesh.edges[edge.TE].P0 == edge.P0;
}

}  // namespace

void DecimateNodes(PIN& mesh, double tolerance, TPinManipulationVisitor<TPoint<double>>& visitor) {
    Progress::Auto progress("DecimateNodes");
    Compact(mesh, visitor);
    const double before = static_cast<double>(mesh.edges.size());
    try {
        RemoveFlatNodes(mesh, tolerance, progress);
    } catch (...) {
        // Who stops the work is to have a mesh without edges of nodes that are no more.
        Compact(mesh, visitor);
        throw;
    }
    Compact(mesh, visitor);
    const double percent = (1.0 - static_cast<double>(mesh.edges.size()) / before) * 100.0;
    Verbose::WriteMessage_1(Verbose::EMessageType::Info, "Removing: " + NumberText(percent) + "[%] Triangles");
}

void Decimate(PIN& mesh, double tolerance, TPinManipulationVisitor<TPoint<double>>& visitor) {
    const Verbose::Scope scope("Decimate");
    for (int e = 0; IsEdge(mesh, e); ++e)
        if (IsCollapsed(mesh, e)) DeleteTriangle(mesh, e);
    Compact(mesh, visitor);
    for (int i = 0; i < 3; ++i) SwapEdges(mesh, tolerance, SwapRatio);
}

}  // namespace KM
