#include "Utils/U_Debug/Verbose.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "Support/LogCapture.h"
#include "Support/LogOn.h"
#include "Support/Pattern.h"
#include "Support/RecordingDevice.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/LogState.h"

namespace KM {
namespace {

using Test::LogCapture;
using Verbose::EMessageType;
using Lines = std::vector<std::string>;

/// Spans of time differ from run to run.
Lines Timeless(const Lines& lines) {
    const std::string time = "<Time>[0-9]+\\.[0-9][0-9]\\[sec\\]</Time>";
    Lines result;
    for (const std::string& line : lines) result.push_back(KM::Test::Replaced(line, time, "<Time/>"));
    return result;
}

void Say(EMessageType::iterator type, const std::string& text = "text") { Verbose::WriteMessage_1(type, text); }

TEST(Verbose, NamesOfTheKinds) {
    const struct {
        EMessageType::iterator type;
        int value;
        const char* name;
    } rows[] = {{EMessageType::None, 0, "None"},   {EMessageType::System, 1, "System"},
                {EMessageType::Error, 2, "Error"}, {EMessageType::Warning, 3, "Warning"},
                {EMessageType::Info, 4, "Info"},   {EMessageType::Note, 5, "Note"},
                {EMessageType::All, 6, "All"}};
    for (const auto& row : rows) {
        EXPECT_EQ(static_cast<int>(row.type), row.value);
        EXPECT_EQ(EMessageType::Name(row.type), row.name);
    }
    for (const int other : {-1, 7, INT_MIN, INT_MAX})
        EXPECT_EQ(EMessageType::Name(static_cast<EMessageType::iterator>(other)), "");
}

TEST(Verbose, LevelLetsThroughItselfAndWhatIsMoreUrgent) {
    for (int level = -1; level <= 7; ++level)
        for (int type = 0; type <= 6; ++type) {
            SCOPED_TRACE(testing::Message() << "level " << level << " type " << type);
            const LogCapture log;
            Console::IsDumpEnabled(false);
            Verbose::Level(static_cast<EMessageType::iterator>(level));
            Console::IsDumpEnabled(true);
            const auto kind = static_cast<EMessageType::iterator>(type);
            Say(kind);
            const std::string name = EMessageType::Name(kind);
            EXPECT_EQ(log.Lines(), type <= level ? Lines{"<" + name + ">text</" + name + ">"} : Lines{});
        }
}

TEST(Verbose, HugeLevelsAndKinds) {
    const LogCapture log;
    Verbose::Level(static_cast<EMessageType::iterator>(INT_MAX));
    Say(static_cast<EMessageType::iterator>(INT_MAX));
    Say(static_cast<EMessageType::iterator>(INT_MIN));
    Verbose::Level(static_cast<EMessageType::iterator>(INT_MIN));
    Say(EMessageType::None);
    EXPECT_EQ(log.Lines(), (Lines{"<System>Level has changed from: MessageType.Note to: MessageType.;</System>", "text",
                                  "text", "<System>Level has changed from: MessageType. to: MessageType.;</System>"}));
    EXPECT_EQ(static_cast<int>(Verbose::Level()), INT_MIN);
}

TEST(Verbose, AChangeOfLevelIsLoggedByTheLevelThatWas) {
    const LogCapture log;
    Verbose::Level(EMessageType::Note);
    EXPECT_TRUE(log.Lines().empty());
    Verbose::Level(EMessageType::System);
    Verbose::Level(EMessageType::None);
    Verbose::Level(EMessageType::All);  // at 0, System does not pass
    EXPECT_EQ(log.Lines(),
              (Lines{"<System>Level has changed from: MessageType.Note to: MessageType.System;</System>",
                     "<System>Level has changed from: MessageType.System to: MessageType.None;</System>"}));
    EXPECT_EQ(Verbose::Level(), EMessageType::All);
}

TEST(Verbose, TheTextOfAMessage) {
    KM::Test::RecordingDevice device;
    const KM::Test::LogOn on(device);
    device.Take();
    Say(EMessageType::Info, "Has been opened for reading");
    EXPECT_EQ(device.Take(),
              "{OnBegin}{FgColorB 7}<{BoldB}{FgColorB 10}Info{FgColorB 7}{BoldE}{FgColorB 7}>"
              "{FgColorB 15}Has been opened for reading{FgColorB 7}"
              "{FgColorB 7}</{BoldB}{FgColorB 10}Info{FgColorB 7}{BoldE}{FgColorB 7}>{OnEnd}");
}

TEST(Verbose, ALinkStandsInTheOpeningMark) {
    KM::Test::RecordingDevice device;
    const KM::Test::LogOn on(device);
    device.Take();
    Verbose::WriteMessage_2(EMessageType::Error, "text", "D:/a.txt", 9);
    EXPECT_EQ(device.Take(),
              "{OnBegin}{FgColorB 7}<{BoldB}{FgColorB 12}Error{FgColorB 7} Link=\"{FgColorB 9}D:/a.txt{FgColorB 7}\""
              "{BoldE}{FgColorB 7}>{FgColorB 15}text{FgColorB 7}"
              "{FgColorB 7}</{BoldB}{FgColorB 12}Error{FgColorB 7}{BoldE}{FgColorB 7}>{OnEnd}");
}

TEST(Verbose, ALinkNeedsALabel) {
    const LogCapture log;
    Verbose::Level(static_cast<EMessageType::iterator>(9));
    Verbose::WriteMessage_2(static_cast<EMessageType::iterator>(8), "text", "D:/a.txt", 9);
    EXPECT_EQ(log.Lines().back(), "text");
    EXPECT_EQ(Verbose::LogRecords().back().link, "D:/a.txt");
}

TEST(Verbose, ColoursOfTheLabels) {
    const std::pair<const char*, int> rows[] = {{"System", 9}, {"Error", 12},    {"Warning", 13}, {"Info", 10},
                                                {"Note", 11},  {"ScopeInfo", 9}, {"Time", 9},     {"Other", 14},
                                                {"None", 14},  {"All", 14},      {"info", 14}};
    KM::Test::RecordingDevice device;
    const KM::Test::LogOn on(device);
    for (const auto& [label, color] : rows) {
        const Verbose::Scope scope(label);
        device.Take();
        Say(EMessageType::Error);
        const std::string colored = "{BoldB}{FgColorB " + std::to_string(color) + "}" + label + "{FgColorB 7}{BoldE}";
        EXPECT_NE(device.Take().find(colored), std::string::npos) << label;
    }
}

TEST(Verbose, RecordsKeepWhatWasGiven) {
    const LogCapture log;
    {
        const Verbose::Scope scope("Outer");
        Say(EMessageType::Info, "one");
        Verbose::WriteMessage_2(EMessageType::Note, "two", "file", 3);
    }
    const auto& records = Verbose::LogRecords();
    const struct {
        const char *label, *message, *link;
        int linkColor;
        bool begin, end;
    } rows[] = {{"Outer", "", "", 0, true, false},
                {"Info", "one", "", 12, true, true},
                {"Note", "two", "file", 3, true, true},
                {"Time", nullptr, "", 0, true, true},
                {"Outer", "", "", 0, false, true}};
    ASSERT_EQ(records.size(), std::size(rows));
    for (std::size_t i = 0; i < records.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(records[i].label, rows[i].label);
        if (rows[i].message != nullptr) { EXPECT_EQ(records[i].message, rows[i].message); }
        EXPECT_EQ(records[i].link, rows[i].link);
        EXPECT_EQ(records[i].linkColor, rows[i].linkColor);
        EXPECT_EQ(records[i].begin, rows[i].begin);
        EXPECT_EQ(records[i].end, rows[i].end);
    }
    EXPECT_TRUE(KM::Test::Matches(records[3].message, "0\\.[0-9][0-9]\\[sec\\]"));
}

TEST(Verbose, WriteLineHasNoLabelAndPassesEveryLevel) {
    const LogCapture log;
    Console::IsDumpEnabled(false);
    Verbose::Level(EMessageType::None);
    Console::IsDumpEnabled(true);
    {
        const Verbose::Scope scope("Outer");
        WriteLine("line");
    }
    EXPECT_EQ(Timeless(log.Lines()), (Lines{"<Outer>", "  line", "  <Time/>", "</Outer>"}));
    EXPECT_EQ(Verbose::LogRecords()[1].message, "`C15`line`C`");
    EXPECT_EQ(Verbose::LogRecords()[1].label, "");
}

TEST(Verbose, NothingHappensWhileOutputIsNotEnabled) {
    const LogCapture log;
    Console::IsDumpEnabled(false);
    const Verbose::Scope scope("Outer");
    Say(EMessageType::Error);
    WriteLine("line");
    EXPECT_TRUE(log.Lines().empty());
    EXPECT_TRUE(Verbose::LogRecords().empty());
}

TEST(Verbose, NothingHappensWithoutAFormatterAndNoneIsMade) {
    const LogCapture log;
    Services::SetOutputFormatter(nullptr);
    Say(EMessageType::Error);
    EXPECT_FALSE(Services::HasOutputFormatter());
    EXPECT_TRUE(Verbose::LogRecords().empty());
    Services::GetOutputFormatter();
    Say(EMessageType::Error);
    EXPECT_EQ(Verbose::LogRecords().size(), 1u);
}

TEST(Verbose, NulsAndLongTextsPassWhole) {
    const LogCapture log;
    const std::string nul("a\0b", 3);
    const std::string longText(1000000, 'x');
    Say(EMessageType::Info, nul);
    Verbose::WriteMessage_2(EMessageType::Info, longText, nul, 5);
    EXPECT_EQ(log.Lines()[0], "<Info>" + nul + "</Info>");
    EXPECT_EQ(log.Lines()[1], "<Info Link=\"" + nul + "\">" + longText + "</Info>");
}

TEST(Verbose, DepthsOfAnySizeAreSurvived) {
    const LogCapture log;
    for (const int depth : {-5, INT_MIN}) {
        Verbose::CurrentIndentation() = depth;
        Say(EMessageType::Info);
        EXPECT_EQ(log.Lines().back(), "<Info>text</Info>");
        EXPECT_EQ(Verbose::CurrentIndentation(), depth);
    }
    Verbose::CurrentIndentation() = INT_MAX;
    {
        const Verbose::Scope scope("Outer");
        Say(EMessageType::Info);
        EXPECT_EQ(Verbose::CurrentIndentation(), INT_MAX);
        EXPECT_EQ(log.Lines().back(), std::string(20000, ' ') + "<Info>text</Info>");
        Verbose::CurrentIndentation() = INT_MIN;
    }
    EXPECT_EQ(Verbose::CurrentIndentation(), INT_MIN);
}

TEST(Verbose, IndentationCanBeReplaced) {
    const LogCapture log;
    Verbose::IndentAppearance() = "..";
    Verbose::CurrentIndentation() = 2;
    WriteLine("x");
    EXPECT_EQ(log.Lines().back(), "....x");
    EXPECT_EQ(Verbose::CurrentLineNumber(), 0);
}

TEST(Scope, WithoutAMessageLeavesNoTrace) {
    const LogCapture log;
    {
        const Verbose::Scope outer("Outer");
        const Verbose::Scope inner("Inner");
        EXPECT_EQ(Verbose::State().scopes.size(), 2u);
    }
    EXPECT_TRUE(log.Lines().empty());
    EXPECT_TRUE(Verbose::LogRecords().empty());
    EXPECT_TRUE(Verbose::State().scopes.empty());
}

TEST(Scope, WithAMessageShowsItselfAndItsTime) {
    const LogCapture log;
    {
        const Verbose::Scope scope("Parsing");
        Say(EMessageType::Info);
    }
    EXPECT_EQ(Timeless(log.Lines()), (Lines{"<Parsing>", "  <Info>text</Info>", "  <Time/>", "</Parsing>"}));
    EXPECT_EQ(Verbose::CurrentIndentation(), 0);
}

TEST(Scope, IsAnnouncedByTheFirstMessageThatPasses) {
    const LogCapture log;
    Verbose::Level(EMessageType::Warning);
    const Verbose::Scope outer("Outer");
    const Verbose::Scope inner("Inner");
    Say(EMessageType::Info);
    EXPECT_EQ(log.Lines().size(), 1u);  // the change of level
    Say(EMessageType::Warning);
    EXPECT_EQ(Lines(log.Lines().begin() + 1, log.Lines().end()),
              (Lines{"<Outer>", "  <Inner>", "    <Warning>text</Warning>"}));
}

TEST(Scope, InsideAShownOneStaysSilentOnItsOwn) {
    const LogCapture log;
    {
        const Verbose::Scope outer("Outer");
        Say(EMessageType::Info, "a");
        { const Verbose::Scope silent("Silent"); }
        Say(EMessageType::Info, "b");
    }
    EXPECT_EQ(Timeless(log.Lines()),
              (Lines{"<Outer>", "  <Info>a</Info>", "  <Info>b</Info>", "  <Time/>", "</Outer>"}));
}

TEST(Scope, UnrolesOnce) {
    const LogCapture log;
    {
        Verbose::Scope scope("Outer");
        scope.Dummy();
        Say(EMessageType::Info);
        scope.Unrole();
        EXPECT_EQ(log.Lines().size(), 4u);
        scope.Unrole();
        EXPECT_TRUE(Verbose::State().scopes.empty());
    }
    EXPECT_EQ(log.Lines().size(), 4u);
}

TEST(Scope, SpanIsInSecondsWithTwoDigits) {
    const LogCapture log;
    {
        const Verbose::Scope scope("Outer");
        WriteLine("x");
    }
    EXPECT_TRUE(KM::Test::Matches(log.Lines()[2], "  <Time>0\\.[0-9][0-9]\\[sec\\]</Time>"));
}

TEST(Scope, ClosedOutOfTurnTakesTheLastEntry) {
    const LogCapture log;
    Verbose::Scope outer("Outer");
    Verbose::Scope inner("Inner");
    outer.Unrole();
    Say(EMessageType::Info);  // the entry that is left is that of the outer one
    inner.Unrole();
    EXPECT_EQ(Timeless(log.Lines()), (Lines{"<Outer>", "  <Info>text</Info>", "  <Time/>", "</Inner>"}));
    EXPECT_TRUE(Verbose::State().scopes.empty());
}

TEST(Scope, DestroyedOutOfTurnIsSurvived) {
    const LogCapture log;
    auto outer = std::make_unique<Verbose::Scope>("A name too long to lie inside its object");
    {
        const Verbose::Scope inner("Inner");
        outer.reset();
        Say(EMessageType::Info);
        EXPECT_EQ(log.Lines()[0], "<A name too long to lie inside its object>");
    }
    EXPECT_TRUE(Verbose::State().scopes.empty());
    EXPECT_EQ(Verbose::State().announced, 0);
}

TEST(Scope, NestsVeryDeep) {
    const LogCapture log;
    std::vector<std::unique_ptr<Verbose::Scope>> scopes;
    for (int i = 0; i < 100000; ++i) scopes.push_back(std::make_unique<Verbose::Scope>("Deep"));
    while (!scopes.empty()) scopes.pop_back();
    EXPECT_TRUE(Verbose::State().scopes.empty());
}

TEST(Scope, ManyDestroyedOutOfTurnTakeNoLongTime) {
    const LogCapture log;
    std::vector<std::unique_ptr<Verbose::Scope>> scopes;
    for (int i = 0; i < 200000; ++i) scopes.push_back(std::make_unique<Verbose::Scope>("Deep"));
    for (auto& scope : scopes) scope.reset();
    EXPECT_TRUE(Verbose::State().scopes.empty());
}

TEST(ClearLog, AnnouncesOpenScopesAgain) {
    const LogCapture log;
    const Verbose::Scope outer("Outer");
    const Verbose::Scope inner("Inner");
    Say(EMessageType::Info);
    Verbose::ClearLog();
    EXPECT_EQ(log.Lines(), (Lines{"<Outer>", "  <Inner>", "    <Info>Log has been cleared!</Info>"}));
    EXPECT_EQ(Verbose::LogRecords().size(), 3u);
}

TEST(ClearLog, BelowItsLevelLeavesScopesToTheNextMessage) {
    const LogCapture log;
    Verbose::Level(EMessageType::Warning);
    const Verbose::Scope outer("Outer");
    Say(EMessageType::Warning);
    Verbose::ClearLog();
    EXPECT_TRUE(log.Lines().empty());
    Say(EMessageType::Warning);
    EXPECT_EQ(log.Lines(), (Lines{"<Outer>", "  <Warning>text</Warning>"}));
}

TEST(Log, OutputEnabledInsideAScopeIsSurvived) {
    const LogCapture log;
    Console::IsDumpEnabled(false);
    {
        const Verbose::Scope outer("Outer");
        Say(EMessageType::Info);
        Console::IsDumpEnabled(true);
        Say(EMessageType::Info);
    }
    // The opening mark fell into the time without output.
    EXPECT_EQ(Timeless(log.Lines()), (Lines{"<Info>text</Info>", "<Time/>", "</Outer>"}));
    EXPECT_EQ(Verbose::CurrentIndentation(), -1);
}

class CheckPointKept : public testing::Test {
protected:
    CheckPointKept() { calls = 0; }
    ~CheckPointKept() override { Verbose::SetCheckPoint(nullptr); }

    static inline int calls = 0;
};

using CheckPoint = CheckPointKept;

TEST_F(CheckPoint, IsPassedByEachMessageAndByNoLine) {
    const LogCapture log;
    Verbose::SetCheckPoint([] { ++calls; });
    Say(EMessageType::Info);
    Say(EMessageType::All);  // dropped, and a check point all the same
    EXPECT_EQ(calls, 2);
    WriteLine("x");
    EXPECT_EQ(calls, 2);
}

TEST_F(CheckPoint, ThrowsBeforeAnythingIsWritten) {
    const LogCapture log;
    const Verbose::Scope scope("Outer");
    Verbose::SetCheckPoint([] { throw XUserAbort(); });
    EXPECT_THROW(Say(EMessageType::Error), XUserAbort);
    EXPECT_THROW(Say(EMessageType::All), XUserAbort);
    EXPECT_TRUE(log.Lines().empty());
    Verbose::SetCheckPoint(nullptr);
    Say(EMessageType::Error);
    EXPECT_EQ(log.Lines().size(), 2u);
}

/// Notes whether an abort is held off at each line.
class GateDevice : public DumpingDevice {
public:
    std::vector<bool> open;
    void OnBegin() override { open.push_back(Verbose::State().checkAbortEnabled); }
    void Reset() override {}
    void ApplyBackground() override {}
};

TEST(Scope, HoldsAnAbortOffWhileItCloses) {
    GateDevice device;
    const KM::Test::LogOn on(device);
    {
        const Verbose::Scope scope("Outer");
        WriteLine("x");
    }
    EXPECT_EQ(device.open, (std::vector<bool>{true, true, false, false}));
    EXPECT_TRUE(Verbose::State().checkAbortEnabled);
}

class ThrowingDevice : public DumpingDevice {
public:
    bool isThrowing = false;
    int lines = 0;
    void Write(const std::string&) override {
        if (isThrowing) throw std::runtime_error("full");
    }
    void OnEnd() override { ++lines; }
    void Reset() override {}
    void ApplyBackground() override {}
};

TEST(Log, AThrowingDeviceLeavesItInOrder) {
    ThrowingDevice device;
    const KM::Test::LogOn on(device);
    {
        Verbose::Scope scope("Outer");
        device.isThrowing = true;
        EXPECT_THROW(Say(EMessageType::Info), std::runtime_error);
        EXPECT_EQ(Verbose::State().announced, 0);  // the next message announces the scope again
        device.isThrowing = false;
        Say(EMessageType::Info);
        EXPECT_EQ(Verbose::LogRecords().size(), 3u);
        EXPECT_EQ(Verbose::CurrentIndentation(), 1);
        device.isThrowing = true;
        EXPECT_THROW(scope.Unrole(), std::runtime_error);
        device.isThrowing = false;
    }
    EXPECT_TRUE(Verbose::State().scopes.empty());
    EXPECT_EQ(Verbose::State().announced, 0);
    EXPECT_TRUE(Verbose::State().checkAbortEnabled);
}

TEST(LogDeathTest, AThrowOutOfAClosingScopeEndsTheProcess) {
    EXPECT_DEATH(
        {
            ThrowingDevice device;
            const KM::Test::LogOn on(device);
            const Verbose::Scope scope("Outer");
            WriteLine("x");
            device.isThrowing = true;
        },
        "");
}

/// Logs from inside a line.
class TalkativeDevice : public KM::Test::RecordingDevice {
public:
    bool isTalking = false;
    void OnEnd() override {
        RecordingDevice::OnEnd();
        if (!isTalking) return;
        isTalking = false;
        Say(EMessageType::Info, "from the device");
    }
};

TEST(Log, ADeviceMayLog) {
    TalkativeDevice device;
    const KM::Test::LogOn on(device);
    const Verbose::Scope scope("Outer");
    device.isTalking = true;
    Say(EMessageType::Info, "first");
    EXPECT_EQ(Verbose::LogRecords().size(), 3u);
    EXPECT_EQ(Verbose::LogRecords()[1].message, "from the device");
}

}  // namespace
}  // namespace KM
