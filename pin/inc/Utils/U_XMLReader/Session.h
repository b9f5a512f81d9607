#pragma once

#include <string>
#include <vector>

#include "KmApi.h"

// The session clock. Each reading of a configuration opens a session, and each node of a tree bears a stamp, "SS", that
// tells in which sessions it was made and changed. A session is one bit, so a stamp is a mask of sessions.
//
// The clock is plain data of the process: it is written at start-up, while configuration is read on one thread.

namespace KM::XML {

/// The bit of the current session: 1 at start, which means "static initialisation".
KM_API int GetSettingSession();

/// Opens the next session: doubles the bit and notes the name. Nothing stops the bit from leaving the word: the 32nd
/// call gives 0, and stamps made from then on name no session.
KM_API void IncrementSettingSession(const std::string& name);

/// The names of the sessions since the start, one a call of `IncrementSettingSession`: name i belongs to bit 2^(i + 1).
KM_API const std::vector<std::string>& SettingSessionNames();

/// Whether a dump shows the stamps. False at start.
KM_API bool IsDumpSettingSession();
KM_API void SetIsDumpSettingSession(bool isDump);

}  // namespace KM::XML
