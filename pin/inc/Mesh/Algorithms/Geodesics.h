#pragma once

#include <functional>
#include <vector>

#include "KmApi.h"
#include "Mesh/Core/Pin.h"

namespace KM {

// Distances along a compact mesh of triangles, closed or open, in the unit of its points. The mesh is not changed. A face
// that is no sound triangle counts as a hole, a link that its twin does not return as a border; nodes that do not exist
// are no sources. Whatever the mesh is, both functions end.

/// For each node the length of the shortest way on the surface from the nearest of `sources`, over the faces.
///
/// @param sources    nodes; they may be neighbours, or repeated. Without any, all distances are 0.
/// @param distances  receives one value a node. A node that nothing reaches (another piece of the surface, a dead node, a
///                   node with coordinates that are not finite) gets 0; each value is read at the edge that `p2e` names.
///
/// The exact method for polyhedra of J. Mitchell, D. Mount and C. Papadimitriou ("The Discrete Geodesic Problem") in the
/// window form of V. Surazhsky and others ("Fast Exact and Approximate Geodesics on Meshes"), with a simplified rule for
/// ways that bend at a node. The tolerance is 1e-8 in the unit of the points, so sizes should be between 1e-3 and 1e6.
/// The time a node grows with the root of the number of triangles: some tens of microseconds at ten thousand. Memory holds
/// the front of the wave, some hundred bytes a triangle.
KM_API void GeodesicDist(PIN& mesh, const std::vector<int>& sources, std::vector<double>& distances);

/// `GeodesicDist` for one who waits: the same distances, bit by bit.
///
/// @param watch  is told every few milliseconds how far from the sources the search has come, in the unit of the points.
///               What it throws ends the search and passes on, with `distances` untouched. Must not touch the mesh; an
///               empty one is told nothing
KM_API void WatchedGeodesicDist(PIN& mesh, const std::vector<int>& sources, std::vector<double>& distances,
                                const std::function<void(double)>& watch);

/// For each node the length of the shortest way along edges from `source`: never below what `GeodesicDist` gives, on fine
/// meshes up to some tens of percent above it, and hundreds of times faster.
///
/// @param distances  receives one value a node; 1e20 for a node that no way reaches, and for all if there is no such
///                   source
///
/// Of a node with two fans only the one that `p2e` leads to is left over its edges. E. Dijkstra's method.
KM_API void GeodesicDistByDijkstra(PIN& mesh, int source, std::vector<double>& distances);

}  // namespace KM
