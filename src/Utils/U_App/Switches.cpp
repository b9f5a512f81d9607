#include "Utils/U_App/Switches.h"

#include <sstream>
#include <string>

#include "Utils/U_App/Application.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/ToFile.h"
#include "Utils/U_Settings/Formatters.h"
#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/Dump.h"

namespace KM::Application {
namespace {

void Info(const std::string& text) { Verbose::WriteMessage_1(Verbose::EMessageType::Info, text); }

void WriteFile(const std::string& name, const std::string& text) {
    IO::ToFile file(name, "wb", 0, true);
    KM_IO_WRITE(text.data(), static_cast<unsigned>(text.size()), file);
    file.Close();
}

void ExportSettings(const std::string& fileName) {
    std::ostringstream text;
    text << Settings::ToXMLElement("");
    WriteFile(fileName, text.str());
}

void ExportDefaults(const std::string& fileName, const XML::Element& element) {
    std::ostringstream text;
    text << "<?xml-stylesheet type=\"text/xsl\" href=\"" << Settings::ConfigurationFormatterAddress() << "\"?>\n";
    // They stay off: what this run still dumps shows defaults too.
    for (const char* part : {"EnumDescriptors", "Descriptors", "Value"})
        Settings::ToXMLElement(std::string("XML.Out.Export.") + part).V("N");
    text << element;
    WriteFile(fileName, text.str());
}

void TellVersion(const std::string& action) {
    const std::string version = Settings::ToString(action + ".Version") + GetGenericVersionInfo();
    Info("Functionality: \"" + action + "\"");
    Info("Has version: " + version);
    CompilationExplanation();
}

}  // namespace

void ExportTweaksIfAsked() {
    if (Arguments().size() < 2 || (Arguments()[1] != "/T" && Arguments()[1] != "/t")) return;
    ExportDefaults("KMHSTweak.XML", Settings::ToXMLElement("Actions.KM.ToolPathGenerator"));
}

bool ActOnSwitch() {
    if (Arguments().size() != 3) return false;
    const std::string letters = Arguments()[1];
    const std::string operand = Arguments()[2];
    if (letters.size() != 2 || letters[0] != '/') return false;
    switch (letters[1]) {
        case 'C':
        case 'c':
            ExportSettings(operand);
            break;
        case 'P':
        case 'p':
            Info("Not implemented");
            break;
        case 'V':
        case 'v':
            TellVersion(operand);
            break;
        default:
            break;
    }
    return true;
}

}  // namespace KM::Application
