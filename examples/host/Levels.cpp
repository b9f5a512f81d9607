#include "Levels.h"

#include <chrono>
#include <span>
#include <stdexcept>
#include <utility>

namespace {

/// The level stream belongs to the host, which gives it back to its own allocator.
class LevelStream {
public:
    LevelStream() = default;
    LevelStream(const Part& part, std::span<const double> tolerances)
        : record_(KmTriDecimate(static_cast<int>(part.events.size()), part.events.data(),
                                static_cast<int>(part.facets.size()), part.facets.data(), tolerances)) {
        if (record_.data == nullptr) throw std::runtime_error("the library could not make levels of detail");
    }
    LevelStream(LevelStream&& other) noexcept : record_(std::exchange(other.record_, {})) {}
    LevelStream& operator=(LevelStream&& other) noexcept {
        std::swap(record_, other.record_);
        return *this;
    }
    ~LevelStream() {
        void* block = record_.data;
        KmMemFree(&block);
    }

    int Count() const { return record_.lodCount; }
    const std::int32_t* Data() const { return record_.data; }

private:
    KsLodsTRI record_{};
};

/// Adds the triangles of a strip: each three consecutive nodes, every second time with the winding turned round.
void AddStrip(std::span<const std::int32_t> nodes, std::vector<std::array<int, 3>>& triangles) {
    for (std::size_t i = 2; i < nodes.size(); ++i) {
        const bool isTurned = i % 2 == 1;
        triangles.push_back({nodes[i - 2], nodes[isTurned ? i : i - 1], nodes[isTurned ? i - 1 : i]});
    }
}

/// A level in the stream: tolerance, words, number of strips, then the strips, each with its length in front.
void ReadLevel(const std::int32_t* word, Level& level) {
    level.words = word[1];
    level.strips = word[2];
    word += 3;
    for (int s = 0; s < level.strips; ++s) {
        const std::int32_t length = *word++;
        AddStrip({word, static_cast<std::size_t>(length)}, level.triangles);
        word += length;
    }
}

}  // namespace

std::vector<Level> MakeLevels(const Part& part, const std::vector<double>& tolerances) {
    using Clock = std::chrono::steady_clock;
    std::vector<Level> levels(tolerances.size());
    LevelStream stream;
    // One call makes all levels, and a product makes just that call. To show what each level costs, here each one is the
    // last of a call of its own; the coarser levels that a longer list asks for do not change the finer ones.
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const auto start = Clock::now();
        LevelStream longer(part, {tolerances.data(), i + 1});
        levels[i].milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - start).count();
        levels[i].tolerance = tolerances[i];
        levels[i].isRepeated = longer.Count() == stream.Count();
        stream = std::move(longer);
    }

    // `lodCount` decides how far the stream goes, whatever was expected of it.
    int left = stream.Count();
    const std::int32_t* word = stream.Data();
    for (Level& level : levels) {
        level.isRepeated = level.isRepeated || left == 0;
        if (level.isRepeated) continue;
        ReadLevel(word, level);
        word += level.words;
        --left;
    }
    return levels;
}
