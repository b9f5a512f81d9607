#pragma once

#include <cstddef>
#include <cstdint>

#include "Facet/HostRecords.h"
#include "Facet/Strips.h"
#include "KmTools.h"
#include "Mesh/Core/Pin.h"

/// A node of the strip hierarchy: a box, the strips that lie in it and could not go further down, and two children once
/// it is split. The host reads it directly; make and free it with the calls below.
struct KsHierStrip {
    KsHierStrip* low;   ///< child on the low side of the split; null in a leaf
    KsHierStrip* high;  ///< child on the high side
    KsLim1 box[3];
    std::int32_t withCounts;  ///< non-zero: each strip in `strips` has its node count ahead of its nodes
    std::int32_t stripCount;  ///< strips held in this node itself
    std::int32_t capacity;    ///< always 10000
    std::int8_t axis;         ///< 0 X, 1 Y, 2 Z; valid once the node has been split
    double split;             ///< split coordinate on that axis
    KmList* strips;           ///< 32-bit integers, strip after strip
};

static_assert(sizeof(void*) != 8 || (offsetof(KsHierStrip, box) == 16 && offsetof(KsHierStrip, withCounts) == 64 &&
                                     offsetof(KsHierStrip, axis) == 76 && offsetof(KsHierStrip, split) == 80 &&
                                     offsetof(KsHierStrip, strips) == 88 && sizeof(KsHierStrip) == 96));

/// Makes a node for `box` and, while `depth` is at least 1, its two children down to that depth. Each split halves the
/// longest side of the box; sides that are equal in single precision are a tie, which the later axis wins.
///
/// @param depth  levels below this node, up to 20; the number of nodes doubles with each
/// @param node   gets the node, to be given back to `KmHierStripFree` after a failure, too
/// @return       0; 1 when a host call fails on this node (`*node` is then null or half made), and, with `*node` null,
///               for a null pointer or a greater depth. A child that cannot be made is left null and is no failure.
extern "C" KM_API int KmHierStripMk(const KsLim1* box, int depth, int withCounts, KsHierStrip** node);

/// Files a strip at the deepest node whose side of each split it lies strictly on; one that touches a split plane
/// stays. A leaf with 9999 strips splits first, and keeps these.
///
/// @param reverse  non-zero writes the nodes from last to first
/// @return         0, the first non-zero code of a host call, or 1 for a null pointer or a negative count
extern "C" KM_API int KmHierStripAdd(const KsLim1* stripBox, int reverse, int count, const int* nodes,
                                     KsHierStrip* node);

/// As above for a `StripFan`; its count is always written. Throws the text "memory allocation" as a `const char*` when
/// a host call fails. Null pointers are ignored.
KM_API void KmHierStripAdd(const KsLim1* stripBox, const KM::StripFan& strip, KsHierStrip* node);

/// Frees a whole tree. A pointer to null, and null itself, are no error. Returns 0 or the first failing code.
extern "C" KM_API int KmHierStripFree(KsHierStrip** node);

/// Files all strips of the mesh in a hierarchy of depth 5 over `box`, and sinks them as deep as they can go.
///
/// @param mesh  loops that are no loops are left out; a strip of which no coordinate is known stays at the root
/// @param root  gets the hierarchy, which is the caller's (`KmHierStripFree`), after a failure, too
/// @return      0; 1 if anything failed or a pointer is null
extern "C" KM_API int PINToHier(KM::SPIN* mesh, const KsLim1* box, KsHierStrip** root);
