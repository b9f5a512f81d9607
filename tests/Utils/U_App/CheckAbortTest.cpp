#include "Utils/U_App/CheckAbort.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Support/OnTerminal.h"
#include "Support/TempFolder.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/LogState.h"
#include "Utils/U_Debug/Time.h"

namespace KM {
namespace {

using Test::InChild;
using Test::LogCapture;
using Test::LogOn;
using Test::OnTerminal;
using Test::TempFolder;
using Verbose::EMessageType;
using Texts = std::vector<std::string>;

const std::string FileFound = "UserAbortEvent detected as an AbortFile found!";
const std::string EscapePressed = "UserAbortEvent detected as ESC key pressed!";

/// Looks for the file at each call, in a folder of its own.
class CheckAbortByFile : public testing::Test {
protected:
    CheckAbortByFile() {
        Caching::Path(folder / "");
        ID(12);
        IsEnableInCacheLookingForCheckAbort(true);
        TimeGranularity(-1.0);
    }
    ~CheckAbortByFile() override {
        TimeGranularity(0.2);
        IsEnableInCacheLookingForCheckAbort(false);
        ID(1);
    }

    void AskToStop() const { folder.Write("!Break(ID=12)", ""); }
    bool IsAsked() const { return folder.Has("!Break(ID=12)"); }

    TempFolder folder;
};

TEST_F(CheckAbortByFile, StopsOnTheFileAndRemovesIt) {
    const LogCapture log;
    EXPECT_NO_THROW(CheckAbort());
    AskToStop();
    EXPECT_THROW(CheckAbort(), XUserAbort);
    EXPECT_FALSE(IsAsked());
    EXPECT_EQ(log.Lines(), Texts{"<Warning>" + FileFound + "</Warning>"});
    EXPECT_NO_THROW(CheckAbort());
}

TEST_F(CheckAbortByFile, LeavesTheFilesOfOthers) {
    const Texts others{"!Break(ID=1)", "!Break(ID=120)", "!Break(ID=12", "!Break(ID=12).txt", "Break(ID=12)"};
    for (const std::string& name : others) folder.Write(name, "");
    EXPECT_NO_THROW(CheckAbort());
    AskToStop();
    EXPECT_THROW(CheckAbort(), XUserAbort);
    EXPECT_EQ(folder.Names().size(), others.size());
}

TEST_F(CheckAbortByFile, LooksOnlyWhenItIsEnabled) {
    IsEnableInCacheLookingForCheckAbort(false);
    AskToStop();
    EXPECT_NO_THROW(CheckAbort());
    EXPECT_TRUE(IsAsked());
}

TEST_F(CheckAbortByFile, LooksOnceInAPeriod) {
    CheckAbort();
    TimeGranularity(1000.0);
    AskToStop();
    EXPECT_NO_THROW(CheckAbort());
    EXPECT_TRUE(IsAsked());

    const double start = Time::Get();
    TimeGranularity(-1.0);
    EXPECT_THROW(CheckAbort(), XUserAbort);  // and so notes the time
    AskToStop();
    TimeGranularity(0.05);
    try {
        for (;;) CheckAbort();
    } catch (const XUserAbort&) {}
    EXPECT_GT(Time::Get() - start, 0.05);
    EXPECT_FALSE(IsAsked());
}

TEST_F(CheckAbortByFile, PeriodThatIsNoNumberLooksNever) {
    TimeGranularity(std::stod("nan"));
    AskToStop();
    EXPECT_NO_THROW(CheckAbort());
}

TEST_F(CheckAbortByFile, FileThatCannotBeDeletedStopsOnce) {
    const LogCapture log;
    // A folder of that name is there, and stays. Each message looks for it again.
    std::filesystem::create_directories(folder / "!Break(ID=12)/full");
    EXPECT_THROW(CheckAbort(), XUserAbort);
    EXPECT_EQ(log.Lines(), Texts{"<Warning>" + FileFound + "</Warning>"});
    EXPECT_TRUE(IsAsked());
}

TEST_F(CheckAbortByFile, EachMessageIsACheckPoint) {
    const LogCapture log;
    AskToStop();
    EXPECT_THROW(Verbose::WriteMessage_1(EMessageType::All, "dropped by the level"), XUserAbort);
    AskToStop();
    EXPECT_THROW(Verbose::WriteMessage_1(EMessageType::Info, "passed by the level"), XUserAbort);
    AskToStop();
    EXPECT_NO_THROW(WriteLine("line"));
    EXPECT_EQ(log.Count(EMessageType::Info), 0);
}

TEST_F(CheckAbortByFile, DefaultAbortPolicyChecks) {
    EXPECT_FALSE(Application::Services::AbortEvent()());
    AskToStop();
    EXPECT_THROW(Application::Services::AbortEvent()(), XUserAbort);
}

/// Lines without the times of scopes.
Texts Without(const std::string& part, const Texts& lines) {
    Texts kept;
    for (const std::string& line : lines)
        if (line.find(part) == std::string::npos) kept.push_back(line);
    return kept;
}

TEST_F(CheckAbortByFile, ClosesAllScopesButTheOutermost) {
    const LogCapture log;
    {
        const Verbose::Scope a("A");
        try {
            const Verbose::Scope b("B");
            const Verbose::Scope c("C");
            AskToStop();
            CheckAbort();
            ADD_FAILURE() << "not stopped";
        } catch (const XUserAbort&) {}
        // Closed once: the destructors of B and C have not taken entries of others off the stack.
        ASSERT_EQ(Verbose::State().scopes.size(), 1u);
        EXPECT_EQ(Verbose::State().scopes[0].scope, &a);
    }
    const std::string forced = "<Warning>Scope forceful closed!</Warning>";
    const Texts expected{"<A>",
                         "  <B>",
                         "    <C>",
                         "      <Warning>" + FileFound + "</Warning>",
                         "      " + forced,
                         "    </C>",
                         "    " + forced,
                         "  </B>",
                         "</A>"};
    EXPECT_EQ(Without("<Time>", log.Lines()), expected);
    EXPECT_TRUE(Verbose::State().scopes.empty());
}

TEST_F(CheckAbortByFile, SurvivesScopesThatWereNotNested) {
    const LogCapture log;
    auto a = std::make_unique<Verbose::Scope>("A");
    auto b = std::make_unique<Verbose::Scope>("B");
    const Verbose::Scope c("C");
    b.reset();  // takes the entry of C, and leaves its own behind
    AskToStop();
    EXPECT_THROW(CheckAbort(), XUserAbort);
    EXPECT_EQ(Verbose::State().scopes.size(), 1u);
    a.reset();
    EXPECT_TRUE(Verbose::State().scopes.empty());
    Verbose::State().scopes.push_back({"whatever C takes when it closes", nullptr});
}

TEST_F(CheckAbortByFile, DoesNothingWhileAScopeCloses) {
    /// Checks within each line, as a device that reports progress would.
    struct CheckingDevice : DumpingDevice {
        void OnBegin() override { CheckAbort(); }
        void Reset() override {}
        void ApplyBackground() override {}
    } device;
    const LogOn on(device);
    {
        const Verbose::Scope scope("A");
        WriteLine("shows the scope");
        AskToStop();
    }
    EXPECT_TRUE(IsAsked());
    EXPECT_THROW(CheckAbort(), XUserAbort);
}

/// What a check comes to: "stopped" or "goes on", and its log.
std::string Check() {
    const LogCapture log;
    std::string text = "goes on";
    try {
        CheckAbort();
    } catch (const XUserAbort&) {
        text = "stopped";
    }
    for (const std::string& warning : log.Texts(EMessageType::Warning)) text += "\n" + warning;
    return text;
}

std::string Told(char key) { return std::string("Key = \"") + key + "\" was pressed! Ignore it."; }

TEST(CheckAbortByKey, EscapeStops) { EXPECT_EQ(OnTerminal("\x1b", Check), "stopped\n" + EscapePressed); }

TEST(CheckAbortByKey, OtherKeysAreTakenAndTold) {
    EXPECT_EQ(OnTerminal("a", Check), "goes on\n" + Told('a'));
    EXPECT_EQ(OnTerminal("\n", Check), "goes on\n" + Told('\n'));
}

// The message about a key is a check point itself, passed before it is written.
TEST(CheckAbortByKey, LastKeyIsToldFirst) {
    EXPECT_EQ(OnTerminal("abc", Check), "goes on\n" + Told('c') + "\n" + Told('b') + "\n" + Told('a'));
    EXPECT_EQ(OnTerminal("\x1b"
                         "a",
                         Check),
              "stopped\n" + Told('a') + "\n" + EscapePressed);
    EXPECT_EQ(OnTerminal("\x1b\x1b", Check), "stopped\n" + EscapePressed);
}

TEST(CheckAbortByKey, EscapeBehindOtherKeysKeepsThemUntold) {
    EXPECT_EQ(OnTerminal("a\n\x1b", Check), "stopped\n" + EscapePressed);
}

TEST(CheckAbortByKey, ManyKeysAreTakenInParts) {
    const auto checkTwice = [] {
        const auto keysIn = [](const std::string& text) { return std::count(text.begin(), text.end(), '='); };
        const auto first = keysIn(Check());
        return std::to_string(first) + " " + std::to_string(keysIn(Check()));
    };
    EXPECT_EQ(OnTerminal(std::string(150, 'a'), checkTwice), "100 50");
}

TEST(CheckAbortByKey, TerminalOfNoSessionHasKeys) {
    const std::string text = InChild([] {
        int terminal = -1;
        int ours = -1;
        if (openpty(&terminal, &ours, nullptr, nullptr, nullptr) != 0) return std::string("no terminal");
        const std::string before = Check();
        dup2(ours, STDIN_FILENO);
        // Read back, so that the keys are known to be there: a line as far as the terminal is concerned.
        char go = 0;
        if (write(terminal, "\n\x1b", 2) != 2 || read(STDIN_FILENO, &go, 1) != 1) return std::string("no keys");
        return before + "|" + Check();
    });
    EXPECT_EQ(text, "goes on|stopped\n" + EscapePressed);
}

TEST(CheckAbortByKey, KeysAreTakenOnce) {
    const auto checkTwice = [] {
        const std::string first = Check();
        return first + "|" + Check();
    };
    EXPECT_EQ(OnTerminal("ab", checkTwice), "goes on\n" + Told('b') + "\n" + Told('a') + "|goes on");
}

TEST(CheckAbortByKey, WhatIsNoTerminalHasNoKeys) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "\x1b", 1), 1);
    const auto checkWith = [](int input) {
        return InChild([input] {
            if (input >= 0) dup2(input, STDIN_FILENO);
            else close(STDIN_FILENO);
            return Check();
        });
    };
    for (const int input : {ends[0], -1}) EXPECT_EQ(checkWith(input), "goes on");
    close(ends[0]);
    close(ends[1]);
}

}  // namespace
}  // namespace KM
