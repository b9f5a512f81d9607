// A tool with an action "Main".

#include "Utils/U_App/ToolMain.h"

namespace {

void Main() {
    KM::Verbose::WriteMessage_1(KM::Verbose::EMessageType::Info, "main of " + KM::Application::Name());
    KM::Application::ExitCode(4);
    if (KM::Application::Arguments().size() > 1) throw "thrown";
}

const KM::Factory::FactorySubscriber subscriber("Main", "7", Main, "", "", "", "");

}  // namespace

int main(int argc, char** argv) { return KM::Test::ToolMain(argc, argv); }
