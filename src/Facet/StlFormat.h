#pragma once

namespace KM {

// A binary STL file: a header text, the number of triangles in 32 bits, then a record of 50 bytes a triangle. A record
// has a normal, three points of three floats each, and two bytes for whatever. All is little-endian.
inline constexpr int StlHeaderSize = 80;
inline constexpr int StlFirstRecord = 84;
inline constexpr int StlRecordSize = 50;
inline constexpr int StlNormalSize = 12;

}  // namespace KM
