#include "House/IncludeFloors.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace KM::Test {
namespace {

// Lowest first. Of several beginnings that fit a path the longest counts.
// clang-format off
const std::vector<std::vector<std::string>> Floors = {
    {"Platform/", "Host/", "KmTools.h", "KmHost.h", "KmApi.h", "KmVersion.h"},
    {"Utils/"},
    {"Geometry/", "Facet/Stl"},  // STL files know points only: mesh algorithms stream through them
    {"Mesh/Core/", "Tools/"},    // tools: drawing and checks of a mesh
    {"Mesh/Editing/"},
    {"Mesh/Algorithms/"},
    {"Facet/"},
    {"Km.h", "apps/", "examples/"},
};
// clang-format on
constexpr int FrameworkFloor = 1;
constexpr int FacetFloor = 6;

// Log, progress, exceptions and the replaceable services are what mesh and geometry use of the framework.
constexpr const char* HiddenFromMeshes[] = {"Utils/U_Caching/", "Utils/U_Parser/", "Utils/U_Settings/",
                                            "Utils/U_XMLReader/"};

// Headers of C++ have neither a dot nor a folder in their names; these are those of C. All others are the system's.
constexpr const char* HeadersOfC[] = {"assert.h", "ctype.h",  "errno.h", "fenv.h",   "float.h",  "inttypes.h",
                                      "limits.h", "locale.h", "math.h",  "setjmp.h", "signal.h", "stdarg.h",
                                      "stddef.h", "stdint.h", "stdio.h", "stdlib.h", "string.h", "time.h"};

struct Include {
    std::string header;  // empty: the line includes nothing
    bool isOwn = false;  // in quotes
};

std::string_view WithoutBlanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

bool Takes(std::string_view& text, std::string_view beginning) {
    text = WithoutBlanks(text);
    if (!text.starts_with(beginning)) return false;
    text = WithoutBlanks(text.substr(beginning.size()));
    return true;
}

Include IncludeOf(std::string_view line) {
    if (!Takes(line, "#") || !Takes(line, "include")) return {};
    if (!line.starts_with('"') && !line.starts_with('<')) return {};
    const std::size_t end = line.find_first_of("\">", 1);
    if (end == std::string_view::npos) return {};
    return {std::string(line.substr(1, end - 1)), line.front() == '"'};
}

/// The path as an include would name it.
std::string WithoutRoot(const std::string& path) {
    for (const std::string_view root : {"pin/inc/", "tools/inc/", "src/"})
        if (path.starts_with(root)) return path.substr(root.size());
    return path;
}

bool IsOfTheLanguage(const std::string& header) {
    if (header.find_first_of("./") == std::string::npos) return true;
    return std::find(std::begin(HeadersOfC), std::end(HeadersOfC), header) != std::end(HeadersOfC);
}

/// Code that runs anywhere: all but the platform layer, and the hosts, which bring their own world.
bool MustBePortable(const std::string& path) {
    return !path.starts_with("src/Platform/") && !path.starts_with("apps/") && !path.starts_with("examples/");
}

std::string FaultOfOwnInclude(const std::string& path, const std::string& header) {
    const bool isNeighbour = FloorOf(header) == -1 && header.find('/') == std::string::npos;
    const std::string target = isNeighbour ? path.substr(0, path.rfind('/') + 1) + header : header;
    const int from = FloorOf(path);
    const int to = FloorOf(target);
    if (to == -1) return "lies on no floor";
    if (to > from) return "points up";
    if (from <= FrameworkFloor || from > FacetFloor) return "";
    for (const char* hidden : HiddenFromMeshes)
        if (target.starts_with(hidden)) return "is a part of the framework that meshes do not use";
    return "";
}

bool IsSource(const std::filesystem::path& file) {
    const std::string extension = file.extension().string();
    return extension == ".h" || extension == ".cpp" || extension == ".c";
}

void CheckFile(const std::filesystem::path& file, const std::string& path, std::vector<std::string>& faults) {
    if (FloorOf(path) == -1) faults.push_back(path + ": lies on no floor");
    std::ifstream source(file);
    std::string line;
    for (int number = 1; std::getline(source, line); ++number) {
        const std::string fault = IncludeFault(path, line);
        if (!fault.empty()) faults.push_back(path + ":" + std::to_string(number) + ": " + line + "  " + fault);
    }
}

}  // namespace

int FloorOf(const std::string& path) {
    const std::string name = WithoutRoot(path);
    int floor = -1;
    std::size_t longest = 0;
    for (std::size_t i = 0; i < Floors.size(); ++i)
        for (const std::string& beginning : Floors[i])
            if (name.starts_with(beginning) && beginning.size() > longest) {
                floor = static_cast<int>(i);
                longest = beginning.size();
            }
    return floor;
}

std::string IncludeFault(const std::string& path, const std::string& line) {
    const Include include = IncludeOf(line);
    if (include.header.empty()) return "";
    if (include.isOwn) return FaultOfOwnInclude(path, include.header);
    if (MustBePortable(path) && !IsOfTheLanguage(include.header)) return "is no header of the language";
    return "";
}

std::vector<std::string> IncludeFaultsOfTree(const std::string& root) {
    namespace fs = std::filesystem;
    std::vector<std::string> faults;
    bool isEmpty = true;
    for (const char* top : {"pin/inc", "tools/inc", "src", "apps", "examples"}) {
        if (!fs::exists(fs::path(root) / top)) continue;
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(root) / top))
            if (IsSource(entry.path())) {
                isEmpty = false;
                CheckFile(entry.path(), fs::relative(entry.path(), root).generic_string(), faults);
            }
    }
    if (isEmpty) faults.push_back(root + ": has no sources");
    return faults;
}

}  // namespace KM::Test
