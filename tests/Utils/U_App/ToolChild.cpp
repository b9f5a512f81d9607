// A tool with an action for each way to end, and a setting of each type.

#include <stdexcept>
#include <string>

#include "Utils/U_App/ToolMain.h"

using namespace KM;

namespace {

void Say(const std::string& text) { Verbose::WriteMessage_1(Verbose::EMessageType::Info, text); }

/// Makes the abort file, as a watcher does, for the next message to find.
void AskForBreak() {
    IO::ToFile(Caching::Path() + "!Break(ID=1)", "wb", 0, true).Close();
    // The file is looked for once in a tick of the clock.
    for (const double now = Time::Get(); Time::Get() == now;) continue;
}

struct Subscribe {
    Factory::FactorySubscriber action;

    Subscribe(const std::string& key, void (*function)())
        : action("Test." + key, "V2.5", function, "", "An action of " + key + ".", "ToolChild.cpp", "7") {}
};

struct NoneOfATool : XNone {};

const Subscribe actions[] = {
    {"Ok", [] { Say("acting as " + Application::Name()); }},
    {"Exception",
     [] {
         throw Exception{"text", "file.cpp", 12};
     }},
    {"UserAbort", [] { throw XUserAbort(); }},
    {"AbortTwice",
     [] {
         AskForBreak();
         throw XUserAbort();
     }},
    {"AbortAtEnd", [] { AskForBreak(); }},
    {"Restart", [] { throw XRestartMe(); }},
    {"KmException", [] { throw KmException("In Test. Failed.", __FILE__, __LINE__); }},
    {"StdException", [] { throw std::runtime_error("failed"); }},
    {"Int", [] { throw 3; }},
    {"None", [] { throw NoneOfATool(); }},
    {"Code", [] { Application::ExitCode(4); }},
    {"Value", [] { Say("value: " + Settings::ToString("Test.Value")); }},
    {"Next", [] { Settings::ToXMLElement("Actions.Execute").V("Test.Ok"); }},
    {"Span",
     [] {
         static Time::AdditiveChronometer* slot = nullptr;
         const Time::AdditiveChronometer::Auto span("Span", slot);
     }},
    {"Where", [] { Say("folder: " + Application::GetEXEFilePath()); }},
};

const Factory::FactorySubscriber generator(
    "KM.ToolPathGenerator", "V1.0", [] { Say("generating as " + Application::Name()); }, "", "", "", "");

const Factory::FactorySubscriber dump(
    "KM.Dump.Settings", "V1", [] { std::cout << Settings::ToXMLElement("Test"); }, "", "", "", "");

Settings::Add Declare(const std::string& key, const std::string& type, const std::string& standard) {
    return Settings::Add("Test." + key, standard, type, "help", "", "", "", "", "", true);
}

const Settings::Add settings[] = {
    Declare("", "", ""),
    Declare("Bool", "Bool", "Y"),
    Declare("Int32", "Int32", "b0111"),
    Declare("Real64", "Real64", "0.5"),
    Declare("AutoReal64", "AutoReal64", "1e20"),
    Declare("String", "String", "text"),
    Declare("Value", "String", ""),
    Declare("Enum", "Enum", "1"),
    Declare("Enum.One", "EnumValue", "1"),
    Declare("Enum.Two", "EnumValue", "2"),
    Declare("Flag", "Flag", "0"),
    Declare("Flag.Red", "FlagValue", "4"),
    Declare("Flag.Green", "FlagValue", "2"),
    Declare("Flag.Blue", "FlagValue", "1"),
    Declare("Descriptor", "Descriptor", ""),
};

}  // namespace

int main(int argc, char** argv) { return Test::ToolMain(argc, argv); }
