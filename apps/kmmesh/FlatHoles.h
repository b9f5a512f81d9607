#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM::Tool {

/// Fills holes whose border is flat within their plane: the outline is cut into triangles there, so that none folds over,
/// as one that is made corner by corner in space can do. A hole whose border is not flat stays as it is, and so does what
/// cannot be cut. Linear in the mesh, n log n for a hole of n edges.
///
/// @param holes  borders as `OrphanLoop` gives them
class FlatHoles {
public:
    explicit FlatHoles(PIN& mesh) : mesh_(mesh), seen_(mesh.points.size()) {}

    void Fill(const std::vector<int>& hole);

private:
    PIN& mesh_;
    std::vector<TPoint<double>> seen_;  ///< the nodes of the present hole as seen at right angles to its plane
};

}  // namespace KM::Tool
