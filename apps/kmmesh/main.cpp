// The command line of the mesh library, for people (`kmmesh VERB FILE`) and for configurations (`kmmesh FILE.xml`). The
// first way makes a configuration and goes the second.

#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>

#include "CommandLine.h"
#include "Configuration.h"
#include "Failure.h"
#include "Output.h"
#include "OutputFile.h"
#include "ProgressLine.h"
#include "Utils/U_App/Application.h"
#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_App/Factory.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_IO/ToFile.h"
#include "Utils/U_Settings/Settings.h"

namespace {

using namespace KM;
using namespace KM::Tool;

enum ExitCode { Done = 0, Stopped = 1, NoConfiguration = 3, InvalidConfiguration = 4, Failed = 9 };

void ShowLog() {
    Application::Services::DumpStream(std::cout);
    Services::GetOutputFormatter();
    Console::IsDumpEnabled(true);
}

int Refuse(const std::string& why, ExitCode code) {
    Complain(why);
    return code;
}

/// The part that both roads share. What is thrown comes out of the reading of configurations; an action's failures are
/// exit codes already.
int RunGuarded() {
    try {
        return Application::Run();
    } catch (const XUserAbort&) {
        return Refuse("stopped", Stopped);
    } catch (const IO::XFileIOError&) {
        return Refuse("a configuration cannot be read", InvalidConfiguration);
    } catch (const char* why) {
        return Refuse(std::string("invalid configuration: ") + why, InvalidConfiguration);
    } catch (const std::bad_alloc&) {
        return Refuse("not enough memory", Failed);
    } catch (const std::exception& e) {
        return Refuse(std::string("invalid configuration: ") + e.what(), InvalidConfiguration);
    }
}

int RunConfigurations(const std::vector<std::string>& arguments) {
    const bool hasSwitch = !arguments.empty() && arguments.front().starts_with('/') && arguments.front().size() == 2;
    ShowLog();
    const int code = RunGuarded();
    std::cout << std::endl;  // the log puts its line feeds in front of lines
    if (code != Done || arguments.empty() || hasSwitch) return code;
    if (Application::RedirectionShifting() == 0)
        return Refuse(arguments.front() + ": no configuration file; see kmmesh --help", NoConfiguration);
    const std::string action = Settings::ToString("Actions.Execute");
    if (action.empty()) return Refuse("the configuration names no action in Actions.Execute", InvalidConfiguration);
    if (!Factory::Exists(action)) return Refuse("there is no action \"" + action + '"', InvalidConfiguration);
    return code;
}

int RunRequest(const Request& request, const char* program) {
    const std::string text = ConfigurationOf(request);
    if (!request.save.empty()) OutputFile(request.save).Write(text);
    const TemporaryConfiguration configuration(text);

    Application::Arguments() = {program, configuration.Name()};
    if (request.isQuiet) BeQuiet();
    if (request.verbosity != 0) ShowLog();
    else if (!request.isQuiet) ProgressLine::Install();
    const int code = RunGuarded();
    if (request.verbosity != 0) std::cout << '\n';
    ProgressLine::Clear();
    return code;
}

int RunForPeople(const std::vector<std::string>& arguments, const char* program) {
    const CommandLine line = Parse(arguments);
    std::cout << line.text;
    if (!line.fault.empty()) return Refuse(line.fault, static_cast<ExitCode>(line.exitCode));
    if (line.request.verb == nullptr) return Done;
    try {
        return RunRequest(line.request, program);
    } catch (const Misuse& misuse) {
        return Refuse(misuse.what(), InvalidConfiguration);
    } catch (const std::exception& e) {
        return Refuse(e.what(), Failed);
    }
}

}  // namespace

int main(int argc, char** argv) {
    Application::CatchInterrupts();
    RegisterVerbs();
    Application::Arguments(argc, argv);
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    const int code = IsForPeople(arguments) ? RunForPeople(arguments, argv[0]) : RunConfigurations(arguments);
    if (!std::cout.flush()) return Refuse("standard output cannot be written", Failed);
    return code;
}
