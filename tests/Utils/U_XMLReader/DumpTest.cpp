#include "Utils/U_XMLReader/Dump.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/DumpProcessor.h"
#include "Utils/U_XMLReader/EventJournal.h"
#include "Utils/U_XMLReader/Reader.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM::XML {
namespace {

using Test::EventJournal;
using Test::InChild;
using Test::LogCapture;

std::string Told(const Element& element, const Element* before = nullptr, const Element* after = nullptr) {
    EventJournal journal;
    Dump(element, journal, before, after);
    return journal.Take();
}

/// Shows stamps for its life time.
struct Stamped {
    Stamped() { SetIsDumpSettingSession(true); }
    Stamped(const Stamped&) = delete;
    Stamped& operator=(const Stamped&) = delete;
    ~Stamped() { SetIsDumpSettingSession(false); }
};

TEST(Dump, TellsATree) {
    Element root("a", "v");
    root += Attribute("z", "1");
    root += Attribute("b", "");
    root += Attribute("", "nameless");
    root["c.d"].V("w");
    root["e"];
    EXPECT_EQ(Told(root), "<a b=;z=1;>\"v\"<c ><d >\"w\"/\\<e >/\\");
}

TEST(Dump, TellsWhatAnElementStandsFor) {
    EXPECT_EQ(Told(Element(CommentName, "1")), "!1!");
    EXPECT_EQ(Told(Element(CDATAName, "2")), "[2]");
    EXPECT_EQ(Told(Element(CommandName, "3")), "?3?");
    Element comment(CommentName, "4");
    comment["lost"];
    EXPECT_EQ(Told(comment), "!4!");
    Element root("a");
    root.NewChild(CommandName, "5");
    EXPECT_EQ(Told(root), "<a >?5?\\");
}

TEST(Dump, TellsNodesThatWereMadeByHand) {
    Element root("a");
    root += Comment("1");
    root += CDATA("2");
    root += Comment("named", "3", &root);
    EXPECT_EQ(Told(root), "<a >!1![2]!3!\\");
}

TEST(Dump, BeforeAndAfterGoWithRootsOnly) {
    Element before("before");
    before["b"].V("1");
    Element after("after");
    after.NewChild(CommentName, "2");
    Element root("a");
    root["c"];
    EXPECT_EQ(Told(root, &before, &after), "<b >\"1\"/<a ><c >/\\!2!");
    EXPECT_EQ(Told(root, nullptr, &after), "<a ><c >/\\!2!");
    EXPECT_EQ(Told(root["c"], &before, &after), "<c >/");
    EXPECT_EQ(Told(Element(CommentName, "x"), &before, &after), "!x!");
}

TEST(Dump, ShowsStampsWhenAsked) {
    Element root("a");
    root.SettingSession(5);
    root += Attribute("b", "1");
    root["c"].SettingSession(0x1F1);
    root["d"].SettingSession(-1);
    EXPECT_EQ(Told(root), "<a b=1;><c >/<d >/\\");
    const Stamped stamped;
    EXPECT_EQ(Told(root), "<a SS=00000101;b=1;><c SS=11110001;>/<d SS=11111111;>/\\");
}

TEST(Dump, ToAStream) {
    Element root("a", "<&>");
    root += Attribute("b", "'\"");
    root["c.d"].V("1");
    std::ostringstream out;
    EXPECT_EQ(&(out << root), &out);
    EXPECT_EQ(out.str(), "\n<a b=\"&apos;&quot;\">&lt;&amp;&gt;\n  <c>\n    <d>1</d>\n  </c>\n</a>");
}

TEST(Dump, ToAStreamKeepsTheForeground) {
    Console::GetForeground();
    Console::SetForeground(11);
    std::ostringstream out;
    out << Element("a");
    EXPECT_EQ(Console::GetForeground(), 11);
    Console::SetForeground(7);
}

TEST(Dump, GoesAsDeepAsTheTree) {
    Element root("a");
    Element* at = &root;
    for (int i = 1; i < 100000; ++i) at = &at->NewChild("a");
    std::ostringstream out;
    DumpProcessor processor(out, true, "", 0);
    Dump(root, processor, &root, nullptr);
    // "\n<a>" and "\n</a>" on each level, but for one line feed less on the last; ahead of it the same without the
    // root.
    EXPECT_EQ(out.str().size(), (100000u * 9 - 1) + (99999u * 9 - 1));
}

/// Each value, and each attribute that a dump shows.
std::string Contents(const Element& root) {
    EventJournal journal;
    Dump(root, journal, nullptr, nullptr);
    return journal.Take();
}

TEST(Dump, OfAllSettingsChangesNothingWhenItIsReadBack) {
    Element& settings = Settings::ToXMLElement("");
    const std::string before = Contents(settings);
    std::ostringstream out;
    out << settings;
    ASSERT_NE(out.str().find("<BoundLower"), std::string::npos);
    ReadElementFromString(out.str(), settings, true);
    EXPECT_EQ(Contents(settings), before);
    std::ostringstream again;
    again << settings;
    EXPECT_EQ(again.str(), out.str());
}

TEST(Dump, OfAllSettingsMakesTheTreeAnew) {
    std::ostringstream out;
    out << Settings::ToXMLElement("");
    Element copy("");
    ReadElementFromString(out.str(), copy, false);
    std::ostringstream again;
    again << copy;
    EXPECT_EQ(again.str(), out.str());
    EXPECT_EQ(copy.ToString("Console.Color.Foreground"), "b0111");
    EXPECT_EQ(copy["Communication"].AttributeValue("File"), "") << "switched off by a setting";
}

TEST(Dump, LegendOfTheStamps) {
    EXPECT_EQ(InChild([] {
                  for (int i = 1; i <= 9; ++i) IncrementSettingSession("session " + std::to_string(i));
                  LogCapture log;
                  std::ostringstream out;
                  DumpSessionSettingNameTable(out);
                  if (!out.str().empty()) return std::string("wrote to the stream");
                  std::string lines = log.Lines().front() + "\n";
                  for (const std::string& text : log.Texts(Verbose::EMessageType::Info)) lines += text + "\n";
                  return lines;
              }),
              "<DumpSessionSettingNameTable>\n"
              "This is a legend for the SS (= SessionSetting) attribute;\n"
              "00000001 - Static initialisation;\n"
              "00000010 - session 1\n00000100 - session 2\n00001000 - session 3\n00010000 - session 4\n"
              "00100000 - session 5\n01000000 - session 6\n10000000 - session 7\n"
              "00000000 - session 8\n00000000 - session 9\n");
}

}  // namespace
}  // namespace KM::XML
