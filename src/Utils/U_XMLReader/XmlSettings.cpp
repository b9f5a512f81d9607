#include "Utils/U_Settings/Formatters.h"
#include "Utils/U_Settings/Vocabulary.h"

namespace KM::Settings {
namespace {

struct Colour {
    const char* suffix;
    const char* foreground;
};

// Four bits: bright, red, green, blue.
constexpr Colour Colours[] = {
    {"Element.Name", "b1111"},  {"Element.Value", "b1110"}, {"Attribute.Name", "b0111"}, {"Attribute.Value", "b0110"},
    {"Operator", "b1000"},      {"CDATA.Name", "b1010"},    {"CDATA.Value", "b0010"},    {"Comment.Name", "b1100"},
    {"Comment.Value", "b0100"}, {"Command.Name", "b1011"},  {"Command.Value", "b0011"},  {"Disabled", "b1100"},
};

void DeclareColours() {
    const std::string group = "XML.Out.Color.";
    for (const Colour& colour : Colours) Declare(group + "Background." + colour.suffix, "Int32", "b0000", "BRGB");
    for (const Colour& colour : Colours)
        Declare(group + "Foreground." + colour.suffix, "Int32", colour.foreground, "BRGB");
}

}  // namespace

void DeclareXMLKeys() {
    [[maybe_unused]] static const Add keys[] = {
        Declare("XML.Out.Export.Attributes.Default", "Bool", "y", ""),
        Declare("XML.Out.Export.Attributes.Type", "Bool", "y", ""),
        Declare("XML.Out.Export.Attributes.Help", "Bool", "y", ""),
        Declare("XML.Out.Export.Attributes.Policy", "Bool", "y", ""),
        Declare("XML.Out.Export.Attributes.BoundLower", "Bool", "y", ""),
        Declare("XML.Out.Export.Attributes.BoundUpper", "Bool", "y", ""),
        Declare("XML.Out.Export.Attributes.File", "Bool", "n", ""),
        Declare("XML.Out.Export.Attributes.Line", "Bool", "n", ""),
        Declare("XML", "", "", "This group sets the behaviour of XML dumping."),
        Declare(
            "XML.XSLTFormatter", "String", ConfigurationFormatterAddress(),
            "XSLT Formatter write at begining of a dump. If is void it is not written. No angular bracket required!"),
        Declare("XML.DumpSettingsAfterLoading", "Bool", "n", "This group sets the behaviour of XML dumping."),
        Declare("XML.Out.Export.Attributes", "Bool", "y", "Enable or disable Attribute exporting."),
        Declare("XML.Out.Export.Comments", "Bool", "y", "Enable or disable Comments exporting."),
        Declare("XML.Out.Export.CDATA", "Bool", "y", "Enable or disable CDATA exporting."),
        Declare("XML.Out.Export.Commands", "Bool", "y", "Enable or disable Comments exporting."),
        Declare("XML.Out.Export.Value", "Bool", "y", "Enable or disable CDATA value."),
        Declare("XML.Out.Export.EnumDescriptors", "Bool", "y", "Enable or disable EnumDescriptors exporting."),
        Declare("XML.Out.Export.Descriptors", "Bool", "y", "Enable or disable Descriptors elements exporting."),
    };
    DeclareColours();
}

}  // namespace KM::Settings
