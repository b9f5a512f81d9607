#include "Utils/U_App/Factory.h"

#include <map>

#include "Utils/U_App/Application.h"
#include "Utils/U_App/Progress.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM::Factory {
namespace {

using Verbose::EMessageType;
using Action = void (*)();

// Made on first use: static subscribers of many files reach it during load.
std::map<std::string, Action>& Table() {
    static std::map<std::string, Action> table;
    return table;
}

std::string SettingOf(const std::string& key) { return "Actions." + key; }

std::string VersionOf(const std::string& key) { return Settings::ToString(SettingOf(key) + ".Version"); }

/// The part behind the last dot. Hosts know the generator of tool paths under a name of its own.
std::string ShortName(const std::string& key) {
    const std::string name = key.substr(key.rfind('.') + 1);
    return name == "ToolPathGenerator" ? "KMHOST" : name;
}

void Error(const std::string& text) { Verbose::WriteMessage_1(EMessageType::Error, text); }

void Subscribe(const std::string& key, const std::string& version, Action action, const std::string& type,
               const std::string& help, const std::string& file, const std::string& line) {
    if (Exists(key)) {
        Error("The key \"" + key + "\" has been already registered!");
        throw FactorySubscriber::XTypeAlreadyRegistered();
    }
    if (action == nullptr) return Error("The key \"" + key + "\" has no function!");
    const Settings::Add own(SettingOf(key), "", type, help, "", "", "", file, line, false);
    const Settings::Add itsVersion(SettingOf(key) + ".Version", version, "String", "version of this action.", "", "",
                                   "", "", "", true);
    Table()[key] = action;
}

void WriteTitle(const std::string& title) {
    if (Settings::ToBool("Console.WriteAppNameInConsoleTitle")) KM::Services::GetDumpingDevice()->SetTitle(title);
}

}  // namespace

FactorySubscriber::FactorySubscriber(const std::string& key, const std::string& version, void (*action)(),
                                     const std::string& type, const std::string& help, const std::string& file,
                                     const std::string& line) {
    try {
        Subscribe(key, version, action, type, help, file, line);
    } catch (const XTypeAlreadyRegistered&) {
        throw;
    } catch (...) {
        // Out of a static object it would end the process, too much for the loss of one action.
    }
}

FactorySubscriber::FactorySubscriber(const std::string& key, const std::string& version, void* action,
                                     const std::string& type, const std::string& help, const std::string& file,
                                     const std::string& line)
    : FactorySubscriber(key, version, reinterpret_cast<Action>(action), type, help, file, line) {}

FactorySubscriber::FactorySubscriber(const std::string& key, const std::string& version, std::nullptr_t,
                                     const std::string& type, const std::string& help, const std::string& file,
                                     const std::string& line)
    : FactorySubscriber(key, version, static_cast<Action>(nullptr), type, help, file, line) {}

bool Exists(const std::string& key) { return Table().contains(key); }

void Run(const std::string& key) {
    const auto found = Table().find(key);
    if (found == Table().end()) return Error("Action \"" + key + "\" not found! running aborted.");
    const std::string name = ShortName(key) + VersionOf(key);
    Application::Name(name);
    const Progress::Auto task(name);
    WriteTitle(name);
    XML::IncrementSettingSession("Running: \"" + name + "\" service;");
    try {
        found->second();
    } catch (const XNone&) {
        // Hosts get the plain tag, whatever a tool derives from it.
        throw XNone();
    }
    WriteTitle(name);
}

void DumpRegisteredActions() {
    const Verbose::Scope scope("DumpRegisteredActions");
    for (const auto& [key, action] : Table())
        Verbose::WriteMessage_1(EMessageType::Info, "Action: " + SettingOf(key) + ", Version: " + VersionOf(key));
}

}  // namespace KM::Factory
