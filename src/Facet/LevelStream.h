#pragma once

#include <cstdint>
#include <vector>

#include "Facet/HostRecords.h"
#include "Mesh/Core/Pin.h"

namespace KM {

/// The words of a level's header in the stream.
inline constexpr int LevelHeader = 3;

/// A level whose strips are words of the stream already: what a `KsLod` holds, without an object for each strip.
struct FlatLod {
    std::vector<std::int32_t> strips;  ///< per strip the number of its nodes and the nodes, as they are to be read
    double tolerance = 0.0;
    std::int32_t size = 0;  ///< words of this level in the stream
    std::int32_t stripCount = 0;
};

/// The mesh as it stands as a level; the same strips in the same order as `BuildStrips` gives.
FlatLod CutLevel(const PIN& mesh, double tolerance);

/// As `LodsToTRI`.
KsLodsTRI FlattenLevels(const std::vector<FlatLod>& lods, int size);

}  // namespace KM
