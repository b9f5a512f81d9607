#pragma once

#include <climits>
#include <random>

#include "Mesh/Core/Pin.h"

namespace KM::Test {

/// The mesh with some dead records, and with some links that lead elsewhere, out of the mesh included.
inline PIN Broken(PIN mesh, unsigned seed) {
    std::mt19937 random(seed);
    const auto anEdge = [&] { return static_cast<int>(random() % mesh.edges.size()); };
    const auto anyLink = [&] {
        const int wild[] = {-1,       -2,       INT_MIN, INT_MAX, static_cast<int>(mesh.edges.size()),
                            anEdge(), anEdge(), anEdge()};
        return wild[random() % 8];
    };
    for (int k = 0; k < 6; ++k) {
        mesh.edges[anEdge()] = Edge();
        mesh.edges[anEdge()].NE = anyLink();
        mesh.edges[anEdge()].TE = anyLink();
        if (random() % 2 == 0) mesh.edges[anEdge()].P0 = anyLink();
    }
    if (random() % 4 == 0) mesh.p2e.clear();
    return mesh;
}

}  // namespace KM::Test
