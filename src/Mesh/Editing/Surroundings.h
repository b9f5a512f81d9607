#pragma once

#include <optional>

#include "Mesh/Core/Loops.h"
#include "Mesh/Core/SafeLinks.h"

// The vocabulary of all edits. Around an edge e from A to B, with its twin t:
//
//          C
//        /   \          ne runs B to C     tn runs A to D
//      pe     ne        pe runs C to A     tp runs D to B
//      /   e   \        .
//     A ------- B
//      \   t   /
//      tn     tp
//        \   /
//          D

namespace KM {

/// An edge and its neighbours on its loop.
struct Surroundings {
    int e;
    int ne;
    int pe;

    bool Has(int edge) const { return edge == e || edge == ne || edge == pe; }
};

/// Nothing for an edge that is dead or out of range, or whose `NE` does not lead back to it.
inline std::optional<Surroundings> OnLoop(const PIN& mesh, int e) {
    const int pe = PrevEdge(mesh, e);
    if (pe == -1) return std::nullopt;
    return Surroundings{e, mesh.edges[e].NE, pe};
}

/// The same for an edge of a triangle; nothing for one of another loop.
inline std::optional<Surroundings> OnTriangle(const PIN& mesh, int e) {
    if (!IsAliveEdge(mesh, e) || mesh.edges[e].NE == e) return std::nullopt;
    const int pe = ThirdOfTriangle(mesh, e);
    if (pe == -1) return std::nullopt;
    return Surroundings{e, mesh.edges[e].NE, pe};
}

inline bool IsOrphan(const PIN& mesh, int e) { return mesh.edges[e].TE == -1; }

/// The two triangles at an edge.
struct Diamond {
    Surroundings own;
    Surroundings other;
};

/// Nothing for an orphan, and where the two sides are not two different triangles.
inline std::optional<Diamond> TrianglesAt(const PIN& mesh, int e) {
    const auto own = OnTriangle(mesh, e);
    if (!own || own->Has(mesh.edges[e].TE)) return std::nullopt;
    const auto other = OnTriangle(mesh, mesh.edges[e].TE);
    if (!other) return std::nullopt;
    return Diamond{*own, *other};
}

}  // namespace KM
