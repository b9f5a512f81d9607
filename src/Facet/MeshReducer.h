#pragma once

#include <span>

#include "Facet/CollapseQueue.h"
#include "Facet/EdgeCollapse.h"
#include "Facet/EdgePrices.h"
#include "Mesh/Core/Pin.h"

namespace KM {

/// True if the mesh can be reduced: each loop is a triangle, each edge is the twin of its twin, each start node exists,
/// and no record is dead. Linear time.
bool IsReducible(const PIN& mesh);

/// Collapses edges of a mesh in stages, one for each tolerance. The mesh must be reducible, and is nobody else's
/// meanwhile.
class MeshReducer {
public:
    MeshReducer(PIN& mesh, std::span<const double> tolerances)
        : mesh_(mesh), queue_(mesh.edges.size(), tolerances), prices_(mesh, queue_) {}

    /// Collapses what is cheaper than the tolerance of `level`, as far as the shape of the triangles allows.
    void RunStage(int level);

private:
    void Collapse(int edge);
    void TurnToSurvivor(const CollapsedEdge& collapsed);
    void TurnBackward(const CollapsedEdge& collapsed);
    void Turn(int edge, int survivor, bool force);

    PIN& mesh_;
    CollapseQueue queue_;
    EdgePrices prices_;
};

}  // namespace KM
