#include "Report.h"

#include <cstdio>
#include <stdexcept>

namespace {

KM::TPoint<double> PointOf(const Part& part, int node) {
    const KsEvent& event = part.events[static_cast<std::size_t>(node)];
    return {event.x, event.y, event.z};
}

void WriteStl(const std::string& file, const Part& part, const Level& level) {
    std::FILE* stl = KM::STLOpenWriter(file.c_str(), false);
    if (stl == nullptr) throw std::runtime_error("cannot write " + file);
    for (const auto& [a, b, c] : level.triangles)
        KM::STLWriteFacet(stl, PointOf(part, a), PointOf(part, b), PointOf(part, c), false);
    KM::STLCloseWriter(stl, static_cast<int>(level.triangles.size()), false);

    // What did not fit on the disk shows in the length.
    const std::uintmax_t expected = 84 + 50 * std::uintmax_t{level.triangles.size()};
    if (std::filesystem::file_size(file) != expected) throw std::runtime_error("could not write the whole of " + file);
}

}  // namespace

void PrintTable(const std::string& file, const Part& part, const std::vector<Level>& levels) {
    const double all = static_cast<double>(part.facets.size());
    std::printf("%s: %zu triangles, %zu vertices, %.6g across\n", file.c_str(), part.facets.size(), part.events.size(),
                part.diagonal);
    if (part.leftOut != 0)
        std::printf("left out: %d triangles with two equal corners, or with a corner that is no number\n",
                    part.leftOut);
    std::printf("\n level  tolerance  triangles    share   strips  words/triangle       time\n");
    for (std::size_t i = 0; i < levels.size(); ++i) {
        const Level& level = levels[i];
        std::printf("%6zu  %9.4g", i + 1, level.tolerance);
        if (level.isRepeated) {
            std::printf("  as the level before\n");
            continue;
        }
        const double count = static_cast<double>(level.triangles.size());
        const double wordsEach = level.triangles.empty() ? 0.0 : level.words / count;
        std::printf("  %9zu  %5.1f %%  %7d  %14.3f  %7.1f ms\n", level.triangles.size(), 100.0 * count / all,
                    level.strips, wordsEach, level.milliseconds);
    }
    std::printf("\nTolerance: in the units of the part. Time: of one call, from the triangles to this level.\n");
}

std::vector<std::filesystem::path> WriteLevels(const std::filesystem::path& folder, const Part& part,
                                               const std::vector<Level>& levels) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (!std::filesystem::is_directory(folder)) throw std::runtime_error("cannot make the folder " + folder.string());
    std::vector<std::filesystem::path> files;
    for (std::size_t i = 0; i < levels.size(); ++i) {
        if (levels[i].isRepeated) continue;
        files.push_back(folder / ("level-" + std::to_string(i + 1) + ".stl"));
        WriteStl(files.back().string(), part, levels[i]);
    }
    return files;
}
