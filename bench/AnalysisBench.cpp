// Normals, analysis by direction, connected solids and division by a plane, on a bumpy sphere, in walk order and shuffled.
// Usage: AnalysisBench [segments along an edge of the octahedron; 354 gives a million triangles]

#include <cstdlib>
#include <utility>

#include "Km.h"
#include "Support/Meshes.h"
#include "Support/Report.h"

namespace KM::Bench {
namespace {

using P = TPoint<double>;

double TriangleCount(const PIN& mesh) { return static_cast<double>(mesh.edges.size()) / 3.0; }

/// Floor: each triangle's cross product, which is as long as its weight, goes to its three nodes.
std::vector<P> FloorNormals(const PIN& mesh) {
    std::vector<P> normals(mesh.points.size());
    for (std::size_t e = 0; e < mesh.edges.size(); e += 3) {
        const int a = mesh.edges[e].P0, b = mesh.edges[e + 1].P0, c = mesh.edges[e + 2].P0;
        const P cross = Cross(mesh.points[b] - mesh.points[a], mesh.points[c] - mesh.points[a]);
        for (const int node : {a, b, c}) normals[node] += cross;
    }
    for (P& normal : normals) normal = normal / Length(normal);
    return normals;
}

/// Floor: the solids as a number for each edge, by a walk that visits each triangle once.
std::vector<int> FloorSolids(const PIN& mesh) {
    std::vector<int> solidOf(mesh.edges.size(), -1);
    std::vector<int> toVisit;
    int solids = 0;
    for (std::size_t first = 0; first < mesh.edges.size(); ++first) {
        if (solidOf[first] != -1) continue;
        toVisit.push_back(static_cast<int>(first));
        while (!toVisit.empty()) {
            int e = toVisit.back();
            toVisit.pop_back();
            if (solidOf[e] != -1) continue;
            for (int corner = 0; corner < 3; ++corner, e = mesh.edges[e].NE) {
                solidOf[e] = solids;
                if (mesh.edges[e].TE != -1 && solidOf[mesh.edges[e].TE] == -1) toVisit.push_back(mesh.edges[e].TE);
            }
        }
        ++solids;
    }
    return solidOf;
}

void MeasureFields(const PIN& mesh, const std::string& order) {
    Report report("normals and fields, " + order);
    const double triangles = TriangleCount(mesh);
    const std::string floor = "floor: add up cross products";
    const P dir(0.3, 0.2, 1.0);

    report.Measure({floor, triangles}, [&] { return FloorNormals(mesh); });
    for (const bool isWeighted : {false, true})
        report.Measure({isWeighted ? "Normals, weighted" : "Normals", triangles, 0.0, floor}, [&] {
            std::vector<P> normals;
            Normals(mesh, normals, isWeighted);
            return normals;
        });
    report.Measure({"NodeNormal of all nodes", triangles, 0.0, floor}, [&] {
        std::vector<P> normals;
        for (const int edge : mesh.p2e) normals.push_back(NodeNormal(mesh, edge, false));
        return normals;
    });
    report.Measure({"CriticalAreas", triangles, 0.0, floor}, [&] {
        std::vector<double> angles;
        CriticalAreas(mesh, angles, dir);
        return angles;
    });
    const std::vector<P> normals = FloorNormals(mesh);
    report.Measure({"DirToAnalysis", triangles, 0.0, floor}, [&] {
        std::vector<double> values;
        DirToAnalysis(normals, values, dir);
        return values;
    });
}

void MeasureSolids(const PIN& mesh, const std::string& order) {
    Report report("connected solids, " + order);
    const std::string floor = "floor: number the solids";
    report.Measure({floor, TriangleCount(mesh)}, [&] { return FloorSolids(mesh); });
    report.Measure({"CollectSolids", TriangleCount(mesh), 0.0, floor}, [&] {
        std::vector<std::vector<int>> solids;
        CollectSolids(mesh, solids);
        return solids;
    });
}

void MeasureDivision(const PIN& mesh, const std::string& order) {
    Report report("division by a plane, both sides, " + order);
    const std::string floor = "floor: copy of the mesh";
    const double point[] = {0.1, 0.2, 0.3};
    const double normal[] = {0.2, 0.3, 1.0};
    report.Measure({floor, TriangleCount(mesh)}, [&] { return mesh; });
    report.Measure({"PlnDivMesh", TriangleCount(mesh), 0.0, floor}, [&] {
        std::pair<PIN, PIN> parts;
        PlnDivMesh(mesh, point, normal, parts.first, parts.second);
        return parts;
    });
}

/// A sheet with a wave of one triangle's length, cut along: nearly every triangle is split.
void MeasureFlatCut(int n) {
    Test::IndexedFacets sheet = Test::GridFacets(n);
    for (P& p : sheet.points) p.Z = static_cast<int>(p.X + p.Y) % 2 == 0 ? 0.3 : -0.4;
    MeasureDivision(Test::FromFacets(sheet), "all triangles split");
}

}  // namespace
}  // namespace KM::Bench

int main(int argc, char** argv) {
    using namespace KM;
    const int given = argc > 1 ? std::atoi(argv[1]) : 354;
    const int n = given > 0 ? given : 354;
    const Test::IndexedFacets ordered = Test::BumpySphereFacets(n);
    for (const bool isShuffled : {false, true}) {
        const PIN mesh = Test::FromFacets(isShuffled ? Test::Shuffled(ordered, 1) : ordered);
        const std::string order = isShuffled ? "shuffled" : "walk order";
        Bench::MeasureFields(mesh, order);
        Bench::MeasureSolids(mesh, order);
        Bench::MeasureDivision(mesh, order);
    }
    Bench::MeasureFlatCut(2 * n);
}
