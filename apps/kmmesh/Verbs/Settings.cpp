#include "Utils/U_Settings/Settings.h"

#include <memory>
#include <sstream>

#include "Output.h"
#include "OutputFile.h"
#include "Utils/U_App/Factory.h"
#include "Utils/U_XMLReader/Dump.h"
#include "Verb.h"

namespace KM::Tool {
namespace {

std::string TextOf(const XML::Element& settings) {
    std::ostringstream text;
    text << settings << '\n';
    // The writer puts its line feeds in front of elements.
    return text.str().substr(text.str().find_first_not_of('\n'));
}

void SetToDefaults(XML::Element& element) {
    element.V(element.AttributeValue("Default"));
    for (XML::Base* const child : element.Children())
        if (auto* const inner = dynamic_cast<XML::Element*>(child)) SetToDefaults(*inner);
}

void Run(const Values& values) {
    XML::Element settings(Settings::ToXMLElement(""));
    SetToDefaults(settings);
    const std::string out = values.Text("out");
    if (out.empty()) return Print(TextOf(settings));
    WriteFile(out, TextOf(settings));
    Tell(out + '\n');
}

const Verb verb{"settings",
                "writes all settings, defaults and help as a configuration",
                {{"out", Kind::Path, "", "XML file to write; else standard output"}},
                Run};
const Entry<verb> entry;

/// What the switch "XML.DumpSettingsAfterLoading" runs.
void DumpSettings() { Print(TextOf(Settings::ToXMLElement(""))); }
const Factory::FactorySubscriber dump("KM.Dump.Settings", "V1.0", DumpSettings, "", "Writes the present settings.",
                                      __FILE__, std::to_string(__LINE__));

}  // namespace
}  // namespace KM::Tool
