#pragma once

#include <stddef.h>
#include <stdint.h>

/// The services that the library takes from its host. `libkmhost` is a stand-alone implementation; a real host brings its
/// own library with the same symbols. All functions return 0 on success, and another number when they refuse or fail.
///
/// The services do no locking: a list, a box or a block is used by one thread at a time.

#if defined(_WIN32)
#  if defined(KM_BUILDING_HOST)
#    define KM_HOST_API __declspec(dllexport)
#  else
#    define KM_HOST_API __declspec(dllimport)
#  endif
#else
#  define KM_HOST_API __attribute__((visibility("default")))
#endif

#if defined(__GNUC__)
#  define KM_PRINTF_LIKE(text, first) __attribute__((__format__(__printf__, text, first)))
#else
#  define KM_PRINTF_LIKE(text, first)
#endif

#ifdef __cplusplus
extern "C" {
#endif

// Memory

/// Stores a new block of `size` bytes in `*result`. A size of 0 gives a block too, which is to be freed like any other.
/// On failure `*result` is null.
KM_HOST_API int KmMemAlloc(size_t size, void** result);

/// Frees `*block` and sets it to null; null is ignored.
KM_HOST_API int KmMemFree(void** block);

/// Copies `fromSize` bytes; the blocks may overlap. Refuses, with nothing copied, null pointers, a negative size, and more
/// bytes than `to` has room for.
KM_HOST_API int KmMemCpy(void* to, int toSize, const void* from, int fromSize);

// Text

/// Copies a text into a buffer of `capacity` bytes. Where there is room for one byte the result always ends in NUL.
/// @return 0; 1 when the text had to be cut, a pointer is null (`to` is then empty) or `capacity` is below 1
KM_HOST_API int KmStrCpy(char* to, const char* from, int capacity);

/// Prints as `printf` does into a buffer of `capacity` bytes, with the same promises as `KmStrCpy`.
KM_HOST_API int KmSprintf(char* to, int capacity, const char* format, ...) KM_PRINTF_LIKE(3, 4);

// Lists

/// A growing array of items of one size. Item size and item count are read directly, as the second and the third 32-bit
/// word; all else is the host's own.
typedef struct KmList {
    int32_t kind;      ///< as given to `KmListMk`
    int32_t itemSize;  ///< bytes of one item
    int32_t count;     ///< items in the list
    int32_t growth;
    int32_t capacity;
    unsigned char* items;
} KmList;

/// A place in a list. It reads the list at each step, so items may be appended meanwhile; the list must not be deleted.
typedef struct KmListItr {
    const KmList* list;
    int32_t next;
} KmListItr;

/// Makes an empty list.
///
/// @param kind      2 is an array; the stand-alone host only keeps the number
/// @param itemSize  bytes of one item, at least 1
/// @param initial   items to make room for at once, at least 0
/// @param growth    items to make room for when the list is full, at least 0. The stand-alone host takes more on a long
///                  list, so that appending costs constant time on average.
/// @param flag      0; the stand-alone host does not read it
/// @param result    gets the list, to be given back to `KmListDel`; null on failure
KM_HOST_API int KmListMk(int kind, int itemSize, int initial, int growth, int flag, KmList** result);

/// Copies the item into the list. The index of the item count extends the list; beyond it, and below 0, is refused. The item
/// may lie in the list itself. On failure the list is as before.
KM_HOST_API int KmListSet(KmList* list, int index, const void* item);

/// Gives the items as one contiguous array, never null, valid until the list grows or is deleted.
KM_HOST_API int KmListGetArray(KmList* list, void** items);

/// Reports that a list was used with the wrong item size. Never returns 0.
KM_HOST_API int KmListSizeError(void);

/// Frees `*list` and sets it to null; null is ignored.
KM_HOST_API int KmListDel(KmList** list);

/// Empties the list and keeps its room.
KM_HOST_API int KmListReset(KmList* list);

/// Starts an iteration at the first item. `mode` is 1; the stand-alone host does not read it.
KM_HOST_API int KmListItrInit2(const KmList* list, int mode, KmListItr* iterator);

/// Stores a pointer to the next item in `*item`, or null at the end.
KM_HOST_API int KmListItrPtr(KmListItr* iterator, void** item);

// Bounding boxes: minimum and maximum per dimension, xmin, xmax, ymin, ymax, zmin, zmax.

/// Empties a box: each minimum is 1e20 and each maximum -1e20, so that it contains nothing.
KM_HOST_API int KmBndBoxInit(int dimensions, double box[]);

/// Stores in `grown` the box and the point together; `box` and `grown` may be the same array. A coordinate that is not a
/// number grows nothing.
KM_HOST_API int KmBndBoxGrowPnt(int dimensions, const double box[], const double point[], double grown[]);

// Debug drawing into the host's database. Points are three doubles.

/// For the host's use: where debug drawings go. 0 at start, and not read by the library.
extern KM_HOST_API int32_t KgDbgDisplayLoc;

/// Sets the colour of the lines that follow.
KM_HOST_API int KmDbSetLineCol(int colour);
/// Draws a line between two points.
KM_HOST_API int KmDbLineDisp(const double from[3], const double to[3]);
/// Sets the colour of the points that follow.
KM_HOST_API int KmDbSetPntCol(int colour);
/// Sets the marker of the points that follow.
KM_HOST_API int KmDbSetPntType(int type);
/// Draws a point.
KM_HOST_API int KmDbPntAdd(const double point[3]);
/// Writes a text of the given height, in model units, at a point.
KM_HOST_API int KmDbAnnoDisp(const double point[3], const char* text, double height, int colour);

#ifdef __cplusplus
}

namespace KM::Host {

// The services as the library calls them: with types, and with the size tests that each access has to make first. The
// results are the codes of the services.

/// Room for `count` values, not initialised, to be given back to `Free` or `KmMemFree`. On failure `*result` is null.
template <class T>
int Allocate(size_t count, T** result) {
    *result = nullptr;
    if (count > PTRDIFF_MAX / sizeof(T)) return 1;
    void* block = nullptr;
    const int code = KmMemAlloc(count * sizeof(T), &block);
    if (code == 0) *result = static_cast<T*>(block);
    return code;
}

/// Frees `*block` and sets it to null.
template <class T>
int Free(T** block) {
    void* plain = *block;
    *block = nullptr;
    return KmMemFree(&plain);
}

/// Appends to a list of 32-bit integers.
inline int Append(KmList* list, int32_t value) {
    if (list != nullptr && list->itemSize != static_cast<int32_t>(sizeof value)) return KmListSizeError();
    return KmListSet(list, list != nullptr ? list->count : 0, &value);
}

/// The items of a list of 32-bit integers, valid until the list grows or is deleted. On failure `*items` is null.
inline int Items(KmList* list, const int32_t** items) {
    *items = nullptr;
    if (list != nullptr && list->itemSize != static_cast<int32_t>(sizeof **items)) return KmListSizeError();
    void* plain = nullptr;
    const int code = KmListGetArray(list, &plain);
    if (code == 0) *items = static_cast<const int32_t*>(plain);
    return code;
}

}  // namespace KM::Host
#endif
