#pragma once

#include <string>
#include <vector>

#include "Km.h"

/// A part as the library takes it from a host: vertices that the triangles share, and triangles that name them.
struct Part {
    std::vector<KsEvent> events;
    std::vector<KsShadingfacet> facets;
    int leftOut = 0;  ///< triangles of the file that have no three different corners, or a corner that is no number
    double diagonal = 0.0;  ///< of the bounding box
};

/// Reads an STL file, text or binary.
///
/// @throws std::runtime_error with one line that says why the file gives no part
Part ReadPart(const std::string& file);
