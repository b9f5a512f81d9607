#pragma once

#include "KmVersion.h"

/// Marks what the shared library exports; everything else is hidden.
#if defined(_WIN32)
#  if defined(KM_BUILDING)
#    define KM_API __declspec(dllexport)
#  else
#    define KM_API __declspec(dllimport)
#  endif
#else
#  define KM_API __attribute__((visibility("default")))
#endif
