#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Closes every hole of up to `maxEdges` orphans, with triangles between the nodes that are there. The outer border of an
/// open sheet is a hole like any other.
///
/// - Of each hole the corner with the smallest circle through its three nodes is cut off first, then the best of what is
///   left; a corner whose nodes lie on a line counts ten times the length of its chord. Two edges of one loop of `NE` are
///   never a corner. Three edges get a triangle, two become twins.
/// - Where an orphan that remains meets another one that runs the opposite way between the same nodes, the two become
///   twins. The dump stream gets an "X" for each pair, and an "x" for each orphan that runs as an earlier one does.
///
/// @param maxEdges  holes with more edges stay as they are; a negative number fills all
///
/// A hole of one edge stays open, with an `Error` in the log; so does what has no corner left to cut (nodes that do not
/// exist, coordinates that are not finite, a border that is all one loop), with a `Warning`. The mesh is sound in either
/// case. `p2e` is empty afterwards, until `Compact` rebuilds it. Edges are appended and none is renumbered.
///
/// No test is made whether triangles fold over or cross. Takes time in proportion to the mesh, and n log n for a hole of n
/// edges.
KM_API void FillHoles(PIN& mesh, int maxEdges);

}  // namespace KM
