#include <string>
#include <utility>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/HostilePoints.h"
#include "Support/Meshes.h"

namespace KM::Test {
namespace {

void PrintMesh(const std::string& what, const PIN& mesh) {
    Digest digest;
    for (const P& p : mesh.points) digest.Add(p);
    digest.Add(mesh.edges);
    digest.Add(mesh.p2e);
    Print(what, digest);
}

void PrintReductions(const std::string& name, const PIN& mesh) {
    VisitorOf<PIN> nobody;
    for (const double tolerance : {0.01, 0.1, 3.0}) {
        const std::string with = name + ", tolerance " + std::to_string(tolerance);
        PIN reduced = mesh;
        DecimateNodes(reduced, tolerance, nobody);
        PrintMesh(with + ": nodes decimated", reduced);
        Decimate(reduced, tolerance, nobody);
        PrintMesh(with + ": cleaned up", reduced);
        Keep(reduced, -1, nobody);
        PrintMesh(with + ": large solids", reduced);
        Keep(reduced, 1, nobody);
        PrintMesh(with + ": largest solid", reduced);
        PIN swapped = mesh;
        SwapEdges(swapped, tolerance, 0.97);
        PrintMesh(with + ": swapped", swapped);
    }
}

PIN Shaken(PIN mesh, unsigned seed) {
    Numbers next(seed);
    for (P& p : mesh.points) p += next.PointBetween(-0.3, 0.3);
    return mesh;
}

PIN Hostile(PIN mesh) {
    HostilePoints next(3);
    for (P& p : mesh.points) p = next();
    return mesh;
}

}  // namespace

void PrintDecimationDigests() {
    const std::pair<std::string, PIN> meshes[] = {{"bumpy sphere", BumpySphere(40)},
                                                  {"shuffled sphere", FromFacets(Shuffled(BumpySphereFacets(25), 1))},
                                                  {"shaken sheet", Shaken(FromFacets(Shuffled(GridFacets(40), 2)), 2)},
                                                  {"random mesh", RandomMesh(1, 3000)},
                                                  {"hostile sphere", Hostile(Sphere(12))}};
    for (const auto& [name, mesh] : meshes) PrintReductions(name, mesh);
}

}  // namespace KM::Test
