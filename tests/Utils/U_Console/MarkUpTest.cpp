#include <gtest/gtest.h>

#include <random>
#include <string>

#include "Support/LogOn.h"
#include "Support/RecordingDevice.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Console/PlainMarkUp.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

using Test::PlainMarkUp;

/// Puts any text at the very end of the line of a message, where nothing follows it.
class EndingFormatter : public OutputFormatter {
public:
    std::string ending;
    std::string CloseMarkEnd() override { return ending; }
    bool IsOpenLabelPlain() override { return true; }
    bool IsCloseLabelPlain() override { return true; }
};

class MarkUp : public testing::Test {
protected:
    /// What the device is told for `text` as the end of a line.
    std::string Calls(const std::string& text) {
        EndingFormatter formatter;
        formatter.ending = text;
        Services::SetOutputFormatter(&formatter);
        device_.journal.clear();
        Verbose::WriteMessage_1(Verbose::EMessageType::Info, "m");
        Services::SetOutputFormatter(nullptr);
        const std::string before = "{OnBegin}Info{FgColorB 15}m{FgColorB 7}Info";
        const std::string after = "{OnEnd}";
        std::string calls = device_.Take();
        EXPECT_TRUE(calls.starts_with(before) && calls.ends_with(after)) << calls;
        return calls.substr(before.size(), calls.size() - before.size() - after.size());
    }

    KM::Test::RecordingDevice device_;
    KM::Test::LogOn on_{device_};
};

TEST_F(MarkUp, TogglesFiveKinds) {
    EXPECT_EQ(Calls("a`B`b`B`"), "a{BoldB}b{BoldE}");
    EXPECT_EQ(Calls("`I``I``I`"), "{ItalicB}{ItalicE}{ItalicB}");
    EXPECT_EQ(Calls("`U``U`x`U`"), "{UnderlineB}{UnderlineE}x{UnderlineB}");
    EXPECT_EQ(Calls("`H`link`H`"), "{HyperlinkB}link{HyperlinkE}");
    EXPECT_EQ(Calls("`A``A`"), "{AccoladeB}{AccoladeE}");
}

TEST_F(MarkUp, FlagsStartAfreshInEachLine) {
    EXPECT_EQ(Calls("`B``I``U``H``A`"), "{BoldB}{ItalicB}{UnderlineB}{HyperlinkB}{AccoladeB}");
    EXPECT_EQ(Calls("`B``T``S``s`"), "{BoldB}{StrikeB}{SuperB}{SubB}");
}

TEST_F(MarkUp, StrikeSuperAndSubLookAtOtherFlags) {
    EXPECT_EQ(Calls("`T``T`"), "{StrikeB}{StrikeB}");
    EXPECT_EQ(Calls("`I``T``I``T`"), "{ItalicB}{StrikeE}{ItalicE}{StrikeB}");
    EXPECT_EQ(Calls("`S``S`"), "{SuperB}{SuperB}");
    EXPECT_EQ(Calls("`U``S``U``S`"), "{UnderlineB}{SuperE}{UnderlineE}{SuperB}");
    EXPECT_EQ(Calls("`s``s`"), "{SubB}{SubB}");
    EXPECT_EQ(Calls("`H``s``H``s`"), "{HyperlinkB}{SubE}{HyperlinkE}{SubB}");
    // None of them is moved by bold or accolade.
    EXPECT_EQ(Calls("`B``A``T``S``s`"), "{BoldB}{AccoladeB}{StrikeB}{SuperB}{SubB}");
}

TEST_F(MarkUp, NumbersHaveOneOrTwoDigits) {
    EXPECT_EQ(Calls("`C12`text`C7`"), "{FgColorB 12}text{FgColorB 7}");
    EXPECT_EQ(Calls("`c4`text`c`"), "{BkColorB 4}text{BkColorE}");
    EXPECT_EQ(Calls("`Z99`text`Z`"), "{SizeB 99}text{SizeE}");
    EXPECT_EQ(Calls("`C`"), "{FgColorE}");
    EXPECT_EQ(Calls("`C00`x"), "{FgColorB 0}x");
}

TEST_F(MarkUp, TheByteBehindANumberIsSteppedOver) {
    // A third digit stands where the closing backquote should be, and that one begins the next code.
    EXPECT_EQ(Calls("`C123`B`x"), "{FgColorB 12}{BoldB}x");
    EXPECT_EQ(Calls("`C1xyz"), "{FgColorB 1}yz");
}

TEST_F(MarkUp, TakesAnyByteAsANumber) {
    EXPECT_EQ(Calls("`Cx`y"), "{FgColorB 0}y");
    EXPECT_EQ(Calls("`Cx5`y"), "{FgColorB 0}y");
    EXPECT_EQ(Calls("`C-5`y"), "{FgColorB -5}y");
    EXPECT_EQ(Calls("`C5x`y"), "{FgColorB 5}y");
    EXPECT_EQ(Calls(std::string("`C\0`y", 5)), "{FgColorB 0}y");
}

TEST_F(MarkUp, UnknownCodesLoseTheirBackquote) {
    EXPECT_EQ(Calls("`Q"), "Q");
    EXPECT_EQ(Calls("`Q`x"), "Qx");
    EXPECT_EQ(Calls("`b`"), "b`");
    EXPECT_EQ(Calls("``B`x"), "{BoldB}x");
    EXPECT_EQ(Calls("```"), "`");
}

TEST_F(MarkUp, ALoneBackquoteAtTheEndIsText) {
    EXPECT_EQ(Calls("`"), "`");
    EXPECT_EQ(Calls("a`"), "a`");
}

TEST_F(MarkUp, CodesAtTheVeryEnd) {
    EXPECT_EQ(Calls("x`B"), "x{BoldB}");
    EXPECT_EQ(Calls("x`T"), "x{StrikeB}");
    EXPECT_EQ(Calls("x`C5"), "x{FgColorB 5}");
    EXPECT_EQ(Calls("x`Z12"), "x{SizeB 12}");
    // Neither begins nor ends anything.
    for (const char* cut : {"x`C", "x`c", "x`Z"}) EXPECT_EQ(Calls(cut), "x") << cut;
}

TEST_F(MarkUp, WritesByteByByte) {
    WriteLine("several bytes");
    EXPECT_EQ(device_.longestWrite, 1u);
}

TEST_F(MarkUp, BytesPassUnchanged) {
    std::string all;
    for (int c = 0; c < 256; ++c)
        if (c != '`') all += static_cast<char>(c);
    EXPECT_EQ(Calls(all), all);
}

TEST_F(MarkUp, WorksInWholeLines) {
    device_.Take();
    WriteLine("`I`x");
    EXPECT_EQ(device_.Take(), "{OnBegin}{FgColorB 15}{FgColorB 15}{ItalicB}x{FgColorE}{FgColorB 7}{OnEnd}");
}

TEST_F(MarkUp, ReadsAnyTextAsThePlainFormDoes) {
    const std::string bytes = "``````BIUHATSsCcZ0123456789xy -+`\n";
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        std::string text;
        for (std::size_t length = random() % 40; text.size() < length;) text += bytes[random() % bytes.size()];
        ASSERT_EQ("{OnBegin}" + Calls(text) + "{OnEnd}", PlainMarkUp(text)) << text;
    }
}

class ThrowingDevice : public KM::Test::RecordingDevice {
public:
    std::string thrower;

    void Write(const std::string& text) override {
        RecordingDevice::Write(text);
        if (thrower == "Write") throw 1;
    }
    void OnBegin() override {
        RecordingDevice::OnBegin();
        if (thrower == "OnBegin") throw 2;
    }
    void OnEnd() override {
        RecordingDevice::OnEnd();
        if (thrower == "OnEnd" || thrower == "Write") throw 3;
    }
};

TEST(MarkUpOnAThrowingDevice, EndsTheLineThatHasBegun) {
    ThrowingDevice device;
    const KM::Test::LogOn on(device);
    const auto thrown = [&](const char* thrower) {
        device.thrower = thrower;
        device.journal.clear();
        try {
            WriteLine("x");
        } catch (int which) { return which; }
        return 0;
    };
    EXPECT_EQ(thrown("Write"), 1);  // and what `OnEnd` throws on the way is forgotten
    EXPECT_EQ(device.Take(), "{OnBegin}{FgColorB 15}{FgColorB 15}x{OnEnd}");
    EXPECT_EQ(thrown("OnBegin"), 2);
    EXPECT_EQ(device.Take(), "{OnBegin}");
    EXPECT_EQ(thrown("OnEnd"), 3);
    EXPECT_EQ(thrown(""), 0);
}

}  // namespace
}  // namespace KM
