#pragma once

#include <string>

#include "KmApi.h"

namespace KM::IO {

// Names are texts in the manner of the family: "/" and back-slash both separate, and a folder that has been validated
// ends in a back-slash. They become real paths only where the operating system is called.

namespace FileNameManipulation {

/// The folder of a name with its last separator; empty if it has none.
KM_API std::string Path(const std::string& name);
/// The name without folder and extension.
KM_API std::string Name(const std::string& name);
/// What stands behind the last dot of the name; empty if there is none.
KM_API std::string Extension(const std::string& name);
/// Ends in a back-slash.
KM_API std::string CurrentWorkingDirectory();
/// Puts the current folder before a name, unless the name has a drive or begins with a separator.
KM_API void ConvertToAbsolutePath(std::string& name);

}  // namespace FileNameManipulation

/// Makes a folder name of a text: each "/" becomes a back-slash, blanks before a back-slash go, and a back-slash ends
/// it. "C:/a b /c" becomes "C:\a b\c\", and an empty text "\".
KM_API void ValidateFileName(std::string& name);
KM_API std::string ValidateFileName(const std::string& name);
KM_API std::string ValidateFileName(const char* name);

}  // namespace KM::IO
