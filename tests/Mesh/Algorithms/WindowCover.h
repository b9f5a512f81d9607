#pragma once

#include <cmath>
#include <sstream>
#include <string>

#include "Mesh/Algorithms/WindowLists.h"

namespace KM::Test {

/// What is wrong with the list of an edge, as text: it must be empty, or cover the edge in order and without gaps.
inline std::string FaultOfList(const WindowLists& lists, int edge, double length) {
    std::ostringstream fault;
    double reached = 0.0;
    int slot = lists.First(edge);
    if (slot == -1) return "";
    for (; slot != -1; slot = lists.Next(slot)) {
        const GeodesicWindow& w = lists.At(slot);
        if (w.edge != edge) fault << "window of edge " << w.edge << "; ";
        if (!(std::fabs(w.b0 - reached) <= 1e-9 * (1.0 + length))) fault << w.b0 << " follows " << reached << "; ";
        if (!(w.b1 >= w.b0)) fault << "ends at " << w.b1 << " before " << w.b0 << "; ";
        if (!(w.d0 >= 0.0 && w.d1 >= 0.0 && w.sigma >= 0.0)) fault << "distances " << w.d0 << ", " << w.d1 << "; ";
        reached = w.b1;
    }
    if (!(std::fabs(reached - length) <= 1e-9 * (1.0 + length))) fault << "ends at " << reached << " of " << length;
    return fault.str();
}

inline std::string FaultOfLists(const WindowLists& lists, const SurfaceEdges& surface) {
    for (int e = 0; e < static_cast<int>(surface.Count()); ++e) {
        const std::string fault = FaultOfList(lists, e, surface.Length(e));
        if (!fault.empty()) return "edge " + std::to_string(e) + ": " + fault;
    }
    return "";
}

}  // namespace KM::Test
