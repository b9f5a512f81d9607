#pragma once

#include <functional>

#include "Mesh/Core/Pin.h"

namespace KM {

// Finer triangulations of the same surface: new nodes lie on the edges that are there, and no node moves. Edges are appended
// and none is renumbered. Dead records are passed over.

/// Halves every edge that is longer than `maxLength`, again and again, and cuts the faces beside it into triangles.
///
/// - A round puts a node in the middle of each edge that is too long. Of a face with six edges (a triangle with three new
///   nodes) the corner that comes next is cut off first; then, of every face, one corner after the other until it is a
///   triangle. Halves and cuts that are still too long are the work of the next round.
/// - Faces that no split touches stay as they are, those of more than three edges included.
///
/// @param maxLength  in the unit of the points. Of a negative one the magnitude counts, since lengths are compared squared;
///                   NaN, infinity and magnitudes above 1e154 leave the mesh as it is
///
/// At most 100 million triangles are added. Where more are certain to be needed (always with a `maxLength` of 0, as long as
/// there is an edge with a length), nothing changes, and an `Error` goes to the log. Where that turns out on the way, the
/// refinement ends between two rounds with an `Error`; the mesh is sound then, and part of its edges still too long.
///
/// Where an edge that is too long lies on no loop, or its twin is none, nothing changes, and an `Error` names it: the faces at
/// an edge that cannot be split would be cut for ever. So it is where an edge starts at a node that does not exist, since a new
/// node would take its index.
///
/// An edge stays as long as it is when its middle is not finite. So does one whose ends differ, in the coordinates in which
/// they do, by no more than 2^-48 (some 4e-15) of the largest of them, if `maxLength` is below 4 steps from this number to the
/// next: rounding could keep the cuts beside it from getting shorter.
/// The time goes with the number of new triangles. Memory for a round is taken before it begins.
KM_API void Refine(PIN& mesh, double maxLength);

/// `Refine` for one who waits: the same mesh, bit by bit.
///
/// @param watch  is told every few milliseconds how much is done, as a fraction that never falls: a rough guess by the
///               longest edge, which can reach 1 early or end below it. What it throws ends the work and passes on; then the
///               faces at the nodes that were added are cut first, and the mesh is sound, refined in part. Must not touch the
///               mesh; is told nothing if there is nothing to refine
KM_API void WatchedRefine(PIN& mesh, double maxLength, const std::function<void(double)>& watch);

/// Divides an edge into equal parts: as few as make none longer than `step`. No face is added, so that the loops on both sides
/// grow by one edge for each new node. The new nodes come in order from the start of `edge`, which stays the first part.
///
/// @param edge  one that is dead, out of range or without its nodes, or whose links lead nowhere, is left alone
/// @param step  in the unit of the points. Nothing changes if it is negative, NaN, or not below the length of the edge
///
/// More than 100 million parts, or a length that is not finite, are refused with an `Error` in the log; so a step of 0 is.
KM_API void SampleEdge(PIN& mesh, int edge, double step);

}  // namespace KM
