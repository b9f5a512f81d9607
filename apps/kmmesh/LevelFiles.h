#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "Facet/LevelsOfDetail.h"
#include "Mesh/Core/Pin.h"

namespace KM::Tool {

/// A level of detail that stands in the stream.
struct Level {
    int number = 0;  ///< from 1, among the tolerances
    double tolerance = 0.0;
    int words = 0;
    int strips = 0;
    std::vector<std::array<int, 3>> triangles;
};

/// The levels of a part, and the stream that a display takes.
class Levels {
public:
    Levels() = default;
    /// @param mesh        reduced by this; its points stay
    /// @param tolerances  in units of the part, ascending
    /// @param watch       see `BuildWatchedLods`
    Levels(PIN& mesh, const std::vector<double>& tolerances, const std::function<void(double)>& watch = nullptr);
    /// As `All` and `Words` gave them.
    Levels(std::vector<Level> levels, std::vector<std::int32_t> words);

    /// Without those in which nothing went since the one before.
    const std::vector<Level>& All() const { return levels_; }
    /// The stream, see `KsLodsTRI`.
    const std::vector<std::int32_t>& Words() const { return words_; }

    /// What a level file holds, all little-endian: the eight bytes "KMLODS01"; three words of 32 bits, the numbers of
    /// points, of levels and of words in the stream; three doubles a point; the words of the stream.
    std::string FileOf(const PIN& mesh) const;

private:
    std::vector<Level> levels_;
    std::vector<std::int32_t> words_;
};

}  // namespace KM::Tool
