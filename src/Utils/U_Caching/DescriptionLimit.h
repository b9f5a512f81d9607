#pragma once

#include <cstddef>

namespace KM::Caching {

/// Bytes from which on a description is made shorter than it could be: far more than anybody reads, and far less than
/// what a graph or a text that somebody else made could unfold to.
inline constexpr std::size_t DescriptionLimit = std::size_t{64} << 20;

}  // namespace KM::Caching
