#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "Facet/HostRecords.h"
#include "Facet/Strips.h"
#include "Mesh/Core/Pin.h"

namespace KM {

/// One level of detail in object form.
struct KsLod {
    std::vector<StripFan> strips;
    double tolerance = 0.0;  ///< as the caller asked for it
    std::int32_t size = 3;   ///< words in the level stream: 3 of its header, and n + 1 for each strip of n nodes
};

/// Appends one level that holds the whole mesh as strips, labelled with `*tolerance`. Returns its size in words; 0,
/// with nothing appended, for a null pointer.
KM_API int BuildSingleLod(PIN& mesh, const double* tolerance, std::vector<KsLod>& lods);

/// Reduces the mesh in stages by collapsing edges, cheapest quadric error first (Garland and Heckbert, "Surface
/// Simplification Using Quadric Error Metrics"), and appends each stage as a level.
///
/// Each collapse keeps one of the two nodes; no point moves. The mesh is changed: collapsed edges are left as dead
/// slots, `p2e` is not maintained, and the last level is what the mesh holds afterwards.
///
/// @param mesh        triangles in three consecutive edge slots each, as the builders make them, without dead slots
/// @param levels      number of tolerances
/// @param tolerances  distances in model units, ascending; neither sorted nor checked
/// @return            the words of all levels; 0, with mesh and `lods` untouched, when `levels` is negative,
/// `tolerances`
///                    is null although `levels` is not 0, or the mesh has a record that is dead, names what does not
///                    exist, lies on no triangle, or is not the twin of its twin
/// @throws            `std::length_error` when the words of all levels exceed an `int`
///
/// An edge whose collapse would turn a triangle over waits, and is put off for good at the fourth refusal. Above a
/// tolerance of about 1e10 that can take practically for ever; a stage then ends where nothing more can be collapsed.
KM_API int BuildDecimatedLods(PIN& mesh, int levels, const double* tolerances, std::vector<KsLod>& lods);

/// `BuildDecimatedLods` for one who waits: the same levels, bit by bit.
///
/// @param watch  is told every few milliseconds how much of the mesh has gone, as a fraction that never falls, and that
///               may end far below 1. What it throws ends the work and passes on; then the mesh is reduced in part, with
///               links as sound as at the end of a level, and `lods` has those levels that were whole. Must not touch
///               the mesh; an empty one is told nothing
KM_API int BuildWatchedLods(PIN& mesh, int levels, const double* tolerances, std::vector<KsLod>& lods,
                            const std::function<void(double)>& watch);

/// Flattens levels into the stream. A level of the same size as the one before it in `lods` is left out.
///
/// The first word of a level is its tolerance times 100000, truncated toward zero; what fits into no word, and
/// not-a-number, gives the least word.
///
/// @param size  words to reserve: the sum of the levels' sizes
/// @throws KmException when `KmMemAlloc` fails, or when the levels do not fit into `size`
KM_API KsLodsTRI LodsToTRI(const std::vector<KsLod>& lods, int size);

}  // namespace KM

using KM::KsLod;
using KM::LodsToTRI;

/// The whole way from host facets to a level stream: builds a mesh from the records, reduces it if
/// `KgApplFacetDecimate` is not 0, and flattens the levels.
///
/// @param tolerances  distances in model units, ascending, one level each; without reduction only the first one counts,
///                    and an empty list then ends the process
/// @return            owned by the caller (`KmMemFree` its `data`); {0, 0, null} when anything fails, a pointer is null, a
///                    count is negative, a facet names an event that does not exist or, with reduction, one whose
///                    coordinates are not finite
KM_API KsLodsTRI KmTriDecimate(int eventCount, const KsEvent* events, int facetCount, const KsShadingfacet* facets,
                               std::span<const double> tolerances);

/// Levels of detail of a mesh that the host already holds.
///
/// @param decimate    0: one level of the whole mesh, labelled `tolerances[0]`; else reduced levels, which change it
/// @param levels      in: number of tolerances (negative, with `decimate`, ends the process); out: levels in the stream
/// @param tolerances  null, with `decimate` and `*levels` not 0, ends the process
/// @param size        out: words of all levels, with those that the stream leaves out
/// @param data        out: the level stream of `KsLodsTRI`, owned by the caller (`KmMemFree`); without levels when the
///                    mesh cannot be reduced (see `BuildDecimatedLods`)
/// @return            0; 1, with nothing written, for any other null. Failures pass as exceptions: `KmException`, or
///                    those of the standard containers, such as `std::length_error` for more than 134217727 levels
extern "C" KM_API int PINMkVTRISTRIPs(KM::PIN* mesh, int decimate, int* levels, double* tolerances, int* size,
                                      int** data);
