#include "Mesh/Editing/Faces.h"

#include <utility>

#include "Mesh/Core/PreviousEdges.h"
#include "Mesh/Editing/StartPoints.h"

namespace KM {

void PinToFaces(const PIN& mesh, std::vector<std::vector<TPoint<double>>>& faces) {
    faces.clear();
    faces.reserve(mesh.edges.size());
    PreviousEdges<PIN> previous(mesh);
    // That a triangle was listed before is no reason to leave it out: callers expect it once for each of its edges.
    for (int e = 0; IsEdge(mesh, e); ++e) {
        if (IsDead(mesh.edges[e])) continue;
        const int pe = previous.Of(e);
        if (pe == -1) continue;
        const int corners[] = {e, mesh.edges[e].NE, pe};
        std::vector<TPoint<double>> face = StartPoints(mesh, corners);
        if (!face.empty()) faces.push_back(std::move(face));
    }
}

}  // namespace KM
