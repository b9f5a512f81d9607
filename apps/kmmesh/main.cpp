// The command line of the mesh library, for people (`kmmesh VERB FILE`) and for configurations (`kmmesh FILE.xml`). The
// first way makes a configuration and goes the second.

#include <cctype>
#include <exception>
#include <iostream>
#include <new>

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

/// An empty word would not be seen.
std::string NameOf(const std::string& word) { return word.empty() ? "\"\"" : word; }

bool IsSwitch(const std::string& word) { return word.starts_with('/') && word.size() == 2; }

/// What is thrown out of the reading of configurations, and of the switches that write files, tells people nothing.
int RefuseUnread() {
    const std::vector<std::string>& words = Application::Arguments();
    const std::string broken = BrokenConfigurationOf(words);
    if (!broken.empty()) return Refuse(broken + ": is no sound configuration; the log tells why", InvalidConfiguration);
    if (words.size() < 2 || !IsSwitch(words[1]))
        return Refuse("configuration: is not sound; the log tells why", InvalidConfiguration);
    const bool isNameGiven = words.size() == 3 && std::tolower(words[1][1]) == 'c';
    return Refuse((isNameGiven ? words[2] : "KMHSTweak.XML") + ": cannot be written; the log tells why", Failed);
}

/// The part that both roads share. An action's failures are exit codes already.
int RunGuarded() {
    try {
        return Application::Run();
    } catch (const XUserAbort&) {
        return Refuse("stopped", Stopped);
    } catch (const std::bad_alloc&) {
        return Refuse("not enough memory", Failed);
    } catch (...) {
        return RefuseUnread();
    }
}

int RunConfigurations(const std::vector<std::string>& arguments) {
    ShowLog();
    const int code = RunGuarded();
    std::cout << std::endl;  // the log puts its line feeds in front of lines
    if (code != Done || arguments.empty() || IsSwitch(arguments.front())) return code;
    if (Application::RedirectionShifting() == 0)
        return Refuse(NameOf(arguments.front()) + ": no such configuration; see kmmesh --help", NoConfiguration);
    const std::string action = Settings::ToString("Actions.Execute");
    if (action.empty()) return Refuse("Actions.Execute: names no action", InvalidConfiguration);
    if (!Factory::Exists(action)) return Refuse(action + ": no such action", InvalidConfiguration);
    return code;
}

int RunRequest(const Request& request, const char* program) {
    const std::string text = ConfigurationOf(request);
    if (!request.save.empty()) WriteFile(request.save, text);
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
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    const bool isForPeople = IsForPeople(arguments);
    // Not for people, whose fourth word is no window that somebody waits at.
    if (!isForPeople) Application::Arguments(argc, argv);
    const int code = isForPeople ? RunForPeople(arguments, argv[0]) : RunConfigurations(arguments);
    if (!std::cout.flush()) return Refuse("standard output cannot be written", Failed);
    return code;
}
