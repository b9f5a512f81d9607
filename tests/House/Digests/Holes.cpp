#include <string>
#include <utility>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/Holes.h"
#include "Support/Meshes.h"

namespace KM::Test {
namespace {

void PrintFilled(const std::string& name, PIN mesh) {
    FillHoles(mesh, 40);
    Digest some;
    some.Add(mesh.edges);
    Print(name + ": holes of up to 40 edges filled", some);
    FillHoles(mesh, -1);
    Digest all;
    all.Add(mesh.edges);
    Print(name + ": all holes filled", all);
}

void PrintSurrounded(const std::string& name, PIN mesh) {
    Digest digest;
    bool fills = false;
    for (const auto& loop : AllOrphanLoops(mesh)) {
        const double area = SignedArea(mesh, mesh.points, loop);
        digest.Add(&area, 1);
        fills = !fills;
        if (fills) FillHole(mesh, mesh.points, loop);
        else Surround(mesh, mesh.points, loop);
    }
    digest.Add(mesh.points);
    digest.Add(mesh.edges);
    Print(name + ": borders filled and surrounded", digest);
}

}  // namespace

void PrintHoleDigests() {
    const std::pair<std::string, PIN> meshes[] = {{"grid", WithHoles(Grid(40), 1, 30, 3, 60)},
                                                  {"sphere", WithHoles(Sphere(20), 2, 30, 3, 60)},
                                                  {"bumpy sphere", WithHoles(BumpySphere(24), 3, 30, 3, 60)},
                                                  {"random facets", RandomMesh(4, 400)},
                                                  {"random facets of many borders", RandomMesh(5, 4000)}};
    for (const auto& [name, mesh] : meshes) {
        PrintFilled(name, mesh);
        PrintSurrounded(name, mesh);
    }
}

}  // namespace KM::Test
