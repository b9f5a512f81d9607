#include "Utils/U_XMLReader/Session.h"

namespace KM::XML {
namespace {

// Stand before any code runs: nodes are stamped by static initialisers of other files.
constinit unsigned session = 1;
constinit bool isDumped = false;

// Made on first use, for the same reason.
std::vector<std::string>& Names() {
    static std::vector<std::string> names;
    return names;
}

}  // namespace

int GetSettingSession() { return static_cast<int>(session); }

void IncrementSettingSession(const std::string& name) {
    Names().push_back(name);
    session *= 2;
}

const std::vector<std::string>& SettingSessionNames() { return Names(); }

bool IsDumpSettingSession() { return isDumped; }

void SetIsDumpSettingSession(bool isDump) { isDumped = isDump; }

}  // namespace KM::XML
