#pragma once

#include <ostream>

#include "KmApi.h"
#include "Utils/U_XMLReader/Element.h"
#include "Utils/U_XMLReader/Processor.h"

namespace KM::XML {

/// Walks the tree and tells it to the processor as a reader would, with the attributes in the order of their names, and
/// each value ahead of the children. Elements with one of the names of `Nodes.h` are told as what they stand for. While
/// `IsDumpSettingSession()`, the first attribute of each element is "SS", the last eight binary digits of its stamp.
///
/// @param before  null, or a tree whose children are told ahead of the element, if that has no parent
/// @param after   the same for behind it
///
/// Trees may be as deep as memory allows. The processor must not change them.
KM_API void Dump(const Element& element, Processor& processor, const Element* before, const Element* after);

/// Writes the tree by a `DumpProcessor`, with entities and an indent of two blanks.
KM_API std::ostream& operator<<(std::ostream& out, const Element& element);

/// Logs what the digits of "SS" mean: one `Info` for each session since the start.
/// @param out  not used, the log has its own way out
KM_API void DumpSessionSettingNameTable(std::ostream& out);

}  // namespace KM::XML
