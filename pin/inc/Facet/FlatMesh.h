#pragma once

#include <cstdint>
#include <cstdio>

#include "Mesh/Core/Pin.h"

// The flat interface: opaque mesh handles, plain arrays, integer codes. Each entry has a failure rule of its own, which
// hosts rely on. Null where a pointer is needed is answered with 1, or with nothing where there is no code; outputs
// then stay as they are, unless the entry says otherwise. Arrays that are handed out come from `KmMemAlloc` and belong
// to the receiver. An array of more than INT_MAX floats is refused with 1, as if memory were short. No entry throws.
//
// A handle of the wrong kind, or one that was destroyed, is not detected.

extern "C" {

// The variables of the interface; `KmPinInit` sets them. They are read without synchronisation.
extern KM_API std::FILE* KgApplDbgFileDesc;      ///< standard error; for the host's use
extern KM_API std::int32_t KgApplDbgGroup;       ///< 0; for the host's use
extern KM_API std::int32_t KgApplDbgLevel;       ///< 0; for the host's use
extern KM_API std::int32_t KgApplFacetDecimate;  ///< 0; non-zero makes `KmTriDecimate` reduce

/// Sets the four variables, at each call; so a host sets `KgApplFacetDecimate` after it. The arguments are not read.
/// Returns 0.
KM_API int KmPinInit(int, int);

/// A new empty mesh, or null when memory is short. The handle is the caller's, to be given back to its own destroy
/// call: the two kinds of mesh are not interchangeable.
KM_API KM::PIN* PINCreate();
KM_API KM::SPIN* SPINCreate();
/// Null is ignored.
KM_API void PINDestroy(KM::PIN* mesh);
KM_API void SPINDestroy(KM::SPIN* mesh);

/// The points of a single-precision mesh: `*points` gets `3 * *count` floats. An empty mesh gives a block, too.
///
/// @return 0; 1 when memory is short, with `*points` null and `*count` set
KM_API int PINExtractPoints(KM::SPIN* mesh, int* count, float** points);

/// The whole mesh as floats: number of edges E, number N of `p2e` entries, number P of points; NE, TE, P0 of each edge;
/// `p2e`; and, if `withPoints` is exactly 1, the coordinates of the points. Any other non-zero value makes room for
/// these and leaves it unwritten. Integers above 2^24 are rounded to the nearest float.
///
/// @param count  gets the number of floats
/// @return       0, or the code of `KmMemAlloc`, with no output written
KM_API int PINGetFloatArray(KM::PIN* mesh, int withPoints, int* count, float** array);

/// Finds the first node, in index order, whose squared distance to (x, y, z) is strictly below `toleranceSquared`.
///
/// @param toleranceSquared  square of a distance in model units; 0 finds nothing, not even a node at the very place
/// @return                  0; 1 with `*index` -1 when there is none, which is no error, and for a null mesh
///
/// Linear time.
KM_API int PINGetPointIdx(KM::PIN* mesh, double toleranceSquared, double x, double y, double z, int* index);

/// The points as floats, and their box. The first point enters the box rounded to float, the others in full: hosts
/// compare this box between runs. Each point but the first is one call of `KmBndBoxGrowPnt`; a first point that is not
/// a number stays in the box.
///
/// @param unused  not read
/// @param box     xmin, xmax, ymin, ymax, zmin, zmax; of an empty mesh as `KmBndBoxInit` leaves it
/// @return        0, or the code of `KmMemAlloc`, with no output written
KM_API int PINMkVTRIVTXs(KM::PIN* mesh, long long unused, double box[6], int* count, float** vertices);

/// The chordal tolerance that yields about `triangles` triangles on the box: the edge of a triangle of a uniform grid
/// over the product of its two largest extents, in model units.
///
/// @param box  xmin, xmax, ymin, ymax, zmin, zmax
/// @return     0 for a box with at most one extent; infinite for 0 triangles; NaN for both at once, for a negative count,
///             for an extent that is not a number, and for null
KM_API double PINTolForLod(int triangles, double box[6]);

}  // extern "C"
