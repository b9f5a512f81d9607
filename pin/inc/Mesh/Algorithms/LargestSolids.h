#pragma once

#include "Mesh/Core/Pin.h"
#include "Mesh/Core/PinVisitor.h"

namespace KM {

/// Takes out the small solids of a mesh and keeps the large ones; then compacts, in any case. A solid is what `CollectSolids`
/// lists, and its size is the length of that list, so triangles that the walk meets again count again.
///
/// @param count    how many to keep: of solids of one size those with the higher edges. 0 keeps none; all stay if it is more
///                 than there are, or negative. But -1 stands for: all that have a twentieth of the edges of the mesh, or more.
///                 So of many small solids none may stay
/// @param visitor  hears of compaction; the records of a solid that goes are cleared without a word
/// @throws XUserAbort  if the user wants to stop, at the message; the mesh is untouched then
///
/// Logs at `Info` how many solids go and stay. With -1 that text always speaks of one that stays, and there is none if all
/// stay.
///
/// Made for compact meshes of triangles. Time of `CollectSolids`, and of a sort of the solids.
KM_API void Keep(PIN& mesh, int count, TPinManipulationVisitor<TPoint<double>>& visitor);

}  // namespace KM
