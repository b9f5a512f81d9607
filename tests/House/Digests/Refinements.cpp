#include <string>
#include <utility>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/Meshes.h"

namespace KM::Test {
namespace {

double LongestEdge(const PIN& mesh) {
    double longest = 0.0;
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        const double length = EdgeLength(mesh, e);
        if (length > longest) longest = length;
    }
    return longest;
}

void PrintMesh(const std::string& what, const PIN& mesh) {
    Digest digest;
    for (const TPoint<double>& p : mesh.points) digest.Add(p);
    digest.Add(mesh.edges);
    digest.Add(mesh.p2e);
    Print(what, digest);
}

void PrintRefined(const std::string& name, const PIN& mesh) {
    const double longest = LongestEdge(mesh);
    for (const int part : {2, 7, 11}) {
        PIN refined = mesh;
        Refine(refined, longest / part);
        PrintMesh(name + ": refined to 1/" + std::to_string(part), refined);
    }
    PIN sampled = mesh;
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); e += 3) SampleEdge(sampled, e, longest / 7.0);
    PrintMesh(name + ": edges sampled", sampled);
}

}  // namespace

void PrintRefinementDigests() {
    PrintRefined("bumpy sphere", BumpySphere(8));
    PrintRefined("shuffled sphere", FromFacets(Shuffled(BumpySphereFacets(5), 1)));
    PrintRefined("random facets", RandomMesh(3, 60));
    PrintRefined("dissolved grid", Dissolved(Grid(12), 1, 60));
}

}  // namespace KM::Test
