#pragma once

#include <cstddef>
#include <cstdint>

// The plain records that the host and the library exchange. Their layout is the contract: arrays of them are walked
// with a fixed stride, and a host compiled apart from the library reads and writes the same bytes.

/// One interval. A box is three in a row, X, Y, Z: six doubles, xmin, xmax, ymin, ymax, zmin, zmax.
struct KsLim1 {
    double min;
    double max;
};
static_assert(sizeof(KsLim1) == 16 && offsetof(KsLim1, min) == 0 && offsetof(KsLim1, max) == 8);

/// The host's point.
struct KsPoint {
    double x;
    double y;
    double z;
};
static_assert(sizeof(KsPoint) == 24 && offsetof(KsPoint, x) == 0);
static_assert(offsetof(KsPoint, y) == 8 && offsetof(KsPoint, z) == 16);

/// One vertex of a facet list. Only the coordinates are read; the other bytes belong to the host.
struct KsEvent {
    unsigned char hostHead[24];
    double x;
    double y;
    double z;
    unsigned char hostTail[56];
};
static_assert(sizeof(KsEvent) == 104 && offsetof(KsEvent, x) == 24);
static_assert(offsetof(KsEvent, y) == 32 && offsetof(KsEvent, z) == 40);

/// One triangle of a facet list: indices into the events, in winding order. The fourth word belongs to the host.
struct KsShadingfacet {
    std::int32_t node[3];
    std::int32_t hostWord;
};
static_assert(sizeof(KsShadingfacet) == 16 && offsetof(KsShadingfacet, node) == 0);

/// Levels of detail as one flat stream of 32-bit words.
///
/// Levels follow each other, coarser and coarser. Each has three words, the tolerance times 100000 truncated toward
/// zero (the least word if that fits into none), the count of all words of the level with these three, and the number of
/// strips; then per strip the number n of its nodes and n node indices. Three consecutive nodes are a triangle, with the
/// winding alternating. Walk by `lodCount`: words behind the last level hold nothing.
struct KsLodsTRI {
    std::int32_t lodCount;  ///< levels in `data`
    std::int32_t size;      ///< words reserved in `data`
    std::int32_t* data;     ///< from `KmMemAlloc`, owned by the receiver; null when there is no result
};
static_assert(offsetof(KsLodsTRI, lodCount) == 0 && offsetof(KsLodsTRI, size) == 4);
static_assert(sizeof(KsLodsTRI) == 16 && offsetof(KsLodsTRI, data) == 8);
