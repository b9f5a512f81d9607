#include "Utils/U_Console/Console.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace KM {
namespace {

[[noreturn]] void Become(const char* scene, const char* noColor) {
    if (noColor != nullptr)
        setenv("NO_COLOR", noColor, 1);
    else
        unsetenv("NO_COLOR");
    execl(KM_LOG_CHILD, KM_LOG_CHILD, scene, static_cast<char*>(nullptr));
    _exit(127);
}

/// All that comes from `file` until the other side is closed, and the end of the process there.
std::string Collect(int file, pid_t child) {
    std::string text;
    char buffer[4096];
    for (ssize_t got; (got = read(file, buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(got));
    close(file);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    return text;
}

/// The bytes that a scene of the child sends to a terminal.
std::string OnTerminal(const char* scene, const char* noColor = nullptr) {
    termios raw{};
    cfmakeraw(&raw);
    winsize size{};
    size.ws_col = 80;
    size.ws_row = 25;
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, &raw, &size);
    if (child == 0) Become(scene, noColor);
    return Collect(terminal, child);
}

std::string OnPipe(const char* scene) {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        close(ends[0]);
        close(ends[1]);
        Become(scene, nullptr);
    }
    close(ends[1]);
    return Collect(ends[0], child);
}

const std::string ColoredPicture =
    "<\x1b[0;92mInfo\x1b[0m>\x1b[0;97mok\x1b[0m</\x1b[0;92mInfo\x1b[0m>"
    "\n\x1b[0;97mx\x1b[0m";
const std::string PlainPicture = "<Info>ok</Info>\nx";

TEST(Console, StateAtStart) { EXPECT_EQ(OnPipe("state"), "50\"  \"0000"); }

TEST(Console, FirstCallsGiveTheAttributeWord) {
    // The word is 0x123 * 16 + 5; the background takes eight bits of it.
    EXPECT_EQ(OnPipe("colors"),
              std::to_string(0x1235) + " " + std::to_string(0x23) + " 5 " + std::to_string(0x123) + " ");
}

TEST(Console, IsNotTouchedWhileOutputIsOff) { EXPECT_EQ(OnPipe("colors off"), "7 0 5 1 "); }

TEST(Console, PaintsOnATerminal) { EXPECT_EQ(OnTerminal("picture"), ColoredPicture); }

TEST(Console, PaintsWhenTheStreamsAreDesynchronised) { EXPECT_EQ(OnTerminal("desynchronised"), ColoredPicture); }

TEST(Console, WritesNoEscapeWhereNoneIsWanted) {
    EXPECT_EQ(OnPipe("picture"), PlainPicture);
    EXPECT_EQ(OnTerminal("picture", "1"), PlainPicture);
    EXPECT_EQ(OnTerminal("picture", ""), ColoredPicture);  // set to nothing counts as not set
    EXPECT_EQ(OnTerminal("redirected"), PlainPicture);
    for (const char* scene : {"title", "init", "light", "late"}) {
        EXPECT_EQ(OnPipe(scene).find('\x1b'), std::string::npos) << scene;
        EXPECT_EQ(OnTerminal(scene, "1").find('\x1b'), std::string::npos) << scene;
    }
}

TEST(Console, SetsTheTitle) {
    EXPECT_EQ(OnTerminal("title"), "\x1b]0;a]bc\x07");
    EXPECT_EQ(OnPipe("title"), "");
}

TEST(Console, InitPaintsAndClears) {
    // Grey on blue; the device clears when it is made, and is cleared once more when it is first handed out.
    EXPECT_EQ(OnTerminal("init"), "\x1b[0;37;44m\x1b[2J\x1b[H\x1b[2J\x1b[H\x1b[0;97;44mx\x1b[0;37;44m");
}

TEST(Console, TellsOfABadSettingWhileTheDeviceIsMade) {
    EXPECT_EQ(OnPipe("bad init"), "<Error>Found an invalide indirerection. Return void!</Error>\nx");
}

TEST(Console, PaintsALightBackground) {
    // The first asking for the foreground gives the whole word, 247, of which a code holds two digits: 24, which comes
    // out as black. The 7 is stepped over as the closing backquote would be, and the true one comes up as text.
    EXPECT_EQ(OnTerminal("light"), "\x1b[0;37;107m\x1b[2J\x1b[H\x1b[0;30;107mx\x1b[0;30m`");
}

TEST(Console, ServesStaticObjectsToTheEnd) {
    const std::string text = OnPipe("late");
    EXPECT_TRUE(text.starts_with("x\n<Late>\n  <Info>from a destructor</Info>x\n<Late>\n")) << text;
    EXPECT_TRUE(text.ends_with("</Late>")) << text;
}

}  // namespace
}  // namespace KM
