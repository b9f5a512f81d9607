#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// An edge of a loop, and the one before it.
struct LoopPlace {
    int edge;
    int previous;
};

/// `SplitLoop` for one who knows the previous edges, which on a long loop cost a walk. Nothing is checked.
inline int AddChord(PIN& mesh, LoopPlace at1, LoopPlace at2) {
    auto& edges = mesh.edges;
    const int f1 = static_cast<int>(edges.size());
    const int f2 = f1 + 1;
    edges.insert(edges.end(), {{at1.edge, f2, edges[at2.edge].P0}, {at2.edge, f1, edges[at1.edge].P0}});
    edges[at2.previous].NE = f1;
    edges[at1.previous].NE = f2;
    return f2;
}

}  // namespace KM
