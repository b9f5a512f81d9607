#pragma once

#include <ostream>

#include "KmApi.h"
#include "Utils/U_XMLReader/Element.h"

namespace KM::XML {

/// Writes a C++ header with one typed member for each setting of the tree, by the attribute "Type" of its elements
/// (Settings.h has the types): groups become classes, "Enum" and "Flag" become enumerations, and "Descriptor" is left
/// out with all that is below it. Texts go into the header as they are.
///
/// @param indent  tabs of the first class. Lines are indented by 0 to 1000 tabs, whatever the depth.
///
/// An unknown type writes nothing itself, with one `Error` in the log; the walk goes on below it.
KM_API void ToCPPHeader(std::ostream& out, const Element& root, int indent);

}  // namespace KM::XML
