#pragma once

#include <cstddef>
#include <functional>
#include <span>

#include "Facet/CollapseQueue.h"
#include "Facet/EdgeCollapse.h"
#include "Facet/EdgePrices.h"
#include "Mesh/Core/Pin.h"

namespace KM {

/// True if the mesh can be reduced: each loop is a triangle, each edge is the twin of its twin, each start node exists,
/// and no record is dead. Linear time.
bool IsReducible(const PIN& mesh);

/// See `BuildWatchedLods`.
using ReductionWatch = std::function<void(double)>;

/// Collapses edges of a mesh in stages, one for each tolerance. The mesh must be reducible, and is nobody else's
/// meanwhile.
class MeshReducer {
public:
    /// @param watch  may be empty
    MeshReducer(PIN& mesh, std::span<const double> tolerances, const ReductionWatch& watch = nullptr)
        : mesh_(mesh), watch_(watch), queue_(mesh.edges.size(), tolerances), prices_(mesh, queue_) {}

    /// Collapses what is cheaper than the tolerance of `level`, as far as the shape of the triangles allows.
    ///
    /// What the watch throws passes on, between two collapses.
    void RunStage(int level);

private:
    void CountStep() {
        // So many take some milliseconds; to ask for each one would cost more than many of them.
        constexpr std::size_t between = 4096;
        if (++steps_ % between == 0 && watch_) TellWatch();
    }
    void TellWatch() const;
    void Collapse(int edge);
    void TurnToSurvivor(const CollapsedEdge& collapsed);
    void TurnBackward(const CollapsedEdge& collapsed);
    void Turn(int edge, int survivor, bool force);

    PIN& mesh_;
    ReductionWatch watch_;
    std::size_t steps_ = 0;
    std::size_t collapses_ = 0;
    CollapseQueue queue_;
    EdgePrices prices_;
};

}  // namespace KM
