#pragma once

#include <string>

#include "KmApi.h"

namespace KM::Caching {

/// Lays a description out for reading: each bracket on a line of its own, what is inside two blanks further in, a new
/// line behind each comma, blanks round "=". Blanks of the text are dropped; brackets need not match.
///
/// From 64 MB on lines are no longer indented, or brackets that are nested without end would fill all memory.
KM_API std::string FormatString(const std::string& text);

}  // namespace KM::Caching
