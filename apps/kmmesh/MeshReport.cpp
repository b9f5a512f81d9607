#include "MeshReport.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "LongTask.h"
#include "Mesh/Core/Loops.h"
#include "Output.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

bool IsAlive(const PIN& mesh, int edge) { return mesh.edges[static_cast<std::size_t>(edge)].NE != -1; }
const Edge& EdgeAt(const PIN& mesh, int edge) { return mesh.edges[static_cast<std::size_t>(edge)]; }
const Point& StartOf(const PIN& mesh, int edge) { return mesh.points[static_cast<std::size_t>(EdgeAt(mesh, edge).P0)]; }

void MeasureNodes(const PIN& mesh, MeshReport& report) {
    for (std::size_t i = 0; i < mesh.points.size(); ++i) {
        if (mesh.p2e[i] == -1) continue;
        const Point& p = mesh.points[i];
        if (report.nodes++ == 0) report.low = report.high = p;
        report.low = {std::min(report.low.X, p.X), std::min(report.low.Y, p.Y), std::min(report.low.Z, p.Z)};
        report.high = {std::max(report.high.X, p.X), std::max(report.high.Y, p.Y), std::max(report.high.Z, p.Z)};
    }
}

void MeasureBoundaries(const PIN& mesh, MeshReport& report) {
    for (const std::vector<int>& loop : AllOrphanLoops(mesh)) {
        report.boundaries.push_back(static_cast<long long>(loop.size()));
        report.boundaryEdges += report.boundaries.back();
    }
    std::sort(report.boundaries.rbegin(), report.boundaries.rend());
}

/// All edges by the segment they run on: the lesser node, the greater one, and whether it runs downwards.
std::vector<std::uint64_t> SortedSegments(const PIN& mesh) {
    std::vector<std::uint64_t> segments;
    segments.reserve(mesh.edges.size());
    for (const Edge& edge : mesh.edges) {
        if (edge.NE == -1) continue;
        const auto from = static_cast<std::uint32_t>(edge.P0);
        const auto to = static_cast<std::uint32_t>(EdgeAt(mesh, edge.NE).P0);
        // Node indices have 31 bits, so one is left for the direction.
        const std::uint64_t segment = std::uint64_t{std::min(from, to)} << 32 | std::uint64_t{std::max(from, to)} << 1;
        segments.push_back(segment | (from > to ? 1u : 0u));
    }
    std::sort(segments.begin(), segments.end());
    return segments;
}

void MeasureSegments(const PIN& mesh, MeshReport& report) {
    const std::vector<std::uint64_t> segments = SortedSegments(mesh);
    for (std::size_t i = 0; i < segments.size();) {
        std::size_t end = i;
        std::uint64_t down = 0;
        for (; end < segments.size() && segments[end] >> 1 == segments[i] >> 1; ++end) down += segments[end] & 1;
        const std::size_t count = end - i;
        if (count > 2) ++report.nonManifoldEdges;
        if (count == 2 && down != 1) ++report.clashingEdges;
        i = end;
    }
}

/// Adds up area and volume of one piece after the other, triangle by triangle.
class PieceMeasure {
public:
    PieceMeasure(const PIN& mesh, MeshReport& report, LongTask& task)
        // From the middle of the box the parts of the volume are small, and little is lost between them.
        : mesh_(mesh),
          report_(report),
          task_(task),
          middle_((report.low + report.high) / 2.0),
          isSeen_(mesh.edges.size(), false) {}

    void Run() {
        for (std::size_t e = 0; e < mesh_.edges.size(); ++e)
            if (!isSeen_[e] && IsAlive(mesh_, static_cast<int>(e))) AddPiece(static_cast<int>(e));
    }

private:
    void AddPiece(int first) {
        SolidReport& solid = report_.each.emplace_back();
        waiting_.assign(1, first);
        while (!waiting_.empty()) {
            const int edge = waiting_.back();
            waiting_.pop_back();
            if (!isSeen_[static_cast<std::size_t>(edge)]) AddLoop(edge, solid);
        }
        ++report_.solids;
        if (!solid.isClosed) return;
        ++report_.closedSolids;
        report_.volume += solid.volume;
        if (solid.volume < 0.0) ++report_.insideOut;
    }

    void AddLoop(int first, SolidReport& solid) {
        task_.Step();
        int edge = first;
        do {
            isSeen_[static_cast<std::size_t>(edge)] = true;
            const int twin = EdgeAt(mesh_, edge).TE;
            if (twin < 0) solid.isClosed = false;
            else waiting_.push_back(twin);
            edge = EdgeAt(mesh_, edge).NE;
        } while (edge != first);
        for (int b = EdgeAt(mesh_, first).NE; EdgeAt(mesh_, b).NE != first; b = EdgeAt(mesh_, b).NE)
            AddTriangle(StartOf(mesh_, first), StartOf(mesh_, b), StartOf(mesh_, EdgeAt(mesh_, b).NE), solid);
    }

    void AddTriangle(const Point& a, const Point& b, const Point& c, SolidReport& solid) {
        const double twiceArea = Length(Cross(b - a, c - a));
        const double longest = std::max({LengthSquared(b - a), LengthSquared(c - b), LengthSquared(a - c)});
        ++report_.triangles;
        report_.area += twiceArea / 2.0;
        ++solid.triangles;
        solid.area += twiceArea / 2.0;
        if (!(twiceArea > MeshReport::ThinShare * longest)) ++report_.degenerate;
        solid.volume += Dot(a - middle_, Cross(b - middle_, c - middle_)) / 6.0;
    }

    const PIN& mesh_;
    MeshReport& report_;
    LongTask& task_;
    Point middle_;
    std::vector<bool> isSeen_;
    std::vector<int> waiting_;
};

std::string TextOf(const Point& p) { return Format("%.9g %.9g %.9g", p.X, p.Y, p.Z); }

/// "3 loops, 36 edges (20, 12, 4)".
std::string BoundariesOf(const MeshReport& report) {
    constexpr std::size_t mostShown = 8;
    const std::size_t count = report.boundaries.size();
    if (count == 0) return "none";
    std::string text = Count(static_cast<long long>(count), "loop") + ", " + Count(report.boundaryEdges, "edge");
    if (count == 1) return text;
    text += " (" + std::to_string(report.boundaries.front());
    for (std::size_t i = 1; i < std::min(count, mostShown); ++i) text += ", " + std::to_string(report.boundaries[i]);
    return text + (count > mostShown ? ", ...)" : ")");
}

std::string SolidsOf(const MeshReport& report) {
    if (report.solids == 0) return "none";
    const std::string closed = report.closedSolids == report.solids ? "closed"
                               : report.closedSolids == 0           ? "open"
                                                          : std::to_string(report.closedSolids) + " of them closed";
    return std::to_string(report.solids) + ", " + closed;
}

std::string OrientationOf(const MeshReport& report) {
    std::string text = report.clashingEdges == 0 ? "consistent"
                                                 : "inconsistent: on " + Count(report.clashingEdges, "edge") +
                                                       " two triangles run the same way";
    if (report.insideOut == 0) return text;
    if (report.insideOut == report.solids) return text + ", inside out";
    return text + ", inside out (or cavities): " + std::to_string(report.insideOut) + " of the closed solids";
}

std::string VolumeOf(const MeshReport& report) {
    if (report.closedSolids == 0) return "none, nothing is closed";
    const std::string volume = Format("%.9g", report.volume);
    return report.closedSolids == report.solids ? volume : volume + " of the closed solids";
}

std::string CountOrNone(long long count, const std::string& one) { return count == 0 ? "none" : Count(count, one); }

}  // namespace

MeshReport Measure(const PIN& mesh) {
    MeshReport report;
    LongTask task("Measuring", static_cast<double>(mesh.edges.size()) / 3.0);
    MeasureNodes(mesh, report);
    MeasureBoundaries(mesh, report);
    task.At(0.0);
    MeasureSegments(mesh, report);
    task.At(0.0);
    PieceMeasure(mesh, report, task).Run();
    return report;
}

std::string TextOf(const MeshReport& report) {
    const std::pair<const char*, std::string> lines[] = {
        {"nodes", std::to_string(report.nodes)},
        {"triangles", std::to_string(report.triangles)},
        {"extents", TextOf(report.high - report.low)},
        {"lowest corner", TextOf(report.low)},
        {"highest corner", TextOf(report.high)},
        {"boundaries", BoundariesOf(report)},
        {"solids", SolidsOf(report)},
        {"non-manifold", CountOrNone(report.nonManifoldEdges, "edge")},
        {"degenerate", CountOrNone(report.degenerate, "triangle")},
        {"orientation", OrientationOf(report)},
        {"area", Format("%.9g", report.area)},
        {"volume", VolumeOf(report)},
    };
    std::string text;
    for (const auto& [name, value] : lines) text += Format("  %-16s%s\n", name, value.c_str());
    return text;
}

}  // namespace KM::Tool
