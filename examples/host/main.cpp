// A small host application: reads a part from an STL file, lets the library reduce it to levels of detail, prints what came
// out, and writes one STL file a level.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Levels.h"
#include "Part.h"
#include "Report.h"

namespace {

const char* const Usage =
    "usage: host [--out FOLDER] FILE.stl [TOLERANCE...]\n"
    "  FOLDER     where the levels go; without it out/NAME in the current folder, with the name of the file\n"
    "  TOLERANCE  one level each, as a share of the part's diagonal (0.001); without any, 0 0.0001 0.0005 0.002 0.01,\n"
    "             where 0 is the whole part\n";

struct Arguments {
    std::string file;
    std::filesystem::path folder;
    std::vector<double> shares;  ///< ascending
};

std::optional<double> ToShare(const std::string& text) {
    char* end = nullptr;
    const double share = std::strtod(text.c_str(), &end);
    const bool isRead = !text.empty() && *end == '\0';
    if (!isRead || !std::isfinite(share) || share < 0.0) return std::nullopt;
    return share;
}

/// Nothing when the words do not fit the usage. Behind "--" each word is a file or a number, whatever it begins with.
std::optional<Arguments> Parse(const std::vector<std::string>& words) {
    Arguments arguments;
    bool takesOptions = true;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        if (takesOptions && word == "--") {
            takesOptions = false;
        } else if (takesOptions && word == "--out") {
            if (++i == words.size()) return std::nullopt;
            arguments.folder = words[i];
        } else if (takesOptions && word.starts_with("-")) {
            return std::nullopt;
        } else if (arguments.file.empty()) {
            arguments.file = word;
        } else if (const auto share = ToShare(word)) {
            arguments.shares.push_back(*share);
        } else {
            return std::nullopt;
        }
    }
    if (arguments.file.empty()) return std::nullopt;
    if (arguments.folder.empty())
        arguments.folder = std::filesystem::path("out") / std::filesystem::path(arguments.file).stem();
    if (arguments.shares.empty()) arguments.shares = {0.0, 0.0001, 0.0005, 0.002, 0.01};
    std::sort(arguments.shares.begin(), arguments.shares.end());
    return arguments;
}

void Run(const Arguments& arguments) {
    KmPinInit(0, 0);
    KgApplFacetDecimate = 1;  // behind KmPinInit, which clears it

    const Part part = ReadPart(arguments.file);
    std::vector<double> tolerances;
    for (const double share : arguments.shares) tolerances.push_back(share * part.diagonal);
    const std::vector<Level> levels = MakeLevels(part, tolerances);

    PrintTable(arguments.file, part, levels);
    const auto files = WriteLevels(arguments.folder, part, levels);
    std::printf("\nThe levels are in %s:\n", std::filesystem::absolute(arguments.folder).string().c_str());
    for (const auto& file : files) std::printf("  %s\n", file.filename().string().c_str());
}

}  // namespace

int main(int argc, char** argv) {
    const auto arguments = Parse({argv + 1, argv + argc});
    if (!arguments) {
        std::fputs(Usage, stderr);
        return 2;
    }
    try {
        Run(*arguments);
        return 0;
    } catch (const std::bad_alloc&) {
        std::fprintf(stderr, "host: %s: not enough memory\n", arguments->file.c_str());
    } catch (const std::exception& e) {
        std::fprintf(stderr, "host: %s: %s\n", arguments->file.c_str(), e.what());
    }
    return 1;
}
