#pragma once

#include <iosfwd>

#include "Mesh/Core/Pin.h"

namespace KM {

// Text for a developer. Numbers follow the formatting of the stream: precision, base, locale.

/// Writes the three fields, "Edge{NE = 1, TE = -1, PO = 0}", with nothing behind the brace. The third label has a letter
/// O; tools that read such lines know it so.
KM_API std::ostream& operator<<(std::ostream& out, const Edge& edge);

/// Writes all nodes, then all edges, one a line, and beside what is stored the previous edge (PE), the own index (ME)
/// and the end node (P1) of each edge. PE or P1 of an edge whose links lead nowhere is -1; an entry that is missing in
/// `p2e` reads 0. Linear time. Begins with an empty line and ends behind the last brace, without a line end.
KM_API std::ostream& operator<<(std::ostream& out, const PIN& mesh);

}  // namespace KM
