#include "Comparison.h"

#include "Output.h"

namespace KM::Tool {
namespace {

std::string VolumeOf(const MeshReport& report) {
    return report.closedSolids == 0 ? "open" : Format("%.9g", report.volume);
}

struct Line {
    const char* name;
    std::string (*value)(const MeshReport&);
};

constexpr Line Measures[] = {
    {"nodes", [](const MeshReport& r) { return std::to_string(r.nodes); }},
    {"triangles", [](const MeshReport& r) { return std::to_string(r.triangles); }},
    {"boundaries", [](const MeshReport& r) { return std::to_string(r.boundaries.size()); }},
    {"boundary edges", [](const MeshReport& r) { return std::to_string(r.boundaryEdges); }},
    {"solids", [](const MeshReport& r) { return std::to_string(r.solids); }},
    {"closed solids", [](const MeshReport& r) { return std::to_string(r.closedSolids); }},
    {"inside out", [](const MeshReport& r) { return std::to_string(r.insideOut); }},
    {"non-manifold", [](const MeshReport& r) { return std::to_string(r.nonManifoldEdges); }},
    {"degenerate", [](const MeshReport& r) { return std::to_string(r.degenerate); }},
    {"area", [](const MeshReport& r) { return Format("%.9g", r.area); }},
    {"volume", VolumeOf},
};

}  // namespace

std::string Comparison(const std::vector<std::pair<std::string, MeshReport>>& columns) {
    std::string text = Format("  %-14s", "");
    for (const auto& [name, report] : columns) text += Format("  %14s", name.c_str());
    text += '\n';
    for (const Line& line : Measures) {
        text += Format("  %-14s", line.name);
        for (const auto& [name, report] : columns) text += Format("  %14s", line.value(report).c_str());
        text += '\n';
    }
    return text;
}

}  // namespace KM::Tool
