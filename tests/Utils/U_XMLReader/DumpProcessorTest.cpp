#include "Utils/U_XMLReader/DumpProcessor.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <sstream>
#include <streambuf>
#include <string>

#include "Support/SettingKept.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_XMLReader/Reader.h"

namespace KM::XML {
namespace {

using Test::SettingKept;

std::string Written(const std::function<void(DumpProcessor&)>& events, bool escape = true,
                    const std::string& indent = "  ", int depth = 0) {
    std::ostringstream out;
    DumpProcessor processor(out, escape, indent, depth);
    events(processor);
    return out.str();
}

TEST(DumpProcessor, WritesElements) {
    EXPECT_EQ(Written([](DumpProcessor& dump) {
                  dump.OnElementBegin("a");
                  dump.OnAttribute("x", "1");
                  dump.OnAttributesEnd();
                  dump.OnValue("v");
                  dump.OnElementBegin("b");
                  dump.OnAttributesEnd();
                  dump.OnElementEnd(true);
                  dump.OnElementEnd(false);
              }),
              "\n<a x=\"1\">v\n  <b></b>\n</a>");
}

TEST(DumpProcessor, WritesWhatStandsBetweenElements) {
    const auto events = [](DumpProcessor& dump) {
        dump.OnComment("a&");
        dump.OnCDATA("<b>");
        dump.OnCommand("c\nd");
    };
    EXPECT_EQ(Written(events), "\n<!--a&-->\n<![CDATA[<b>]]>\n<?c\nd\n?>");
    EXPECT_EQ(Written(events, true, "\t", 2), "\n\t\t<!--a&-->\n\t\t<![CDATA[<b>]]>\n\t\t<?c\nd\n\t\t?>");
}

TEST(DumpProcessor, EscapesWhenAsked) {
    const auto events = [](DumpProcessor& dump) {
        dump.OnElementBegin("a");
        dump.OnAttribute("x", "<>&'\"");
        dump.OnAttributesEnd();
        dump.OnValue("<>&'\"");
    };
    EXPECT_EQ(Written(events), "\n<a x=\"&lt;&gt;&amp;&apos;&quot;\">&lt;&gt;&amp;&apos;&quot;");
    EXPECT_EQ(Written(events, false), "\n<a x=\"<>&'\"\"><>&'\"");
}

TEST(DumpProcessor, SettingsSwitchAttributes) {
    const auto events = [](DumpProcessor& dump) {
        for (const char* name : {"Default", "Type", "Help", "Policy", "BoundLower", "BoundUpper", "File", "Line", "SS"})
            dump.OnAttribute(name, "1");
        dump.OnAttribute("Type", "");
    };
    EXPECT_EQ(Written(events),
              " Default=\"1\" Type=\"1\" Help=\"1\" Policy=\"1\" BoundLower=\"1\" BoundUpper=\"1\" SS=\"1\"");
    const SettingKept file("XML.Out.Export.Attributes.File", "y");
    const SettingKept help("XML.Out.Export.Attributes.Help", "n");
    const SettingKept group("XML.Out.Export.Attributes", "n");
    EXPECT_EQ(Written(events),
              " Default=\"1\" Type=\"1\" Policy=\"1\" BoundLower=\"1\" BoundUpper=\"1\" File=\"1\" SS=\"1\"")
        << "the group itself switches nothing";
}

TEST(DumpProcessor, ASettingSwitchesValues) {
    const auto events = [](DumpProcessor& dump) { dump.OnValue("v"); };
    EXPECT_EQ(Written(events), "v");
    const SettingKept value("XML.Out.Export.Value", "off");
    EXPECT_EQ(Written(events), "");
}

TEST(DumpProcessor, SurvivesEventsOutOfTurn) {
    EXPECT_EQ(Written([](DumpProcessor& dump) {
                  dump.OnElementEnd(false);
                  dump.OnElementBegin("a");
                  dump.OnElementEnd(true);
              }),
              "\n</>\n<a</a>");
}

TEST(DumpProcessor, WildDepthsAreBoundedOnEachLine) {
    const auto read = [](DumpProcessor& dump) { ReadFromString("<a><b/></a>", dump, true); };
    EXPECT_EQ(Written(read, true, "  ", INT_MAX), Written(read, true, "  ", 1000));
    const auto climb = [](DumpProcessor& dump) {
        dump.OnElementEnd(false);
        dump.OnComment("a");
    };
    EXPECT_EQ(Written(climb, true, "  ", INT_MIN), Written(climb));
}

TEST(DumpProcessor, TakesAReaderToo) {
    EXPECT_EQ(Written([](DumpProcessor& dump) { ReadFromString("<a b='1'><c/>d</a>", dump, true); }),
              "\n<a b=\"1\"\n  <c</c>d\n</a>")
        << "a reader does not tell the end of attributes";
}

/// Keeps each byte with the colours that the console had when it was written, a letter for each of the two.
class ColorRecorder : public std::streambuf {
public:
    std::string journal;

protected:
    int_type overflow(int_type c) override {
        if (!traits_type::eq_int_type(c, traits_type::eof())) Note(traits_type::to_char_type(c));
        return traits_type::not_eof(c);
    }
    std::streamsize xsputn(const char* text, std::streamsize count) override {
        for (std::streamsize i = 0; i < count; ++i) Note(text[i]);
        return count;
    }

private:
    void Note(char c) {
        if (c == '\n') return;
        const int color = Console::GetForeground() + 16 * Console::GetBackground();
        if (color != color_) journal.append("{").append(std::to_string(color)).append("}");
        color_ = color;
        journal += c;
    }
    int color_ = -1;
};

TEST(DumpProcessor, SetsTheColorsOfEachPiece) {
    Console::GetForeground();
    Console::GetBackground();
    ColorRecorder recorder;
    std::ostream out(&recorder);
    const SettingKept background("XML.Out.Color.Background.Comment.Value", "b0001");
    DumpProcessor dump(out, true, "", 0);
    dump.OnElementBegin("a");
    dump.OnAttribute("b", "c");
    dump.OnAttributesEnd();
    dump.OnValue("v");
    dump.OnComment("w");
    dump.OnCDATA("x");
    dump.OnCommand("y");
    dump.OnElementEnd(false);
    // b1000 operators, b1111 and b1110 element, b0111 and b0110 attribute, and so on; the comment is on blue.
    EXPECT_EQ(recorder.journal,
              "{8}<{15}a{7} b{8}=\"{6}c{8}\">{14}v{12}<!--{20}w{12}-->{10}<![CDATA[{2}x{10}]]>{11}<?{3}y{11}?>"
              "{8}</{15}a{8}>");
    Console::SetForeground(7);
    Console::SetBackground(0);
}

TEST(DumpProcessor, ReadsColorsOnceAndWithoutArguments) {
    std::ostringstream out;
    const SettingKept color("XML.Out.Color.Foreground.Element.Value", "b0101");
    DumpProcessor dump(out, true, "", 0);
    const SettingKept later("XML.Out.Color.Foreground.Element.Value", "b0001");
    dump.OnValue("v");
    Console::GetForeground();
    EXPECT_EQ(Console::GetForeground(), 5);
    Console::SetForeground(7);
}

}  // namespace
}  // namespace KM::XML
