#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Turns every loop round. Twins stay twins. The mesh must have no dead records.
KM_API void Reverse(PIN& mesh);

/// Appends a copy of `other`, which must be compacted, with shifted indices. Equal points stay apart and no twins are
/// formed between the two. `other` may be `mesh` itself.
KM_API void Append(PIN& mesh, const PIN& other);

}  // namespace KM
