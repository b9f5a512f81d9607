#include "Utils/U_App/Application.h"

namespace KM::Application {

int Run() { return ExitCode(); }

}  // namespace KM::Application
