#include "Platform/Keys.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <optional>
#include <string>

#include "Support/InChild.h"
#include "Support/OnTerminal.h"
#include "Support/TempFolder.h"

namespace KM::Platform {
namespace {

using KM::Test::InChild;
using KM::Test::OnTerminal;

/// Whether there is a keyboard, and the codes of so many keys.
std::string Look(int count) {
    std::string text = IsKeyboardThere() ? "keyboard" : "none";
    for (int i = 0; i < count; ++i) text.append(" ").append(std::to_string(TakeKey()));
    return text;
}

/// A look in a process that has this as its standard input; -1 closes it.
std::string LookWith(int input) {
    return InChild([input] {
        if (input < 0)
            close(STDIN_FILENO);
        else
            dup2(input, STDIN_FILENO);
        return Look(2);
    });
}

TEST(Keys, AreTakenOneByOneInTheirOrder) {
    EXPECT_EQ(OnTerminal("ab\x1B", [] { return Look(4); }), "keyboard 97 98 27 -1");
}

TEST(Keys, NeedNoEndOfLine) {
    EXPECT_EQ(OnTerminal("1", [] { return Look(1); }), "keyboard 49");
    EXPECT_EQ(OnTerminal("1\n2", [] { return Look(3); }), "keyboard 49 10 50");
}

TEST(Keys, AreNotWaitedFor) {
    EXPECT_EQ(OnTerminal("", [] { return Look(3); }), "keyboard -1 -1 -1");
}

TEST(Keys, HaveEachByte) {
    EXPECT_EQ(OnTerminal("\xFF\xC3\xA9", [] { return Look(4); }), "keyboard 255 195 169 -1");
}

// Those that are not taken go on to whoever reads next.
TEST(Keys, LeaveTheOthersWhereTheyAre) {
    EXPECT_EQ(OnTerminal("abc\n",
                         [] {
                             std::string text = Look(1).append(" ");
                             char rest[8];
                             const ssize_t size = read(STDIN_FILENO, rest, sizeof rest);
                             return text.append(rest, size > 0 ? static_cast<std::size_t>(size) : 0);
                         }),
              "keyboard 97 bc\n");
}

// `OnTerminal` looks at all settings before and after.
TEST(Keys, LeaveTheTerminalAsAnotherProgramHasSetIt) {
    EXPECT_EQ(OnTerminal("",
                         [] {
                             termios own{};
                             tcgetattr(STDIN_FILENO, &own);
                             const termios first = own;
                             own.c_lflag &= ~static_cast<tcflag_t>(ICANON | ISIG);
                             own.c_lflag |= ECHO;
                             own.c_cc[VMIN] = 3;
                             own.c_cc[VTIME] = 7;
                             tcsetattr(STDIN_FILENO, TCSANOW, &own);
                             std::string text = Look(2);
                             termios after{};
                             tcgetattr(STDIN_FILENO, &after);
                             if (after.c_lflag != own.c_lflag || after.c_cc[VMIN] != 3 || after.c_cc[VTIME] != 7)
                                 text += " disorder";
                             tcsetattr(STDIN_FILENO, TCSANOW, &first);
                             return text;
                         }),
              "keyboard -1 -1");
}

TEST(Keys, OfATerminalThatHungUpAreNone) {
    EXPECT_EQ(OnTerminal(std::nullopt, [] { return Look(2); }), "none -1 -1");
}

// Were it to touch the terminal, the system would stop it.
TEST(Keys, AreNotTakenInTheBackground) {
    EXPECT_EQ(OnTerminal("a",
                         [] {
                             std::string inBackground = InChild([] {
                                 setpgid(0, 0);
                                 return Look(2);
                             });
                             return inBackground.append(", then ").append(Look(1));
                         }),
              "none -1 -1, then keyboard 97");
}

TEST(Keys, OfAPipeAreNoneAndItsBytesStay) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "12", 2), 2);
    EXPECT_EQ(LookWith(ends[0]), "none -1 -1");
    char bytes[8];
    EXPECT_EQ(read(ends[0], bytes, sizeof bytes), 2);
    close(ends[1]);
    EXPECT_EQ(LookWith(ends[0]), "none -1 -1") << "at its end";
    close(ends[0]);
}

TEST(Keys, OfASocketAreNone) {
    int ends[2];
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    ASSERT_EQ(write(ends[1], "1", 1), 1);
    EXPECT_EQ(LookWith(ends[0]), "none -1 -1");
    for (const int end : ends) close(end);
}

TEST(Keys, OfAFileOrADeviceAreNone) {
    const KM::Test::TempFolder temp;
    temp.Write("keys", "123");
    for (const std::string& name : {temp / "keys", std::string("/dev/null"), std::string("/dev/zero")}) {
        SCOPED_TRACE(name);
        const int input = open(name.c_str(), O_RDONLY);
        ASSERT_GE(input, 0);
        EXPECT_EQ(LookWith(input), "none -1 -1");
        close(input);
    }
}

TEST(Keys, OfAClosedInputAreNone) { EXPECT_EQ(LookWith(-1), "none -1 -1"); }

}  // namespace
}  // namespace KM::Platform
