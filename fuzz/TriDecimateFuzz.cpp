// Feeds raw facet records to the level builder, and walks the stream that comes back.

#include <algorithm>
#include <cstdint>
#include <vector>

#include "FuzzBytes.h"
#include "Km.h"

namespace {

using KM::Fuzz::Bytes;
using KM::Fuzz::Require;

void WalkStream(const KsLodsTRI& stream, int eventCount) {
    const std::int32_t* word = stream.data;
    for (int level = 0; level < stream.lodCount; ++level) {
        const std::int32_t* end = word + word[1];
        Require(end <= stream.data + stream.size);
        int strips = word[2];
        for (word += 3; strips > 0; --strips) {
            const int count = *word++;
            Require(count >= 3);
            for (int i = 0; i < count; ++i) Require(word[i] >= 0 && word[i] < eventCount);
            word += count;
        }
        Require(word == end);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes(data, size);
    KgApplFacetDecimate = bytes.Byte() % 4 != 0;
    std::vector<double> tolerances(1 + bytes.Byte() % 4);
    for (double& tolerance : tolerances) tolerance = bytes.Coordinate();
    std::vector<KsEvent> events(1 + bytes.Byte() % 32);
    for (KsEvent& event : events) {
        event.x = bytes.Coordinate();
        event.y = bytes.Coordinate();
        event.z = bytes.Coordinate();
    }
    std::vector<KsShadingfacet> facets;
    while (bytes.Left() >= 3) {
        // One index beyond the events is possible, and has to be refused.
        const int limit = static_cast<int>(events.size()) + (events.size() > 30 ? 1 : 0);
        KsShadingfacet& facet = facets.emplace_back();
        for (std::int32_t& node : facet.node) node = bytes.Byte() % limit;
    }
    const KsLodsTRI stream = KmTriDecimate(static_cast<int>(events.size()), events.data(),
                                           static_cast<int>(facets.size()), facets.data(), tolerances);
    WalkStream(stream, static_cast<int>(events.size()));
    void* block = stream.data;
    KmMemFree(&block);
    return 0;
}
