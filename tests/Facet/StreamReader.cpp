#include "Facet/StreamReader.h"

#include <algorithm>

#include "KmTools.h"
#include "Support/Strips.h"

namespace KM::Test {

OwnedStream::~OwnedStream() {
    void* block = stream_.data;
    KmMemFree(&block);
}

std::vector<std::int32_t> OwnedStream::Words() const {
    std::int32_t* end = stream_.data;
    for (int i = 0; i < stream_.lodCount; ++i) end += end[1];
    return {stream_.data, end};
}

std::vector<ReadLevel> ReadLevels(const std::vector<std::int32_t>& words) {
    std::vector<ReadLevel> levels;
    for (std::size_t at = 0; at < words.size();) {
        ReadLevel& level = levels.emplace_back();
        level.toleranceWord = words[at];
        int strips = words[at + 2];
        for (at += 3; strips > 0; --strips) {
            const std::size_t count = static_cast<std::size_t>(words[at]);
            const auto triangles = TrianglesOfStrip({words.data() + at + 1, count});
            level.triangles.insert(level.triangles.end(), triangles.begin(), triangles.end());
            at += 1 + count;
        }
        std::sort(level.triangles.begin(), level.triangles.end());
    }
    return levels;
}

}  // namespace KM::Test
