#pragma once

#include <string>

#include "KmApi.h"

namespace KM {

/// Why a file cannot be a whole STL file, as words to stand behind its name and a colon: "no such file", "is a folder, not
/// an STL file", "is empty", "is cut short: ..." and the like. An empty text if nothing speaks against it.
///
/// `STLReader` takes what is missing for the end and never complains; ask here before. A text has to end with
/// "endsolid", in capitals or not, and a name of up to 1000 bytes; a binary file must have as many triangles as its
/// header promises, more do no harm. The triangles between are not looked at: constant time.
KM_API std::string STLFault(const std::string& fileName);

}  // namespace KM
