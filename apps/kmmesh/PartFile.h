#pragma once

#include <functional>
#include <string>

#include "Mesh/Core/Pin.h"

namespace KM::Tool {

/// A part as it was read from an STL file.
struct Part {
    PIN mesh;
    long long read = 0;      ///< triangles in the file
    long long equal = 0;     ///< of these, left out for two equal corners
    long long infinite = 0;  ///< of these, left out for a corner that is no finite number
};

/// Reads an STL file and joins its triangles where corners are equal. Reports progress and can be stopped.
/// @throws Failure  when the file is missing, is a folder, is cut short, or holds no triangle that could be used
Part ReadPart(const std::string& file);

/// Calls `take` with the nine numbers of each triangle, from first to last. Reports progress and can be stopped.
/// @return  the number of triangles
/// @throws Failure  as above
long long ReadTriangles(const std::string& file, const std::function<void(const double*)>& take);

/// What a report of the part begins with: a line with the name of the file and its triangles, and a line for each kind that
/// was left out.
std::string Heading(const std::string& file, const Part& part);

/// Whether the surface has no boundary.
bool IsClosed(const PIN& mesh);

/// The length of the diagonal of the box of the mesh.
double DiagonalOf(const PIN& mesh);

}  // namespace KM::Tool
