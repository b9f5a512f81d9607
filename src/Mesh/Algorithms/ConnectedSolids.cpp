#include "Mesh/Algorithms/ConnectedSolids.h"

#include <cstddef>
#include <utility>

#include "Mesh/Core/SafeLinks.h"

namespace KM {
namespace {

class SolidWalk {
public:
    explicit SolidWalk(const PIN& mesh) : mesh_(mesh), isVisited_(mesh.edges.size(), 0) {}

    bool IsVisited(int edge) const { return isVisited_[edge] != 0; }

    /// All edges that are met from `first`.
    std::vector<int> Collect(int first) {
        found_.clear();
        // Each pair of twins brings one triangle, and so three edges, to the list; there is room for one solid that is all.
        found_.reserve(mesh_.edges.size() + mesh_.edges.size() / 2 + 3);
        toVisit_.push_back(first);
        while (!toVisit_.empty()) {
            const int edge = toVisit_.back();
            toVisit_.pop_back();
            // No look at the flag: who was put on the stack twice is listed twice, and sizes of solids count on that.
            VisitTriangle(edge);
        }
        // A list of a thousandth of the mesh must not keep room for all of it.
        if (found_.size() >= found_.capacity() / 2) return std::exchange(found_, {});
        return found_;
    }

private:
    void VisitTriangle(int edge) {
        for (int corner = 0, e = edge; corner < 3 && IsAliveEdge(mesh_, e); ++corner, e = mesh_.edges[e].NE) {
            const int twin = mesh_.edges[e].TE;
            if (IsAliveEdge(mesh_, twin) && !isVisited_[twin]) toVisit_.push_back(twin);
            isVisited_[e] = 1;
            found_.push_back(e);
        }
    }

    const PIN& mesh_;
    std::vector<char> isVisited_;
    std::vector<int> toVisit_;
    std::vector<int> found_;
};

}  // namespace

void CollectSolids(const PIN& mesh, std::vector<std::vector<int>>& solids) {
    SolidWalk walk(mesh);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if (!walk.IsVisited(e) && !IsDead(mesh.edges[e])) solids.push_back(walk.Collect(e));
}

}  // namespace KM
