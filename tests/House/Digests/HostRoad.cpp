#include <algorithm>
#include <cmath>
#include <filesystem>
#include <vector>

#include "Digest.h"
#include "Km.h"
#include "Support/Meshes.h"

namespace KM::Test {
namespace {

void PrintMesh(const std::string& name, const PIN& mesh) {
    Digest digest;
    digest.Add(mesh.points);
    digest.Add(mesh.edges);
    digest.Add(mesh.p2e);
    Print(name + ": mesh", digest);
}

void PrintStrips(const std::string& name, PIN mesh) {
    std::vector<StripFan> strips;
    BuildStrips(mesh, strips);
    Digest digest;
    for (const StripFan& strip : strips) {
        digest.Add(&strip.kind, 1);
        for (const int node : strip.nodes) digest.Add(&node, 1);
    }
    Print(name + ": strips", digest);
}

void PrintVertices(const std::string& name, PIN mesh) {
    double box[6];
    int count = 0;
    float* vertices = nullptr;
    PINMkVTRIVTXs(&mesh, 0, box, &count, &vertices);
    Digest digest;
    digest.Add(box, 6);
    digest.Add(vertices, 3 * static_cast<std::size_t>(count));
    void* block = vertices;
    KmMemFree(&block);
    Print(name + ": vertices and box", digest);
}

/// The level stream for tolerances that are shares of `size`.
void PrintLevels(const std::string& name, const IndexedFacets& facets, double size, bool isReduced) {
    std::vector<KsEvent> events;
    for (const auto& p : facets.points) events.push_back({{}, p.X, p.Y, p.Z, {}});
    std::vector<KsShadingfacet> triangles;
    for (std::size_t i = 0; i + 2 < facets.triples.size(); i += 3)
        triangles.push_back({{facets.triples[i], facets.triples[i + 1], facets.triples[i + 2]}, 0});
    std::vector<double> tolerances;
    for (const double share : {0.0, 0.0001, 0.0007, 0.003, 0.01, 0.05}) tolerances.push_back(share * size);

    KgApplFacetDecimate = isReduced;
    const KsLodsTRI lods = KmTriDecimate(static_cast<int>(events.size()), events.data(),
                                         static_cast<int>(triangles.size()), triangles.data(), tolerances);
    Digest digest;
    const std::int32_t* word = lods.data;
    for (int level = 0; level < lods.lodCount; ++level) {
        digest.Add(word, static_cast<std::size_t>(word[1]));
        word += word[1];
    }
    digest.Add(&lods.lodCount, 1);
    digest.Add(&lods.size, 1);
    void* block = lods.data;
    KmMemFree(&block);
    Print(name + (isReduced ? ": reduced levels" : ": single level"), digest);
}

void PrintAll(const std::string& name, const IndexedFacets& facets, double size) {
    const PIN mesh = FromFacets(facets);
    PrintMesh(name, mesh);
    PrintStrips(name, mesh);
    PrintVertices(name, mesh);
    PrintLevels(name, facets, size, false);
    PrintLevels(name, facets, size, true);
}

/// Points and triples of a mesh of triangles, as its builder left them.
IndexedFacets FacetsOf(const PIN& mesh) {
    IndexedFacets facets;
    facets.points = mesh.points;
    for (const Edge& edge : mesh.edges) facets.triples.push_back(edge.P0);
    return facets;
}

void PrintSample(const std::filesystem::path& file) {
    STLReader reader(file.string());
    Soup soup;
    double v[9];
    while (reader.Read(v))
        for (int i = 0; i < 9; i += 3) soup.emplace_back(v[i], v[i + 1], v[i + 2]);
    PIN mesh;
    AddTriangles_1(mesh, soup);
    PrintAll(file.filename().string(), FacetsOf(mesh), 100.0);
}

}  // namespace

void PrintHostRoadDigests(const std::string& samples) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(samples))
        if (entry.path().extension() == ".stl") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (const auto& file : files) PrintSample(file);

    PrintAll("cube", CubeFacets(), 1.0);
    PrintAll("grid", GridFacets(24), 24.0);
    PrintAll("sphere", SphereFacets(24), 2.0);
    PrintAll("bumpy sphere", Shuffled(BumpySphereFacets(32), 1), 200.0);
    for (unsigned seed = 0; seed < 100; ++seed) {
        const int count = 3 + static_cast<int>(seed) * 4;
        PrintAll("random facets " + std::to_string(seed), RandomFacets(seed, count), 1000.0);
    }
}

}  // namespace KM::Test
