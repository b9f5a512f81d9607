// Reading and writing STL files, binary and text, of a bumpy sphere or of a given file.
// Usage: StlBench [segments along an edge of the octahedron; 354 gives a million triangles | FILE.stl]

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "Facet/StlFile.h"
#include "Support/Meshes.h"
#include "Support/Report.h"
#include "Support/TempFile.h"

namespace KM::Bench {
namespace {

using Test::Soup;

struct Bytes {
    explicit Bytes(const std::string& name)
        : size(std::filesystem::file_size(name)), data(std::make_unique_for_overwrite<char[]>(size)) {
        std::FILE* file = std::fopen(name.c_str(), "rb");
        if (file == nullptr) return;
        size = std::fread(data.get(), 1, size, file);
        std::fclose(file);
    }

    std::size_t size;
    std::unique_ptr<char[]> data;
};

/// The whole file in one read, then one loop over its records.
Soup FloorReadBinary(const std::string& name, std::size_t triangles) {
    const Bytes bytes(name);
    Soup soup;
    soup.reserve(3 * triangles);
    for (std::size_t at = 84; at + 50 <= bytes.size; at += 50) {
        float f[9];
        std::memcpy(f, bytes.data.get() + at + 12, sizeof f);
        for (int i = 0; i < 9; i += 3) soup.emplace_back(f[i], f[i + 1], f[i + 2]);
    }
    return soup;
}

/// The whole file in one read, then a search for each "vertex" and three conversions behind it.
Soup FloorReadText(const std::string& name, std::size_t triangles) {
    const Bytes bytes(name);
    const std::string_view text(bytes.data.get(), bytes.size);
    const char* const end = text.data() + text.size();
    Soup soup;
    soup.reserve(3 * triangles);
    for (std::size_t at = text.find("vertex"); at != text.npos; at = text.find("vertex", at)) {
        const char* next = text.data() + at + std::strlen("vertex");
        double xyz[3] = {};
        for (double& number : xyz) {
            while (next != end && *next == ' ') ++next;
            next = std::from_chars(next, end, number).ptr;
        }
        soup.emplace_back(xyz[0], xyz[1], xyz[2]);
        at = static_cast<std::size_t>(next - text.data());
    }
    return soup;
}

/// All points as floats in one buffer, without normals, and one write.
void FloorWriteBinary(const std::string& name, const Soup& soup) {
    std::vector<char> bytes(84 + soup.size() / 3 * 50);
    char* next = bytes.data() + 84;
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3, next += 50)
        for (std::size_t k = 0; k < 3; ++k) {
            const TPoint<double>& p = soup[i + k];
            const float xyz[3] = {static_cast<float>(p.X), static_cast<float>(p.Y), static_cast<float>(p.Z)};
            std::memcpy(next + 12 + 12 * k, xyz, sizeof xyz);
        }
    std::FILE* file = std::fopen(name.c_str(), "wb");
    if (file == nullptr) return;
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
}

Soup Read(const std::string& name, std::size_t triangles) {
    STLReader reader(name);
    Soup soup;
    soup.reserve(3 * triangles);
    double nine[9] = {};
    while (reader.Read(nine))
        for (int i = 0; i < 9; i += 3) soup.emplace_back(nine[i], nine[i + 1], nine[i + 2]);
    return soup;
}

void Write(const std::string& name, const Soup& soup, bool isText) {
    std::FILE* file = STLOpenWriter(name.c_str(), isText);
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3) STLWriteFacet(file, soup[i], soup[i + 1], soup[i + 2], isText);
    STLCloseWriter(file, static_cast<int>(soup.size() / 3), isText);
}

void MeasureBinary(const Soup& soup) {
    Report report("binary STL");
    const std::size_t triangles = soup.size() / 3;
    const auto count = static_cast<double>(triangles);
    const Test::TempFile file;
    Write(file.Name(), soup, false);
    const double bytes = static_cast<double>(std::filesystem::file_size(file.Name()));

    report.Measure({"floor: read", count, bytes}, [&] { return FloorReadBinary(file.Name(), triangles); });
    report.Measure({"STLReader", count, bytes, "floor: read"}, [&] { return Read(file.Name(), triangles); });
    report.Measure({"floor: write", count, bytes}, [&] { return FloorWriteBinary(file.Name(), soup), 0; });
    report.Measure({"STLWriteFacet", count, bytes, "floor: write"}, [&] { return Write(file.Name(), soup, false), 0; });
}

void MeasureText(const Soup& soup) {
    Report report("text STL");
    const std::size_t triangles = soup.size() / 3;
    const auto count = static_cast<double>(triangles);
    const Test::TempFile file;
    Write(file.Name(), soup, true);
    const double bytes = static_cast<double>(std::filesystem::file_size(file.Name()));

    report.Measure({"floor: read", count, bytes}, [&] { return FloorReadText(file.Name(), triangles); });
    report.Measure({"STLReader", count, bytes, "floor: read"}, [&] { return Read(file.Name(), triangles); });
    report.Measure({"STLWriteFacet", count, bytes}, [&] { return Write(file.Name(), soup, true), 0; });
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM;
    const std::string argument = argc > 1 ? argv[1] : "354";
    const bool isFile = std::filesystem::is_regular_file(argument);
    const int n = std::max(1, isFile ? 1 : std::atoi(argument.c_str()));
    const Test::Soup soup = isFile ? Bench::Read(argument, 0) : Test::BumpySphereFacets(n).AsSoup();
    Bench::MeasureBinary(soup);
    Bench::MeasureText(soup);
}
