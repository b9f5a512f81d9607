#pragma once

#include <cstdint>
#include <cstdio>

#include "Mesh/Core/Pin.h"

// The flat interface: opaque mesh handles, plain arrays, integer codes. Each entry has a failure rule of its own, which
// hosts rely on. Null where a pointer is needed is answered with 1, or with nothing where there is no code. Arrays that are
// handed out come from `KmMemAlloc` and belong to the receiver.

extern "C" {

// The variables of the interface; `KmPinInit` sets them. They are read without synchronisation.
extern KM_API std::FILE* KgApplDbgFileDesc;       ///< standard error; for the host's use
extern KM_API std::int32_t KgApplDbgGroup;        ///< 0; for the host's use
extern KM_API std::int32_t KgApplDbgLevel;        ///< 0; for the host's use
extern KM_API std::int32_t KgApplFacetDecimate;   ///< 0; non-zero makes `KmTriDecimate` reduce

/// Sets the four variables; so a host sets `KgApplFacetDecimate` after this call. The arguments are not read. Returns 0.
KM_API int KmPinInit(int, int);

/// A new empty mesh, or null when memory is short. The handle is the caller's, to be given back to its own destroy call:
/// the two kinds of mesh are not interchangeable.
KM_API KM::PIN* PINCreate();
KM_API KM::SPIN* SPINCreate();
/// Null is ignored.
KM_API void PINDestroy(KM::PIN* mesh);
KM_API void SPINDestroy(KM::SPIN* mesh);

/// The points of a single-precision mesh: `*points` gets `3 * *count` floats.
/// @return 0; 1 when memory is short, with `*points` null and `*count` set
KM_API int PINExtractPoints(KM::SPIN* mesh, int* count, float** points);

/// The whole mesh as floats: number of edges E, number N of `p2e` entries, number P of points; NE, TE, P0 of each edge;
/// `p2e`; and, if `withPoints` is exactly 1, the coordinates of the points. Any other non-zero value makes room for these
/// and leaves it unwritten.
/// @param count  gets the number of floats
/// @return       0, or the code of `KmMemAlloc`, with no output written
KM_API int PINGetFloatArray(KM::PIN* mesh, int withPoints, int* count, float** array);

/// Finds the first node, in index order, whose squared distance to (x, y, z) is strictly below `toleranceSquared`.
/// @return 0, or 1 ("not found", with `*index` -1)
KM_API int PINGetPointIdx(KM::PIN* mesh, double toleranceSquared, double x, double y, double z, int* index);

/// The points as floats, and their box. The first point enters the box rounded to float, the others in full: hosts compare
/// this box between runs.
/// @param unused  not read
/// @param box     xmin, xmax, ymin, ymax, zmin, zmax; of an empty mesh as `KmBndBoxInit` leaves it
/// @return        0, or the code of `KmMemAlloc`, with no output written
KM_API int PINMkVTRIVTXs(KM::PIN* mesh, long long unused, double box[6], int* count, float** vertices);

/// The chordal tolerance that yields about `triangles` triangles on the box: the edge of a triangle of a uniform grid over
/// the product of its two largest extents. Checks neither the count for zero nor the box for flatness; NaN for null.
KM_API double PINTolForLod(int triangles, double box[6]);

}  // extern "C"
