#include "Geometry/PointsToTriangles.h"

#include <limits>
#include <string>

#include "Geometry/Front.h"
#include "Utils/U_App/Progress.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM::PointsToTrianglesHelper {

void Tesselate3D(std::vector<int>& triangles, const std::vector<TPoint<double>>& points,
                 const std::vector<std::vector<int>>& neighbours, int) {
    Progress::Auto progress("Tesselate");
    if (points.size() > std::numeric_limits<int>::max()) return;
    Front front(triangles, points, neighbours);
    for (int node = 0; node < static_cast<int>(points.size()); ++node) {
        if (front.IsUsed(node)) continue;
        Verbose::WriteMessage_1(Verbose::EMessageType::Info, "New start for node: " + std::to_string(node));
        if (front.HasNeighbours(node)) {
            front.GrowFrom(node, progress);
        } else {
            front.Use(node);
        }
    }
}

}  // namespace KM::PointsToTrianglesHelper
