#include "Utils/U_App/AnalyzeSettings.h"
#include "Utils/U_App/Application.h"
#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_App/Configuration.h"
#include "Utils/U_App/Factory.h"
#include "Utils/U_App/Switches.h"
#include "Utils/U_App/Usage.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/Chronometer.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::Application {
namespace {

using Verbose::EMessageType;

constexpr int Ok = 0;
constexpr int UserBreak = 1;
constexpr int RestartNeeded = 8;
constexpr int UnexpectedError = 9;

void Configure() {
    Configuration configuration;
    configuration.Read();
    if (Settings::ToBool("XML.DumpSettingsAfterLoading")) Factory::Run("KM.Dump.Settings");
    configuration.Tell();
    Caching::ConfigureFromSettings();
    Verbose::ConfigureFromSettings();
}

void AnalyzeSettingsIf(const std::string& key) {
    if (Settings::ToBool(key)) AnalyzeSettings(Settings::ToXMLElement(""));
}

void End(int code, EMessageType::iterator type, const std::string& text) {
    ExitCode(code);
    try {
        Verbose::WriteMessage_1(type, text);
    } catch (const XUserAbort&) {
        // A message looks for requests before it is written, and the user has asked once more: nothing is left to stop.
        Verbose::WriteMessage_1(type, text);
    }
}

void RunAction() {
    try {
        Factory::Run(Settings::ToString("Actions.Execute"));
    } catch (const XUserAbort&) {
        End(UserBreak, EMessageType::Error, "User Break detected!");
    } catch (const XRestartMe&) {
        End(RestartNeeded, EMessageType::Info, "RestartMe detected!");
    } catch (const Exception& e) {
        End(UnexpectedError, EMessageType::Error,
            "Exception: \"" + e.type + "\" in file: \"" + e.file + "\" at line: " + std::to_string(e.line) +
                " was trapped!");
    } catch (...) {
        End(UnexpectedError, EMessageType::Error, "Unexpected exception has been detected!");
    }
}

}  // namespace

int Run() {
    if (Factory::Exists("Main")) {
        Factory::Run("Main");
        return Ok;  // whatever the tool has set: hosts that bring an own "Main" take a code for a failure to start
    }
    ExitCode(Ok);
    if (Arguments().size() <= 1) {
        WriteUsage();
        return ExitCode();
    }
    ExportTweaksIfAsked();
    if (ActOnSwitch()) return ExitCode();
    Configure();
    AnalyzeSettingsIf("Debug.IsAnalyzeSettingsBefore");
    RunAction();
    AnalyzeSettingsIf("Debug.IsAnalyzeSettingsAfter");
    Time::AdditiveChronometer::DumpAll();
    Verbose::WriteMessage_1(EMessageType::Info, "ExitCode = " + std::to_string(ExitCode()));
    return ExitCode();
}

}  // namespace KM::Application
