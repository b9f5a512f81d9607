#include "Utils/U_XMLReader/Session.h"

namespace KM::XML {
namespace {

struct Clock {
    unsigned session = 1;
    std::vector<std::string> names;
    bool isDump = false;
};

// Made on first use: nodes are stamped by static initialisers of other files.
Clock& TheClock() {
    static Clock clock;
    return clock;
}

}  // namespace

int GetSettingSession() { return static_cast<int>(TheClock().session); }

void IncrementSettingSession(const std::string& name) {
    TheClock().names.push_back(name);
    TheClock().session *= 2;
}

const std::vector<std::string>& SettingSessionNames() { return TheClock().names; }

bool IsDumpSettingSession() { return TheClock().isDump; }

void SetIsDumpSettingSession(bool isDump) { TheClock().isDump = isDump; }

}  // namespace KM::XML
