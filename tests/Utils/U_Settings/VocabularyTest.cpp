#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <vector>

#include "Utils/U_Settings/Settings.h"

namespace KM {
namespace {

struct Key {
    const char* folder;
    const char* key;
    const char* type;
    const char* defaultValue;
    const char* help;
};

// In the order of registration.
const Key Vocabulary[] = {
    {"U_App", "Actions", "", "", "This group sets the desired performed action."},
    {"U_App", "Actions.Execute", "String", "", "This group sets the desired performed action."},
    {"U_App", "Actions.Utils.Redirector.ToFile", "String", "", "This redirects XML configuration reading."},
    {"U_App", "Debug.IsAnalyzeSettingsBefore", "String", "N", "Dump setting before calling desired action."},
    {"U_App", "Debug.IsAnalyzeSettingsAfter", "String", "N", "Dump setting after calling desired action."},
    {"U_App", "Descriptors.ReturnCodes", "", "", "Describe the Framework returned code."},
    {"U_App", "Descriptors.ReturnCodes.C0000", "", "", "Run was OK."},
    {"U_App", "Descriptors.ReturnCodes.C0001", "", "", "User Break detected."},
    {"U_App", "Descriptors.ReturnCodes.C0003", "", "", "No configuration file."},
    {"U_App", "Descriptors.ReturnCodes.C0004", "", "", "Invalid configuration file."},
    {"U_App", "Descriptors.ReturnCodes.C0008", "", "",
     "Restart detected. The procesing hasn't end a restart of the application is required. This is triggered by "
     "Behavior.MaxAcceptableMemoryLoading"},
    {"U_App", "Descriptors.ReturnCodes.C0009", "", "", "Unexpected error detected."},
    {"U_Caching", "Cache", "", "", "Cache related settings."},
    {"U_Caching", "Cache.Create", "Int32", "0", "4 Show created entries in cache."},
    {"U_Caching", "Cache.Reuse", "Int32", "0", "2 Show reused entries in cache."},
    {"U_Caching", "Cache.Folder", "String", "", "Place where temporary files are stored."},
    {"U_Caching", "Cache.IsPersistableProcessingTime", "Int32", "1",
     "Time in milliseconds used to decide if an object will be cached or regenerate next time. For slow connection to "
     "cache folder this value will be higher."},
    {"U_Caching", "Cache.Cleaning.Enabled", "Bool", "Y", "Perform or not cache cleanning."},
    {"U_Caching", "Cache.Cleaning.Size", "Real64", "5000", "size of the cache. [Mb]"},
    {"U_Caching", "Cache.Cleaning.DeleteFactor", "Real64", "0.5", "What is the total size of the deleted files."},
    {"U_Caching", "Cache.Cleaning.TimeBetweenAnalysis", "Int32", "3600",
     "Minimum time between to calls to cache cleaning. [sec]"},
    {"U_Caching", "Cache.Cleaning.PreClean", "Bool", "N",
     "If is enabled will do a cache cleaning before starting computation."},
    {"U_Console", "Console", "", "", "Console related settings."},
    {"U_Console", "Console.XSLTFormatter", "String", "http://formatters.example.com/KMHS/Formatters/Dump.xsl",
     "XSLT Formatter write at begining of a dump. If is void it is not written. No angular bracket required!"},
    {"U_Console", "Console.WriteAppNameInConsoleTitle", "Bool", "Y",
     "Write or no the application name in console title."},
    {"U_Console", "Console.Init", "Bool", "N", "If is set then resize else not."},
    {"U_Console", "Console.DumpFileName", "String", "",
     "If is not void will dump the console to the file. No extension is required because XML extension will be "
     "appended."},
    {"U_Console", "Console.ArchiveDumpFile", "Bool", "N", "If is set will makes copy of the dump file appending date."},
    {"U_Console", "Console.Screen.Size.X", "Int32", "132", ""},
    {"U_Console", "Console.Screen.Size.Y", "Int32", "75", ""},
    {"U_Console", "Console.Buffer.Size.X", "Int32", "132", ""},
    {"U_Console", "Console.Buffer.Size.Y", "Int32", "1000", ""},
    {"U_Console", "Console.ReSize", "Int32", "Yes", ""},
    {"U_Console", "Console.Color.Foreground", "Int32", "b0111", "BRGB"},
    {"U_Console", "Console.Color.Background", "Int32", "b0001", "BRGB"},
    {"U_Debug", "Communication", "", "", "This group sets the behaviour of event communication with outside world."},
    {"U_Debug", "Communication.EnableInCacheLookingForCheckAbort", "Bool", "n",
     "This enables looking after files with name: !Break(ID=id). If the file is found will be deleted and the "
     "executable will stop without warning."},
    {"U_Debug", "Communication.EnableInConsoleProgressStatus", "Bool", "n",
     "This enables progress status output as a XML element on console. e.g. &lt;CurrentStatus Global=0.22 Local=0.8 "
     "Message=Run.KMHSV0.7.2.Analyzing.Whatever/&gt;"},
    {"U_Debug", "Communication.EnableInCacheProgressStatus", "Bool", "n",
     "This enables progress status output as a file name. Its sintax is: !Message(ID=id, GlobalUnityProgress, "
     "LocalUnityProgress, CurrentTask). Ex: !Message(ID=12, 0.6, 0.1, Generate.Toolpath.Linking)."},
    {"U_Debug", "Communication.ID", "Int32", "1",
     "The ID of the executable. It is used by different IO events as Abort and Progress status to differentiate "
     "different executables."},
    {"U_Debug", "Communication.TimeGranularity", "Real64", "0.2", "How often to update the progress event. [sec]"},
    {"U_Debug", "Debug", "", "", "This group sets the verbose level."},
    {"U_Debug", "Debug.VerboseLevel", "Enum", "5", "This set the level of feed back dumped."},
    {"U_Debug", "Debug.VerboseLevel.None", "EnumValue", "0", ""},
    {"U_Debug", "Debug.VerboseLevel.System", "EnumValue", "1", ""},
    {"U_Debug", "Debug.VerboseLevel.Error", "EnumValue", "2", ""},
    {"U_Debug", "Debug.VerboseLevel.Warning", "EnumValue", "3", ""},
    {"U_Debug", "Debug.VerboseLevel.Info", "EnumValue", "4", ""},
    {"U_Debug", "Debug.VerboseLevel.Note", "EnumValue", "5", ""},
    {"U_Debug", "Debug.VerboseLevel.All", "EnumValue", "6", ""},
    {"U_Debug", "Behavior.MaxAcceptableMemoryLoadingFactor", "Real64", "1.0",
     "If is 1 do nothing. If is less than one will enforce application restarting if the memory becomes fragmented and "
     "is allocated more than acceptable value. Can be used a value of 0.5 with good results."},
    {"U_IO", "Debug.Path", "String", "D:/HS/Output/", "Place where temporary files are stored."},
    {"U_IO", "Debug.SecondsToWaitForAFileToUnlock", "Int32", "0",
     "In multiprocess usage this is used to force file open to wait for a file to unlock usually 3..10 seconds."},
    {"U_Settings", "Behavior.IsParallel", "Bool", "y", ""},
    {"U_XMLReader", "XML.Out.Export.Attributes.Default", "Bool", "y", ""},
    {"U_XMLReader", "XML.Out.Export.Attributes.Type", "Bool", "y", ""},
    {"U_XMLReader", "XML.Out.Export.Attributes.Help", "Bool", "y", ""},
    {"U_XMLReader", "XML.Out.Export.Attributes.Policy", "Bool", "y", ""},
    {"U_XMLReader", "XML.Out.Export.Attributes.BoundLower", "Bool", "y", ""},
    {"U_XMLReader", "XML.Out.Export.Attributes.BoundUpper", "Bool", "y", ""},
    {"U_XMLReader", "XML.Out.Export.Attributes.File", "Bool", "n", ""},
    {"U_XMLReader", "XML.Out.Export.Attributes.Line", "Bool", "n", ""},
    {"U_XMLReader", "XML", "", "", "This group sets the behaviour of XML dumping."},
    {"U_XMLReader", "XML.XSLTFormatter", "String", "http://formatters.example.com/KMHS/Formatters/Config.xsl",
     "XSLT Formatter write at begining of a dump. If is void it is not written. No angular bracket required!"},
    {"U_XMLReader", "XML.DumpSettingsAfterLoading", "Bool", "n", "This group sets the behaviour of XML dumping."},
    {"U_XMLReader", "XML.Out.Export.Attributes", "Bool", "y", "Enable or disable Attribute exporting."},
    {"U_XMLReader", "XML.Out.Export.Comments", "Bool", "y", "Enable or disable Comments exporting."},
    {"U_XMLReader", "XML.Out.Export.CDATA", "Bool", "y", "Enable or disable CDATA exporting."},
    {"U_XMLReader", "XML.Out.Export.Commands", "Bool", "y", "Enable or disable Comments exporting."},
    {"U_XMLReader", "XML.Out.Export.Value", "Bool", "y", "Enable or disable CDATA value."},
    {"U_XMLReader", "XML.Out.Export.EnumDescriptors", "Bool", "y", "Enable or disable EnumDescriptors exporting."},
    {"U_XMLReader", "XML.Out.Export.Descriptors", "Bool", "y", "Enable or disable Descriptors elements exporting."},
    {"U_XMLReader", "XML.Out.Color.Background.Element.Name", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.Element.Value", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.Attribute.Name", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.Attribute.Value", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.Operator", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.CDATA.Name", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.CDATA.Value", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.Comment.Name", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.Comment.Value", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.Command.Name", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.Command.Value", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Background.Disabled", "Int32", "b0000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Element.Name", "Int32", "b1111", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Element.Value", "Int32", "b1110", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Attribute.Name", "Int32", "b0111", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Attribute.Value", "Int32", "b0110", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Operator", "Int32", "b1000", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.CDATA.Name", "Int32", "b1010", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.CDATA.Value", "Int32", "b0010", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Comment.Name", "Int32", "b1100", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Comment.Value", "Int32", "b0100", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Command.Name", "Int32", "b1011", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Command.Value", "Int32", "b0011", "BRGB"},
    {"U_XMLReader", "XML.Out.Color.Foreground.Disabled", "Int32", "b1100", "BRGB"},
};

const std::string Levels = "Debug.VerboseLevel.";

std::map<std::string, std::string> DescriptionOf(const Key& key) {
    std::map<std::string, std::string> description{
        {"Default", key.defaultValue}, {"Help", key.help}, {"Type", key.type}};
    if (std::string(key.key).starts_with(Levels)) description["Policy"] = "Developer";
    std::erase_if(description, [](const auto& attribute) { return attribute.second.empty(); });
    return description;
}

void CollectDeclared(const XML::Element& element, std::vector<std::string>& names) {
    if (element.AttributeValue("File").starts_with("src/Utils/")) names.push_back(GetFullName(element));
    for (const XML::Base* child : element.Children()) CollectDeclared(dynamic_cast<const XML::Element&>(*child), names);
}

TEST(Vocabulary, HasEachKeyWithItsDefaultAndDescription) {
    for (const Key& key : Vocabulary) {
        SCOPED_TRACE(key.key);
        const XML::Element& element = Settings::ToXMLElement(key.key);
        EXPECT_EQ(element.V(), key.defaultValue);
        EXPECT_EQ(element.SettingSession(), 1);
        auto description = DescriptionOf(key);
        std::map<std::string, std::string> found;
        for (const auto& [name, attribute] : element.Attributes()) found[name] = attribute.V();
        EXPECT_TRUE(found["File"].starts_with("src/Utils/" + std::string(key.folder) + "/")) << found["File"];
        EXPECT_GT(std::atoi(found["Line"].c_str()), 0);
        found.erase("File");
        found.erase("Line");
        EXPECT_EQ(found, description);
    }
}

TEST(Vocabulary, HasNinetySixKeys) {
    std::vector<std::string> names;
    CollectDeclared(Settings::ToXMLElement(""), names);
    EXPECT_EQ(std::size(Vocabulary), 96u);
    EXPECT_EQ(names.size(), 96u);
}

// Each group lists its members as they first came up.
TEST(Vocabulary, StandsInTheOrderOfRegistration) {
    std::map<std::string, std::vector<std::string>> members;
    for (const Key& key : Vocabulary) {
        std::string group;
        std::string rest = std::string(key.key) + ".";
        for (std::size_t dot = rest.find('.'); dot != std::string::npos; dot = rest.find('.')) {
            const std::string part = rest.substr(0, dot);
            auto& known = members[group];
            if (std::find(known.begin(), known.end(), part) == known.end()) known.push_back(part);
            group += "." + part;
            rest.erase(0, dot + 1);
        }
    }
    for (const auto& [group, expected] : members) {
        std::vector<std::string> found;
        for (const XML::Base* child : Settings::ToXMLElement(group).Children()) found.push_back(child->N());
        found.resize(std::min(found.size(), expected.size()));  // other tests may add keys of their own behind
        EXPECT_EQ(found, expected) << group;
    }
}

TEST(Vocabulary, ReadsAsItIsMeant) {
    EXPECT_EQ(Settings::ToInt("Console.Color.Foreground"), 7);
    EXPECT_EQ(Settings::ToInt("Console.Color.Background"), 1);
    EXPECT_EQ(Settings::ToInt("Console.ReSize"), 1);
    EXPECT_EQ(Settings::ToDouble("Cache.Cleaning.DeleteFactor"), 0.5);
    EXPECT_FALSE(Settings::ToBool("Console.Init"));
    EXPECT_TRUE(Settings::IsParallel());
}

}  // namespace
}  // namespace KM
