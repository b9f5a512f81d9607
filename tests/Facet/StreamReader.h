#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "Facet/HostRecords.h"

namespace KM::Test {

/// A level stream that is given back to the host's allocator at the end of its scope.
class OwnedStream {
public:
    explicit OwnedStream(const KsLodsTRI& stream) : stream_(stream) {}
    OwnedStream(const OwnedStream&) = delete;
    OwnedStream& operator=(const OwnedStream&) = delete;
    ~OwnedStream();

    const KsLodsTRI* operator->() const { return &stream_; }

    /// The words of all levels, as a host walks them.
    std::vector<std::int32_t> Words() const;

private:
    KsLodsTRI stream_;
};

/// One level as a host reads it.
struct ReadLevel {
    std::int32_t toleranceWord;
    /// Node triples with their winding, each begun at its lowest node, sorted.
    std::vector<std::array<int, 3>> triangles;
};

std::vector<ReadLevel> ReadLevels(const std::vector<std::int32_t>& words);

}  // namespace KM::Test
