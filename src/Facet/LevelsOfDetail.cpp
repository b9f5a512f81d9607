#include "Facet/LevelsOfDetail.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <limits>
#include <stdexcept>

#include "Facet/FacetMesh.h"
#include "Facet/FlatMesh.h"
#include "Facet/LevelStream.h"
#include "Facet/MeshReducer.h"

namespace KM {
namespace {

/// The largest containers that the interface promises; more is refused before memory is asked for.
constexpr std::size_t MostLevels = 134217727;
constexpr std::size_t MostPoints = 178956970;
constexpr std::size_t MostEdges = 357913941;

void RequireAtMost(std::size_t count, std::size_t most) {
    if (count > most) throw std::length_error("vector<T> too long");
}

/// For a caller that breaks the contract in a way that no result could tell.
[[noreturn]] void EndProcess(const char* why) {
    std::fputs(why, stderr);
    std::terminate();
}

// Appends the mesh as it stands as one level; returns the level's size.
int AppendLevel(PIN& mesh, double tolerance, std::vector<KsLod>& lods) {
    KsLod& lod = lods.emplace_back();
    lod.tolerance = tolerance;
    lod.size += BuildStrips(mesh, lod.strips);
    return lod.size;
}
int AppendLevel(const PIN& mesh, double tolerance, std::vector<FlatLod>& lods) {
    lods.push_back(CutLevel(mesh, tolerance));
    return lods.back().size;
}

template <class Lod>
int AppendReducedLevels(PIN& mesh, std::span<const double> tolerances, std::vector<Lod>& lods,
                        const ReductionWatch& watch = nullptr) {
    MeshReducer reducer(mesh, tolerances, watch);
    std::int64_t words = 0;
    for (std::size_t i = 0; i < tolerances.size(); ++i) {
        reducer.RunStage(static_cast<int>(i));
        words += AppendLevel(mesh, tolerances[i], lods);
        RequireAtMost(static_cast<std::size_t>(words), std::numeric_limits<int>::max());
    }
    return static_cast<int>(words);
}

/// False if a triangle has a corner that is no place: what it costs to move it could not be compared with anything.
bool AreCornersFinite(const PIN& mesh) {
    return std::all_of(mesh.edges.begin(), mesh.edges.end(), [&mesh](const Edge& e) {
        const TPoint<double>& p = mesh.points[e.P0];
        return std::isfinite(p.X) && std::isfinite(p.Y) && std::isfinite(p.Z);
    });
}

KsLodsTRI DecimateFacets(int eventCount, const KsEvent* events, int facetCount, const KsShadingfacet* facets,
                         std::span<const double> tolerances) {
    if (!AreFacetRecordsValid(eventCount, events, facetCount, facets)) return {0, 0, nullptr};
    RequireAtMost(static_cast<std::size_t>(eventCount), MostPoints);
    RequireAtMost(3 * static_cast<std::size_t>(facetCount), MostEdges);
    RequireAtMost(tolerances.size(), MostLevels);
    PIN mesh = FacetMesh(eventCount, events, facetCount, facets);
    std::vector<FlatLod> lods;
    if (KgApplFacetDecimate != 0) {
        if (!AreCornersFinite(mesh)) return {0, 0, nullptr};
        return FlattenLevels(lods, AppendReducedLevels(mesh, tolerances, lods));
    }
    // Strips depend on the links alone, so coordinates do not matter from here on.
    if (tolerances.empty()) EndProcess("KmTriDecimate: no tolerance to label the level with\n");
    return FlattenLevels(lods, AppendLevel(mesh, tolerances[0], lods));
}

}  // namespace

int BuildSingleLod(PIN& mesh, const double* tolerance, std::vector<KsLod>& lods) {
    return tolerance != nullptr ? AppendLevel(mesh, *tolerance, lods) : 0;
}

int BuildDecimatedLods(PIN& mesh, int levels, const double* tolerances, std::vector<KsLod>& lods) {
    return BuildWatchedLods(mesh, levels, tolerances, lods, nullptr);
}

int BuildWatchedLods(PIN& mesh, int levels, const double* tolerances, std::vector<KsLod>& lods,
                     const std::function<void(double)>& watch) {
    if (levels < 0 || (levels > 0 && tolerances == nullptr) || !IsReducible(mesh)) return 0;
    return AppendReducedLevels(mesh, {tolerances, static_cast<std::size_t>(levels)}, lods, watch);
}

}  // namespace KM

KsLodsTRI KmTriDecimate(int eventCount, const KsEvent* events, int facetCount, const KsShadingfacet* facets,
                        std::span<const double> tolerances) {
    try {
        return KM::DecimateFacets(eventCount, events, facetCount, facets, tolerances);
    } catch (...) {
        return {0, 0, nullptr};
    }
}

int PINMkVTRISTRIPs(KM::PIN* mesh, int decimate, int* levels, double* tolerances, int* size, int** data) {
    if (mesh == nullptr || levels == nullptr || size == nullptr || data == nullptr) return 1;
    if (decimate == 0 && tolerances == nullptr) return 1;
    if (*levels > 0) KM::RequireAtMost(static_cast<std::size_t>(*levels), KM::MostLevels);
    if (decimate != 0 && *levels < 0) KM::EndProcess("PINMkVTRISTRIPs: the number of levels is negative\n");
    if (decimate != 0 && *levels > 0 && tolerances == nullptr) KM::EndProcess("PINMkVTRISTRIPs: tolerances are null\n");

    std::vector<KM::KsLod> lods;
    *size = decimate != 0 ? KM::BuildDecimatedLods(*mesh, *levels, tolerances, lods)
                          : KM::BuildSingleLod(*mesh, tolerances, lods);
    const KsLodsTRI stream = KM::LodsToTRI(lods, *size);
    *levels = stream.lodCount;
    *data = stream.data;
    return 0;
}
