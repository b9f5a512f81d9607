#include "Utils/U_App/Usage.h"

#include <string>

#include "Utils/U_App/Application.h"
#include "Utils/U_App/Factory.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM::Application {
namespace {

using Verbose::EMessageType;

void Info(const std::string& text) { Verbose::WriteMessage_1(EMessageType::Info, text); }

void WriteDashes() { Info(std::string(79, '-')); }

void WriteProductInfo(const std::string& program) {
    const Verbose::Scope scope("ProductInfo");
    WriteDashes();
    Info(program);
    Verbose::WriteMessage_1(
        EMessageType::Note,
        "Parameters with XML extension are parsed as configuration file. Can be as many as you want.");
}

void WriteCalls(const std::string& program) {
    const Verbose::Scope scope("Usage");
    for (const char* call :
         {"                      - This help file;", " 1.XML 2.XML .. n.XML - Load configuration files in this order;",
          " /V Actions.KM.ToolPathGenerator  - Export the version of utility;",
          " /C Name.XML          - Export the default configuration files;",
          " /P Name.XML          - Export the PAD for this file;",
          " /T                   - Export the file KMHSTweak.XML that if is found in KMHS.exe folder is read "
          "automatic."})
        Info(program + call);
}

}  // namespace

void WriteUsage() {
    const std::string program = Arguments().empty() ? std::string() : Arguments().front();
    WriteProductInfo(program);
    WriteCalls(program);
    WriteDashes();
    CompilationExplanation();
    WriteDashes();
    Factory::DumpRegisteredActions();
    WriteDashes();
}

// Release, the standard library, the compiler: one text for all builds, which hosts compare between versions.
std::string GetGenericVersionInfo() { return "RN190"; }

void CompilationExplanation() {
    const Verbose::Scope scope("CompilationExplanation");
    Info("Conditions: " + GetGenericVersionInfo());
    // Word for word, spelling included: installers search for these lines.
    for (const char* line :
         {"Where: ", "- First letter   = Compilation type: {D = Debug, R = Release};",
          "- Second letter  = STL type: {N = DikumwareSTL, X = STLPort};",
          "- First Number   = Compiler version: {130 = VC7.0, 131 = VC7.1; 140 = VC8.0}; "
          "//600 + version * 100",
          "- '.L'           = sepparator;", "- Second Number  = KM Version number. //int(version) * 100 "})
        Info(line);
}

}  // namespace KM::Application
