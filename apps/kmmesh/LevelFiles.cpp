#include "LevelFiles.h"

#include <bit>
#include <cstring>
#include <memory>
#include <new>
#include <span>
#include <utility>

#include "KmTools.h"

namespace KM::Tool {
namespace {

static_assert(std::endian::native == std::endian::little, "level files are written as the words lie in memory");

/// Each three consecutive nodes are a triangle, every second one with the winding turned round.
void AddStrip(const std::vector<int>& nodes, std::vector<std::array<int, 3>>& triangles) {
    for (std::size_t i = 2; i < nodes.size(); ++i) {
        const bool isTurned = i % 2 == 1;
        triangles.push_back({nodes[i - 2], nodes[isTurned ? i : i - 1], nodes[isTurned ? i - 1 : i]});
    }
}

Level LevelOf(const KsLod& lod, int number) {
    Level level{number, lod.tolerance, lod.size, static_cast<int>(lod.strips.size()), {}};
    for (const StripFan& strip : lod.strips) {
        if (strip.kind == 2) AddStrip({strip.nodes.rbegin(), strip.nodes.rend()}, level.triangles);
        else AddStrip({strip.nodes.begin(), strip.nodes.end()}, level.triangles);
    }
    return level;
}

int WordsOf(std::span<const Level> levels) {
    int words = 0;
    for (const Level& level : levels) words += level.words;
    return words;
}

void Append(std::string& bytes, const void* data, std::size_t size) {
    if (size != 0) bytes.append(static_cast<const char*>(data), size);
}

}  // namespace

Levels::Levels(PIN& mesh, const std::vector<double>& tolerances, const std::function<void(double)>& watch) {
    std::vector<KsLod> lods;
    const int words = BuildWatchedLods(mesh, static_cast<int>(tolerances.size()), tolerances.data(), lods, watch);
    for (std::size_t i = 0; i < lods.size(); ++i)
        // The stream leaves out by the size alone what looks like the level before.
        if (i == 0 || lods[i].size != lods[i - 1].size) levels_.push_back(LevelOf(lods[i], static_cast<int>(i) + 1));
    const KsLodsTRI stream = LodsToTRI(lods, words);
    const std::unique_ptr<std::int32_t, void (*)(std::int32_t*)> owner(stream.data, [](std::int32_t* data) {
        void* block = data;
        KmMemFree(&block);
    });
    if (stream.data == nullptr && !levels_.empty()) throw std::bad_alloc();
    if (stream.data != nullptr) words_.assign(stream.data, stream.data + WordsOf(levels_));
}

Levels::Levels(std::vector<Level> levels, std::vector<std::int32_t> words)
    : levels_(std::move(levels)), words_(std::move(words)) {}

std::string Levels::FileOf(const PIN& mesh) const {
    const std::int32_t counts[] = {static_cast<std::int32_t>(mesh.points.size()),
                                   static_cast<std::int32_t>(levels_.size()), static_cast<std::int32_t>(words_.size())};
    std::string bytes = "KMLODS01";
    Append(bytes, counts, sizeof counts);
    for (const TPoint<double>& p : mesh.points) {
        const double xyz[] = {p.X, p.Y, p.Z};
        Append(bytes, xyz, sizeof xyz);
    }
    Append(bytes, words_.data(), words_.size() * sizeof(std::int32_t));
    return bytes;
}

}  // namespace KM::Tool
