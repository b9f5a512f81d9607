#include "Utils/U_App/Arguments.h"

namespace KM::Application {
namespace {

int redirectionShifting = 0;

}  // namespace

std::vector<std::string>& Arguments() {
    // Made on first use: settings can be read by static initialisers of other files.
    static std::vector<std::string> arguments;
    return arguments;
}

int RedirectionShifting() { return redirectionShifting; }

void RedirectionShifting(int index) { redirectionShifting = index; }

}  // namespace KM::Application
