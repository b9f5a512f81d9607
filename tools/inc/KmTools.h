#pragma once

#include <stddef.h>
#include <stdint.h>

/// The services that the library takes from its host. `libkmhost` is a stand-alone implementation; a real host brings its
/// own library with the same symbols. All functions that return `int` return 0 on success.

#if defined(_WIN32)
#  if defined(KM_BUILDING_HOST)
#    define KM_HOST_API __declspec(dllexport)
#  else
#    define KM_HOST_API __declspec(dllimport)
#  endif
#else
#  define KM_HOST_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/// Stores a new block of `size` bytes in `*result`. A size of 0 gives a block too, which is to be freed like any other.
KM_HOST_API int KmMemAlloc(size_t size, void** result);
/// Frees `*block` and sets it to null; null is ignored.
KM_HOST_API int KmMemFree(void** block);

#ifdef __cplusplus
}
#endif
