#include "Utils/U_XMLReader/CppHeader.h"

#include <gtest/gtest.h>

#include <climits>
#include <sstream>
#include <string>
#include <vector>

#include "Support/LogCapture.h"
#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/Reader.h"

namespace KM::XML {
namespace {

using Test::LogCapture;

const std::string Opening =
    "#pragma once\n//Automatic generated header file.\nnamespace KM\n{\n\t using namespace ::KM::RichType;";
const std::string Closing = "\n}//namespace KM";

std::string Generated(const Element& root, int indent = 0) {
    std::ostringstream out;
    ToCPPHeader(out, root, indent);
    return out.str();
}

/// What is written for a child of a root of an unknown type, which writes nothing itself.
std::string Member(const std::string& text) {
    const LogCapture log;
    Element root("");
    ReadElementFromString("<r Type='none'>" + text + "</r>", root, false);
    std::string result = Generated(root);
    EXPECT_TRUE(result.starts_with(Opening) && result.ends_with(Closing)) << result;
    return result.substr(Opening.size(), result.size() - Opening.size() - Closing.size());
}

TEST(CppHeader, PlainTypes) {
    const struct {
        const char* type;
        const char* line;
    } rows[] = {{"Int32", "RTInt32, n, int"},      {"Bool", "RTBool, n, bool"},
                {"Real64", "RTReal64, n, double"}, {"AutoReal64", "RTReal64, n, double"},
                {"Real32", "RTReal32, n, float"},  {"AutoReal32", "RTReal32, n, float"},
                {"String", "RTString, n, String"}};
    for (const auto& row : rows)
        EXPECT_EQ(Member(std::string("<n Type='") + row.type + "' Default='d' Help='h &amp; i'>v</n>"),
                  std::string("\n\tRTPODFactory(") + row.line + ", \"d\", \"h & i\") ;");
    EXPECT_EQ(Member("<n Type='Bool'/>"), "\n\tRTPODFactory(RTBool, n, bool, \"\", \"\") ;");
}

TEST(CppHeader, Enumerations) {
    EXPECT_EQ(Member("<e Type='Enum' Default='1' Help='h'><a Type='EnumValue'>0</a><b Type='EnumValue'/>"
                     "<c Type='EnumValue'>2</c></e>"),
              "\n\tRTEnumBegin(e, \"1\", \"h\") \n\t\ta = 0,\n\t\tb,\n\t\tc = 2\n\t}; } e;\n");
    EXPECT_EQ(Member("<f Type='Flag'><a Type='FlagValue'>1</a></f>"),
              "\n\tRTEnumBegin(f, \"\", \"\") \n\t\ta = 1\n\t}; } f;\n");
    EXPECT_EQ(Member("<f Type='Flag'/>"), "\n\tRTEnumBegin(f, \"\", \"\") \n\t}; } f;\n");
    EXPECT_EQ(Member("<f Type='Flag'><a Type='FlagValue'/><d Type='Descriptor'/></f>"),
              "\n\tRTEnumBegin(f, \"\", \"\") \n\t\ta,\n\t}; } f;\n")
        << "what is left out is a child all the same";
}

TEST(CppHeader, Groups) {
    EXPECT_EQ(Member("<g Help='h'/>"),
              "\n\n\tclass gType: public Base\n\t{\n\tpublic:\n\t\tRTExpandAttributes(g, \"h\")\n\t} g;");
    EXPECT_EQ(Member("<g><a Type='Bool'/><d Type='Descriptor'><x/></d><e Type='Enum'/></g>"),
              "\n\n\tclass gType: public Base\n\t{\n\tpublic:\n\t\tRTExpandAttributes(g, \"\")"
              "\n\t\tRTPODFactory(RTBool, a, bool, \"\", \"\") ;"
              "\n\t\tRTEnumBegin(e, \"\", \"\") \n\t\t}; } e;\n"
              "\n\n\t\tvoid Apply(Visitor& v)\n\t\t{\n\t\t\tAutoRichTypeVisitor(v);\n\t\t\tv(*this);"
              "\n\t\t\ta.Apply(v);\n\t\t\te.Apply(v);\n\t\t}\n\t} g;");
}

TEST(CppHeader, TheRoot) {
    EXPECT_EQ(Generated(Element("r")), Opening +
                                           "\n\nclass rType: public Base\n{\npublic:\n\tRTExpandAttributes(r, \"\")"
                                           "\n};//r" +
                                           Closing);
    Element root("r");
    root["a"] += Attribute("Type", "Int32");
    EXPECT_EQ(Generated(root, 1),
              Opening +
                  "\n\n\tclass rType: public Base\n\t{\n\tpublic:\n\t\tRTExpandAttributes(r, \"\")"
                  "\n\t\tRTPODFactory(RTInt32, a, int, \"\", \"\") ;"
                  "\n\n\t\tvoid Apply(Visitor& v)\n\t\t{\n\t\t\tAutoRichTypeVisitor(v);\n\t\t\tv(*this);"
                  "\n\t\t\ta.Apply(v);\n\t\t}\n\t};//r" +
                  Closing);
    root += Attribute("Type", "Descriptor");
    EXPECT_EQ(Generated(root), Opening + Closing);
}

TEST(CppHeader, AnUnknownTypeIsAnErrorAndTheWalkGoesOn) {
    Element root("r");
    root += Attribute("Type", "Int64");
    root["a"] += Attribute("Type", "Bool");
    const LogCapture log;
    EXPECT_EQ(Generated(root), Opening + "\n\tRTPODFactory(RTBool, a, bool, \"\", \"\") ;" + Closing);
    EXPECT_EQ(log.Texts(Verbose::EMessageType::Error),
              std::vector<std::string>{"Type: Int64 is unknown while processing element: r!"});
}

TEST(CppHeader, OfAllSettingsKnowsEachType) {
    const LogCapture log;
    const std::string text = Generated(Settings::ToXMLElement(""));
    EXPECT_EQ(log.Count(Verbose::EMessageType::Error), 0);
    EXPECT_NE(text.find("\n\t\tRTPODFactory(RTBool, IsParallel, bool, \"y\", \"\") ;"), std::string::npos);
    EXPECT_TRUE(text.ends_with("\n};//Settings\n}//namespace KM"));
}

TEST(CppHeader, SurvivesAnyTree) {
    Element root("r");
    root += Comment("left out");
    Element* at = &root;
    for (int i = 1; i < 20000; ++i) {
        at = &at->NewChild("a");
        *at += Attribute("Type", "Enum");
    }
    const std::string text = Generated(root);
    EXPECT_NE(text.find("\n};//r"), std::string::npos);
    EXPECT_TRUE(Generated(Element("r"), INT_MIN).starts_with(Opening));
    EXPECT_TRUE(Generated(root["a"], INT_MAX).ends_with(Closing));
}

TEST(CppHeader, AWildIndentIsBoundedOnEachLine) {
    Element root("r");
    root["a.b"];
    EXPECT_EQ(Generated(root, INT_MAX), Generated(root, 1000));
}

}  // namespace
}  // namespace KM::XML
