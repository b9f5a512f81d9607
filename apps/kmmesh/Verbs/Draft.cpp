#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numbers>

#include "BandPicture.h"
#include "LongTask.h"
#include "Mesh/Algorithms/DirectionAnalysis.h"
#include "Output.h"
#include "PartFile.h"
#include "PartOutput.h"
#include "Triangles.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

/// Red around the upright walls; on the side that looks along the direction green to blue, on the other one yellow to brown.
const std::vector<std::array<double, 3>> Ramp = {
    {96, 57, 19},    {124, 76, 27},   {154, 100, 40}, {184, 128, 56}, {212, 160, 76}, {240, 200, 100}, {214, 39, 40},
    {180, 225, 140}, {120, 195, 130}, {70, 165, 125}, {40, 135, 120}, {32, 100, 120}, {24, 66, 120}};

/// The limits on both sides of 0, from -90 to 90.
std::vector<double> BothSides(std::vector<double> limits) {
    limits.push_back(90.0);
    std::sort(limits.begin(), limits.end());
    limits.erase(std::unique(limits.begin(), limits.end()), limits.end());
    std::vector<double> both;
    for (auto limit = limits.rbegin(); limit != limits.rend(); ++limit) both.push_back(-*limit);
    both.insert(both.end(), limits.begin(), limits.end());
    return both;
}

/// Of a triangle with any size. One without a height has some normal, and no area.
Point UnitNormal(const Point& a, const Point& b, const Point& c) {
    const Point u = b - a;
    const Point v = c - a;
    const double size = std::max(Length(u), Length(v));
    return size == 0.0 ? Point(0.0, 0.0, 1.0) : SafeUnit(Cross(u / size, v / size));
}

/// The angle between surface and direction, in degrees: that of the normal, less a right angle.
double AngleOf(double cosine) { return std::asin(std::clamp(cosine, -1.0, 1.0)) * 180.0 / std::numbers::pi; }

/// By triangles, not by nodes: an edge of a part is sharp, and its nodes have a bit of each side.
ValuedTriangles AnglesOf(const PIN& mesh, const Point& direction) {
    ValuedTriangles triangles;
    std::vector<Point> normals;
    LongTask task("Measuring", static_cast<double>(mesh.edges.size()) / 3.0);
    const auto at = [&](int node) { return mesh.points[static_cast<std::size_t>(node)]; };
    ForEachTriangle(mesh, [&](int a, int b, int c) {
        task.Step();
        triangles.push_back({{at(a), at(b), at(c)}, {}});
        normals.push_back(UnitNormal(at(a), at(b), at(c)));
    });
    std::vector<double> cosines;
    DirToAnalysis(normals, cosines, direction);
    for (std::size_t i = 0; i < triangles.size(); ++i) triangles[i].values.fill(AngleOf(cosines[i]));
    return triangles;
}

std::string SummaryOf(const ValuedTriangles& triangles, const Bands& bands, const Point& direction) {
    const auto byAngle = [](const ValuedTriangle& a, const ValuedTriangle& b) { return a.values[0] < b.values[0]; };
    const auto [least, greatest] = std::minmax_element(triangles.begin(), triangles.end(), byAngle);
    const std::vector<double> areas = AreasOf(triangles, bands);
    double area = 0.0;
    for (const double part : areas) area += part;
    return Format("  %-16s%.6g %.6g %.6g\n", "direction", direction.X, direction.Y, direction.Z) +
           Format("  %-16s%.6g\n", "area", area) +
           Format("  %-16sfrom %.4g to %.4g degrees\n", "angles", least->values[0], greatest->values[0]) +
           Histogram(areas, bands);
}

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    const Point direction = values.Direction("direction");
    const Bands bands{BothSides(values.Numbers("limits")), "angle, degrees", "", Ramp};
    const std::string picture = values.Text("picture");
    const Point view = values.Direction("view");
    const std::vector<std::string> pictures =
        picture.empty() ? std::vector<std::string>() : TargetsOf(files, picture, ".svg");
    for (std::size_t i = 0; i < files.size(); ++i) {
        NextSlice(static_cast<double>(i + 1) / static_cast<double>(files.size()));
        const Part part = ReadPart(files[i]);
        const ValuedTriangles angles = AnglesOf(part.mesh, direction);
        const std::string summary = SummaryOf(angles, bands, direction);
        if (!picture.empty()) {
            const std::string name = std::filesystem::path(files[i]).filename().string();
            WriteFile(pictures[i], BandPicture(angles, bands, name, view, IsClosed(part.mesh)));
        }
        if (i != 0) Print("\n");
        Print(Heading(files[i], part) + summary);
        if (!picture.empty()) Tell(pictures[i] + '\n');
    }
}

const Verb verb{
    "draft",
    "measures angles of the surface to a direction, with areas",
    {InputFiles(),
     {"direction", Kind::Direction, "z", "the direction; or x, y, z, -x, -y, -z"},
     {"limits", Kind::Numbers, "1,3,5,10,30,60", "of the bands, degrees between 0 and 90", false, {0, 90, false}},
     PictureFile(),
     ViewPoint()},
    Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
