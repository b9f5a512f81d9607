#pragma once

#include <string>

#include "Utils/U_Settings/Settings.h"

namespace KM::Settings {

// Each folder declares its keys in a function, by static `Add` objects. They are called in this order when the library
// is loaded: the order of keys is the order of a dumped configuration, and the order in which a linker runs the
// initialisers of different files is nobody's to rely on.
void DeclareAppKeys();
void DeclareCachingKeys();
void DeclareConsoleKeys();
void DeclareDebugKeys();
void DeclareIOKeys();
void DeclareSettingsKeys();
void DeclareXMLKeys();

/// A key whose default is exported, without bounds. File and line are those of the call.
inline Add Declare(const std::string& key, const std::string& type, const std::string& defaultValue,
                   const std::string& help, const std::string& policy = {}, const char* file = __builtin_FILE(),
                   int line = __builtin_LINE()) {
    return Add(key, defaultValue, type, help, policy, {}, {}, file, std::to_string(line), true);
}

}  // namespace KM::Settings
