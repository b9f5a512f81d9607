#include <algorithm>
#include <cmath>
#include <filesystem>

#include "BandPicture.h"
#include "CachedResults.h"
#include "Failure.h"
#include "LongTask.h"
#include "Mesh/Algorithms/Geodesics.h"
#include "NodeTable.h"
#include "Output.h"
#include "PartFile.h"
#include "PartOutput.h"
#include "Triangles.h"
#include "Verb.h"
#include "WorkingScale.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

constexpr double NotReached = INFINITY;

/// Blue where the sources are, to yellow far away.
const std::vector<std::array<double, 3>> Ramp = {
    {40, 30, 110}, {50, 90, 160}, {40, 150, 150}, {110, 195, 100}, {250, 225, 60}};

int NearestNode(const PIN& mesh, const Point& to) {
    const auto isNearer = [&](const Point& a, const Point& b) { return Length(a - to) < Length(b - to); };
    return static_cast<int>(std::min_element(mesh.points.begin(), mesh.points.end(), isNearer) - mesh.points.begin());
}

std::vector<int> SourcesOf(const std::string& file, const PIN& mesh, const std::vector<Place>& places) {
    std::vector<int> sources;
    for (const Place& place : places) {
        const int node = place.node == -1 ? NearestNode(mesh, place.point) : place.node;
        if (static_cast<std::size_t>(node) >= mesh.points.size())
            throw Failure(file, "has no node " + std::to_string(node) + "; the last one is " +
                                    std::to_string(mesh.points.size() - 1));
        if (std::find(sources.begin(), sources.end(), node) == sources.end()) sources.push_back(node);
    }
    return sources;
}

/// Along edges, from the nearest of the sources.
std::vector<double> DistancesAlongEdges(PIN& mesh, const std::vector<int>& sources) {
    constexpr double unreached = 1e20;
    std::vector<double> nearest(mesh.points.size(), NotReached);
    std::vector<double> distances;
    LongTask task("Measuring", static_cast<double>(sources.size()));
    for (std::size_t i = 0; i < sources.size(); ++i) {
        GeodesicDistByDijkstra(mesh, sources[i], distances);
        for (std::size_t k = 0; k < nearest.size(); ++k)
            if (distances[k] != unreached) nearest[k] = std::min(nearest[k], distances[k]);
        task.At(static_cast<double>(i + 1) / static_cast<double>(sources.size()));
    }
    return nearest;
}

/// Over the faces. No way there is longer than that along the edges, so the farthest of these tells how far the search has
/// to go.
std::vector<double> DistancesOverFaces(PIN& mesh, const std::vector<int>& sources) {
    double farthest = 0.0;
    for (const double distance : DistancesAlongEdges(mesh, {sources.front()}))
        if (distance != NotReached) farthest = std::max(farthest, distance);
    std::vector<double> distances;
    LongTask task("Searching", 1.0);
    WatchedGeodesicDist(mesh, sources, distances, [&](double reached) {
        // The front is as long as the distance, about.
        const double share = std::min(reached / farthest, 1.0);
        task.At(share * share);
    });
    for (double& distance : distances)
        if (distance == 0.0) distance = NotReached;
    for (const int source : sources) distances[static_cast<std::size_t>(source)] = 0.0;
    return distances;
}

std::vector<double> DistancesOf(PIN& mesh, const std::vector<int>& sources, bool isAlongEdges) {
    const double scale = WorkingScale(mesh);
    Scale(mesh, scale);
    std::vector<double> distances =
        isAlongEdges ? DistancesAlongEdges(mesh, sources) : DistancesOverFaces(mesh, sources);
    Scale(mesh, 1.0 / scale);
    for (double& distance : distances) distance /= scale;
    return distances;
}

std::string InputsOf(const std::vector<int>& sources, bool isAlongEdges) {
    std::string text = isAlongEdges ? "along edges from" : "over faces from";
    for (const int source : sources) text += ' ' + std::to_string(source);
    return text;
}

ValuedTriangles TrianglesOf(const PIN& mesh, const std::vector<double>& distances) {
    ValuedTriangles triangles;
    triangles.reserve(mesh.edges.size() / 3);
    const auto at = [&](int node) { return mesh.points[static_cast<std::size_t>(node)]; };
    const auto value = [&](int node) { return distances[static_cast<std::size_t>(node)]; };
    ForEachTriangle(mesh, [&](int a, int b, int c) {
        triangles.push_back({{at(a), at(b), at(c)}, {value(a), value(b), value(c)}});
    });
    return triangles;
}

std::string NodeText(const PIN& mesh, std::size_t node) {
    const Point& p = mesh.points[node];
    return Format("node %zu at %.9g %.9g %.9g", node, p.X, p.Y, p.Z);
}

std::string SummaryOf(const PIN& mesh, const std::vector<int>& sources, const std::vector<double>& distances) {
    std::string text;
    for (const int source : sources)
        text += Format("  %-16s%s\n", "source", NodeText(mesh, static_cast<std::size_t>(source)).c_str());
    long long reached = 0;
    std::size_t farthest = static_cast<std::size_t>(sources.front());
    for (std::size_t i = 0; i < distances.size(); ++i) {
        if (distances[i] == NotReached) continue;
        ++reached;
        if (distances[i] > distances[farthest]) farthest = i;
    }
    return text +
           Format("  %-16s%lld of %s\n", "reached", reached,
                  Count(static_cast<long long>(distances.size()), "node").c_str()) +
           Format("  %-16s%.9g, %s\n", "farthest", distances[farthest], NodeText(mesh, farthest).c_str());
}

std::string TableOf(const std::string& heading, const PIN& mesh, const std::vector<double>& distances) {
    LongTask task("Listing", static_cast<double>(distances.size()));
    NodeTable table(heading, "distance");
    for (std::size_t i = 0; i < distances.size(); ++i) {
        task.Step();
        table.Add(static_cast<int>(i), mesh.points[i], {distances[i]});
    }
    return table.Text();
}

double HighestOf(const std::vector<double>& distances) {
    double highest = 0.0;
    for (const double distance : distances)
        if (distance != NotReached) highest = std::max(highest, distance);
    return highest;
}

void Run(const Values& values) {
    const std::vector<std::string> files = values.Files("files");
    const std::vector<Place> places = values.Places("from");
    const std::string out = values.Text("out");
    const std::string picture = values.Text("picture");
    const Point view = values.Direction("view");
    const int bandCount = values.Whole("bands");
    if (files.size() > 1) throw Failure(files[1], "is one file too many; nodes are those of one part");
    const std::string& file = files.front();

    NextSlice(0.2);
    CachedPart part(file, !values.IsOn("no-cache"));
    part.Load();
    PIN& mesh = part.Value().mesh;
    const std::vector<int> sources = SourcesOf(file, mesh, places);
    NextSlice(0.8);
    const bool isAlongEdges = values.IsOn("dijkstra");
    Cached<std::vector<double>> measured(
        "distances", InputsOf(sources, isAlongEdges), part, [&] { return DistancesOf(mesh, sources, isAlongEdges); },
        [&](const std::vector<double>& found) { return found.size() == mesh.points.size(); });
    measured.Load();
    const std::vector<double>& distances = measured.Value();
    NextSlice(1.0);
    TellFound(file, {&part, &measured});
    const std::string heading = Heading(file, part.Value()) + SummaryOf(mesh, sources, distances);
    if (out.empty() && picture.empty()) return Print(TableOf(heading, mesh, distances));

    const Bands bands{RoundLimits(HighestOf(distances), bandCount), "distance", "not reached", Ramp};
    const ValuedTriangles triangles = TrianglesOf(mesh, distances);
    std::vector<std::pair<std::string, std::string>> outputs;
    if (!out.empty())
        outputs.emplace_back(TargetsOf(files, out, ".distances.txt").front(), TableOf(heading, mesh, distances));
    if (!picture.empty()) {
        outputs.emplace_back(
            TargetsOf(files, picture, ".svg").front(),
            BandPicture(triangles, bands, std::filesystem::path(file).filename().string(), view, IsClosed(mesh)));
    }
    const std::string histogram = Histogram(AreasOf(triangles, bands), bands);
    for (const auto& [name, text] : outputs) WriteFile(name, text);
    Print(heading + histogram);
    for (const auto& [name, text] : outputs) Tell(name + '\n');
}

const Verb verb{"geodesic",
                "measures distances over the surface, as text and picture",
                {InputFiles(),
                 {"from", Kind::Places, "", "sources: nodes, or points; \"12 0,5,30\" is both", true},
                 {"dijkstra", Kind::Switch, "N", "along edges: too long, and far quicker"},
                 {"out", Kind::Path, "", "for the distances: file to write, or existing folder"},
                 PictureFile(),
                 ViewPoint(),
                 {"bands", Kind::Whole, "10", "about how many bands, from 1 to 100", false, {1, 100}},
                 NoCache()},
                Run};
const Entry<verb> entry;

}  // namespace
}  // namespace KM::Tool
