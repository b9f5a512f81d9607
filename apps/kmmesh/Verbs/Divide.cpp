#include <algorithm>
#include <cmath>

#include "Comparison.h"
#include "Failure.h"
#include "Mesh/Algorithms/PlaneDivision.h"
#include "Output.h"
#include "PartFile.h"
#include "PartOutput.h"
#include "Triangles.h"
#include "Verb.h"
#include "WorkingScale.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

struct PlaneOfCut {
    Point point;
    Point normal;

    double Height(const Point& p) const { return Dot(p - point, normal); }
};

/// What a saw leaves of a closed part, although the meshes stay open at the cut.
struct Section {
    double length = 0.0;
    double area = 0.0;
    long long edges = 0;
};

bool IsWhole(const PIN& mesh) {
    return std::all_of(mesh.edges.begin(), mesh.edges.end(), [](const Edge& edge) { return edge.NE != -1; });
}

[[noreturn]] void RefusePlane(const std::string& file, const PIN& mesh, const PlaneOfCut& plane) {
    double low = plane.Height(mesh.points.front());
    double high = low;
    for (const Point& p : mesh.points) {
        low = std::min(low, plane.Height(p));
        high = std::max(high, plane.Height(p));
    }
    if (low > 0.0) throw Failure(file, "lies above the plane; there is nothing to divide");
    if (high < 0.0) throw Failure(file, "lies below the plane; there is nothing to divide");
    throw Failure(file, "cannot be divided by this plane");
}

/// Of the border that the cut made. The part below has it, too, turned round.
Section SectionOf(const PIN& above, const PlaneOfCut& plane) {
    constexpr double onPlane = 1e-5;  // as `PlnDivMesh` has it
    Section section;
    for (const Edge& edge : above.edges) {
        if (edge.NE == -1 || edge.TE != -1) continue;
        const Point a = above.points[static_cast<std::size_t>(edge.P0)] - plane.point;
        const Point b =
            above.points[static_cast<std::size_t>(above.edges[static_cast<std::size_t>(edge.NE)].P0)] - plane.point;
        if (std::fabs(Dot(a, plane.normal)) >= onPlane || std::fabs(Dot(b, plane.normal)) >= onPlane) continue;
        ++section.edges;
        section.length += Length(b - a);
        section.area += Dot(Cross(a, b), plane.normal) / 2.0;
    }
    return section;
}

/// As if the cut were closed: seen from a point of the plane, a face in it adds nothing.
double VolumeOf(const PIN& mesh, const Point& seenFrom) {
    double volume = 0.0;
    const auto at = [&](int node) { return mesh.points[static_cast<std::size_t>(node)] - seenFrom; };
    ForEachTriangle(mesh, [&](int a, int b, int c) { volume += Dot(at(a), Cross(at(b), at(c))) / 6.0; });
    return volume;
}

std::string SectionText(const PIN& below, const PIN& above, const PlaneOfCut& plane, bool isClosed, double scale) {
    const Section section = SectionOf(above, plane);
    std::string text =
        Format("  %-16s%s, length %.9g", "cut", Count(section.edges, "edge").c_str(), section.length / scale);
    if (!isClosed) return text + '\n';
    const double cubed = scale * scale * scale;
    return text + Format(", area %.9g\n", section.area / (scale * scale)) +
           Format("  %-16s%.9g below, %.9g above, with the cut closed\n", "volume",
                  VolumeOf(below, plane.point) / cubed, VolumeOf(above, plane.point) / cubed);
}

void RunFile(const std::string& file, PlaneOfCut plane, const Values& values, double begin, double end) {
    const std::string stem = StemOf(values.Text("out"), file);
    NextSlice(begin + 0.4 * (end - begin));
    Part part = ReadPart(file);
    NextSlice(begin + 0.6 * (end - begin));
    const MeshReport before = Measure(part.mesh);
    const double scale = WorkingScale(part.mesh);
    Scale(part.mesh, scale);
    plane.point *= scale;

    PIN below, above;
    const double point[3] = {plane.point.X, plane.point.Y, plane.point.Z};
    const double normal[3] = {plane.normal.X, plane.normal.Y, plane.normal.Z};
    if (PlnDivMesh(part.mesh, point, normal, below, above) != 0) RefusePlane(file, part.mesh, plane);
    if (!IsWhole(below) || !IsWhole(above)) throw Failure(file, "is too far from the origin to be divided");

    NextSlice(end);
    const auto lower = WrittenPart(stem + ".below.stl", below, 1.0 / scale, values.IsOn("text"));
    const auto upper = WrittenPart(stem + ".above.stl", above, 1.0 / scale, values.IsOn("text"));
    const bool isClosed = before.boundaries.empty();
    const std::string section = SectionText(below, above, plane, isClosed, scale);
    Scale(below, 1.0 / scale);
    Scale(above, 1.0 / scale);
    const std::string comparison =
        Comparison({{"before", before}, {"below", Measure(below)}, {"above", Measure(above)}});
    lower->Commit();
    upper->Commit();
    Print(Heading(file, part) + section + comparison);
    Tell(lower->Name() + '\n' + upper->Name() + '\n');
}

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    CheckOutputsDiffer(files, [](const std::string& file) { return StemOf("", file); });
    const PlaneOfCut plane{values.Point("point"), values.Direction("normal")};
    const auto count = static_cast<double>(files.size());
    for (std::size_t i = 0; i < files.size(); ++i)
        RunFile(files[i], plane, values, static_cast<double>(i) / count, static_cast<double>(i + 1) / count);
}

const Verb verb{"divide",
                "cuts parts by a plane, into one file below it and one above",
                {InputFiles(),
                 {"point", Kind::Point, "", "a point of the plane", true},
                 {"normal", Kind::Direction, "z", "the way up; or x, y, z, -x, -y, -z"},
                 {"out", Kind::Path, ".", "folder for NAME.below.stl and NAME.above.stl"},
                 AsText()},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
