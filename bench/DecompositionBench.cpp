// Splitting of a binary STL file into slabs, of a bumpy sphere or of a given file: both passes, and the writing.
// Usage: DecompositionBench [segments along an edge of the octahedron; 354 gives a million triangles | FILE.stl]

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Facet/StlFile.h"
#include "Mesh/Algorithms/DomainDecomposition.h"
#include "Support/Meshes.h"
#include "Support/Report.h"
#include "Support/TempFolder.h"

namespace KM::Bench {
namespace {

constexpr std::size_t Block = std::size_t{1} << 18;

void Write(const std::string& name, const Test::Soup& soup) {
    std::FILE* file = STLOpenWriter(name.c_str(), false);
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3) STLWriteFacet(file, soup[i], soup[i + 1], soup[i + 2], false);
    STLCloseWriter(file, static_cast<int>(soup.size() / 3), false);
}

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File Open(const std::string& name, const char* mode) { return {std::fopen(name.c_str(), mode), &std::fclose}; }

std::uintmax_t BytesOf(const std::vector<std::string>& names) {
    std::uintmax_t bytes = 0;
    for (const std::string& name : names) bytes += std::filesystem::file_size(name);
    return bytes;
}

/// The bytes of the file read twice, and so many bytes written, in large blocks to each of the files in turn.
int FloorSplit(const Test::TempFolder& folder, const std::string& name, int domains, std::uintmax_t bytes) {
    const auto block = std::make_unique_for_overwrite<char[]>(Block);
    for (int pass = 0; pass < 2; ++pass) {
        const File input = Open(name, "rb");
        while (std::fread(block.get(), 1, Block, input.get()) != 0) {}
    }
    std::vector<File> outputs;
    for (int i = 0; i < domains; ++i) outputs.push_back(Open(folder / ("floor" + std::to_string(i)), "wb"));
    for (std::size_t number = 0; bytes > 0; ++number)
        bytes -=
            std::fwrite(block.get(), 1, std::min<std::uintmax_t>(Block, bytes), outputs[number % outputs.size()].get());
    return domains;
}

void MeasureSplits(const std::string& title, const Test::TempFolder& folder, const std::string& name) {
    Report report(title);
    const double bytes = static_cast<double>(std::filesystem::file_size(name));
    const double triangles = bytes / 50.0;
    // Some file systems wait for the disk when a file is written anew.
    const auto clear = [&] {
        for (const std::string& other : folder.Names())
            if (folder / other != name) std::filesystem::remove(folder / other);
        return 0;
    };
    for (const int domains : {1, 8, 100}) {
        const std::string floor = "floor: read twice, write to " + std::to_string(domains);
        const std::uintmax_t written = BytesOf(DomainDecomposition(name, domains, 7, 0.0, folder / "slab"));
        report.Measure({floor, triangles, bytes}, clear,
                       [&](int&) { return FloorSplit(folder, name, domains, written); });
        report.Measure({"DomainDecomposition, " + std::to_string(domains), triangles, bytes, floor}, clear,
                       [&](int&) { return DomainDecomposition(name, domains, 7, 0.0, folder / "slab"); });
    }
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM;
    const std::string argument = argc > 1 ? argv[1] : "354";
    const Test::TempFolder folder;
    std::string name = argument;
    if (!std::filesystem::is_regular_file(name)) {
        name = folder / "sphere.stl";
        const int n = std::max(1, std::atoi(argument.c_str()));
        Bench::Write(name, Test::BumpySphereFacets(n).AsSoup());
        Bench::MeasureSplits("neighbours together", folder, name);
        Bench::Write(name, Test::Shuffled(Test::BumpySphereFacets(n), 1).AsSoup());
        return Bench::MeasureSplits("triangles shuffled", folder, name), 0;
    }
    Bench::MeasureSplits("file", folder, name);
}
