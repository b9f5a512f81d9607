#include "Utils/U_App/Configuration.h"

#include "Platform/Files.h"
#include "Utils/U_App/Arguments.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/FileNames.h"
#include "Utils/U_IO/Files.h"
#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/Reader.h"

namespace KM::Application {
namespace {

using Verbose::EMessageType;

constexpr int NameColor = 12;

bool HasXMLExtension(const std::string& fileName) {
    std::string extension = IO::FileNameManipulation::Extension(fileName);
    for (char& c : extension)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return extension == "XML";
}

/// Neither a folder nor a pattern that fits some names.
bool IsPlainFile(const std::string& name) {
    const auto info = Platform::InfoOf(name);
    return info.has_value() && info->isPlain;
}

/// Whether the argument is a configuration file; if not, the log tells why.
bool IsConfigurationFile(const std::string& argument) {
    const bool isXML = HasXMLExtension(argument);
    if (isXML ? !IsPlainFile(argument) : !IO::FileExist(argument)) {
        Verbose::WriteMessage_1(EMessageType::Warning, "File " + argument + " hasn't been found. Skip it!");
        return false;
    }
    if (!isXML)
        Verbose::WriteMessage_1(EMessageType::Info, "File " + argument + " doesn't have XML extension. Skip it!");
    return isXML;
}

}  // namespace

void Configuration::Read() {
    ReadArguments();
    Redirect();
    // Not before: what the redirector is given counts from the program.
    RedirectionShifting(shifting_);
}

void Configuration::ReadArguments() {
    for (std::size_t i = 1; i < Arguments().size(); ++i) {
        const std::string argument = Arguments()[i];
        if (!IsConfigurationFile(argument)) continue;
        ReadFile(argument);
        shifting_ = static_cast<int>(i);
    }
}

void Configuration::Redirect() {
    if (Settings::ToString("Actions.Execute") != "Utils.Redirector") return;
    const std::string fileName = Settings::ToString("Actions.Utils.Redirector.ToFile");
    if (IsPlainFile(fileName)) ReadFile(fileName);
}

void Configuration::ReadFile(const std::string& fileName) {
    files_.push_back(fileName);
    const Verbose::Scope scope("Parsing: " + fileName + " file");
    XML::ReadElement(fileName, Settings::ToXMLElement(""), true);
}

void Configuration::Tell() const {
    for (const std::string& fileName : files_)
        Verbose::WriteMessage_2(EMessageType::Info, "File " + fileName + " was used as configuration file.", "",
                                NameColor);
}

}  // namespace KM::Application
