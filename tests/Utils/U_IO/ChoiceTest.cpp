#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <optional>

#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Support/OnTerminal.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_IO/Processes.h"

namespace KM::IO {
namespace {

using Test::InChild;
using Test::LogCapture;
using Test::OnTerminal;
using Items = std::vector<std::string>;

const Items Three{"a", "b", "c"};

/// What a menu came to: the log line by line, then the choice, or what it threw.
std::string Choose(const Items& items) {
    const LogCapture log;
    std::string end;
    try {
        end = "chosen " + std::to_string(Choice(items));
    } catch (int thrown) {
        end = "thrown " + std::to_string(thrown);
    }
    std::string text;
    for (const std::string& line : log.Lines())
        if (line.find("Time") == std::string::npos) text += line + "\n";
    return text + end;
}

/// A menu in a process whose terminal is ours. The keys wait there before it looks; nothing hangs up instead.
std::string ChooseOnTerminal(const Items& items, const std::optional<std::string>& keys) {
    return OnTerminal(keys, [&items] { return Choose(items); });
}

const std::string Menu =
    "  <Info>0: a</Info>\n"
    "  <Info>1: b</Info>\n"
    "  <Info>2: c</Info>\n"
    "  <Info>Your Choice [0 - 2] ? </Info>\n";
const std::string Begin = "<SelectChoice>\n";
const std::string End = "</SelectChoice>\n";

TEST(Choice, TakesADigit) {
    EXPECT_EQ(ChooseOnTerminal(Three, "2"),
              Begin + Menu + "  <Note>The choice: 2: c was selected.</Note>\n" + End + "chosen 2");
    EXPECT_EQ(ChooseOnTerminal(Three, "01"),
              Begin + Menu + "  <Note>The choice: 0: a was selected.</Note>\n" + End + "chosen 0");
}

TEST(Choice, AsksAgainAfterAnyOtherKey) {
    EXPECT_EQ(ChooseOnTerminal(Three, "3x1"),
              Begin + Menu + "  <Info>The choice: 3 isn't a valid one. Please try again.</Info>\n" + Menu +
                  "  <Info>The choice: x isn't a valid one. Please try again.</Info>\n" + Menu +
                  "  <Note>The choice: 1: b was selected.</Note>\n" + End + "chosen 1");
}

TEST(Choice, EscapeThrowsAnInt) {
    EXPECT_EQ(ChooseOnTerminal(Three, "\x1B"),
              Begin + Menu + "  <Info>Esc Pressed execution aborted.</Info>\n" + End + "thrown 27");
}

TEST(Choice, KnowsTenKeys) {
    const Items many(12, "item");
    const std::string text = ChooseOnTerminal(many, "9");
    EXPECT_NE(text.find("<Info>11: item</Info>"), std::string::npos) << text;
    EXPECT_NE(text.find("Your Choice [0 - 11] ? "), std::string::npos) << text;
    EXPECT_EQ(text.substr(text.size() - 8), "chosen 9");
}

TEST(Choice, StopsWhenTheUserWantsByOtherMeans) {
    struct : Application::AbortEventPolicy {
        bool operator()() const override { return true; }
    } policy;
    EXPECT_EQ(OnTerminal(" ",
                         [&] {
                             Application::Services::AbortEvent(policy);
                             try {
                                 Choice(Three);
                             } catch (const XUserAbort&) {
                                 return std::string("stopped");
                             }
                             return std::string("chosen");
                         }),
              "stopped");
}

TEST(Choice, OfNothingThrowsAnInt) { EXPECT_EQ(ChooseOnTerminal({}, "0"), "thrown 27"); }

TEST(Choice, TerminalThatHangsUpThrowsAnInt) {
    const std::string text = ChooseOnTerminal(Three, std::nullopt);
    EXPECT_EQ(text.substr(text.size() - 9), "thrown 27");
}

TEST(Choice, WithoutTerminalThrowsAnInt) {
    const auto chooseWith = [](int input) {
        return InChild([input] {
            if (input >= 0) dup2(input, STDIN_FILENO);
            else close(STDIN_FILENO);
            return Choose(Three);
        });
    };
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "1", 1), 1);
    const int null = open("/dev/null", O_RDONLY);
    for (const int input : {ends[0], null, -1}) EXPECT_EQ(chooseWith(input), Begin + Menu + End + "thrown 27");
    close(ends[0]);
    close(ends[1]);
    close(null);
}

}  // namespace
}  // namespace KM::IO
