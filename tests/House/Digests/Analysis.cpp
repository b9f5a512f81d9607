#include <string>
#include <utility>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/HostilePoints.h"
#include "Support/Meshes.h"

namespace KM::Test {
namespace {

void AddPoints(Digest& digest, const std::vector<P>& points) {
    for (const P& p : points) digest.Add(p);
}

void AddMesh(Digest& digest, const PIN& mesh) {
    AddPoints(digest, mesh.points);
    digest.Add(mesh.edges);
    digest.Add(mesh.p2e);
}

void PrintFields(const std::string& name, const PIN& mesh) {
    Digest digest;
    for (const bool isWeighted : {false, true}) {
        std::vector<P> normals;
        Normals(mesh, normals, isWeighted);
        AddPoints(digest, normals);
        for (std::size_t e = 0; e < mesh.edges.size(); e += 5)
            digest.Add(NodeNormal(mesh, static_cast<int>(e), isWeighted));
    }
    std::vector<double> angles;
    CriticalAreas(mesh, angles, P(0.2, -0.3, 0.9));
    for (const double angle : angles) digest.Add(angle);
    std::vector<std::vector<int>> solids;
    CollectSolids(mesh, solids);
    for (const std::vector<int>& solid : solids) digest.Add(solid);
    Print(name + ": normals, angles, solids", digest);
}

void PrintDivisions(const std::string& name, const PIN& mesh) {
    Digest digest;
    for (unsigned seed = 0; seed < 20; ++seed) {
        Numbers next(seed);
        const P point = mesh.points[next.Below(static_cast<int>(mesh.points.size()))] * 0.9;
        const P normal = next.Direction();
        PIN below, above;
        PlnDivMesh(mesh, &point.X, &normal.X, below, above);
        AddMesh(digest, below);
        AddMesh(digest, above);
    }
    Print(name + ": divisions", digest);
}

PIN HostileSphere() {
    PIN mesh = Sphere(12);
    HostilePoints next(3);
    for (P& p : mesh.points) p = next();
    return mesh;
}

}  // namespace

void PrintAnalysisDigests() {
    const std::pair<std::string, PIN> meshes[] = {{"bumpy sphere", BumpySphere(40)},
                                                  {"shuffled sphere", FromFacets(Shuffled(BumpySphereFacets(25), 1))},
                                                  {"random mesh", RandomMesh(1, 3000)},
                                                  {"hostile sphere", HostileSphere()}};
    for (const auto& [name, mesh] : meshes) {
        PrintFields(name, mesh);
        PrintDivisions(name, mesh);
    }
}

}  // namespace KM::Test
