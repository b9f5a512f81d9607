#pragma once

#include "Mesh/Core/Pin.h"

namespace KM::Test {

/// Cuts up to `count` holes into a mesh of triangles, of `fewest` to `most` edges each, at least 3; where a place has no
/// room they stay smaller. They are of random, branched shapes, have no node in common, and leave other borders alone. The
/// mesh is compacted.
PIN WithHoles(PIN mesh, unsigned seed, int count, int fewest, int most);

}  // namespace KM::Test
