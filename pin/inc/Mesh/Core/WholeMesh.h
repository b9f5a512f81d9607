#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Turns every loop round. Twins stay twins, no index changes, and `p2e` of each node that it reaches names an edge
/// that starts there afterwards. Twice restores `NE` and `P0` of every edge. Linear time.
///
/// Made for a mesh without dead records; those, and loops that do not come round, stay as they are. A `p2e` that is
/// shorter than `points` keeps its length.
KM_API void Reverse(PIN& mesh);

/// Appends a copy of `other` with shifted indices. Equal points stay apart and no twins are formed between the two.
/// `other` may be `mesh` itself. Linear time in `other`.
///
/// `other` must be compacted: the -1 of a dead record or node is shifted like an index.
KM_API void Append(PIN& mesh, const PIN& other);

}  // namespace KM
