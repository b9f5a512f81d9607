#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "Support/InChild.h"
#include "Support/LogOn.h"
#include "Support/RecordingDevice.h"
#include "Support/TempFolder.h"
#include "Support/WindowInbox.h"
#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/ToFile.h"

namespace KM {
namespace {

using Test::InChild;
using Test::LogOn;
using Test::RecordingDevice;
using Test::TempFolder;
using Test::WindowInbox;
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

void Report(double global, double local, const std::string& message) {
    Application::Services::Status()(global, local, message);
}

/// The title after one report, in a process where it is the first one.
std::string Title(double global, double local, const std::string& message) {
    return InChild([&] {
        RecordingDevice device;
        const LogOn on(device);
        device.Take();
        Report(global, local, message);
        return device.Take();
    });
}

std::string Line(int global, int local, const std::string& message) {
    const auto cells = [](int filled, int all) {
        std::string text;
        for (int i = 0; i < all; ++i) text += i < filled ? 'I' : ' ';
        return text;
    };
    return "{SetTitle G:[" + cells(global, 60) + "] L:<" + cells(local, 30) + ">  " + message + "}";
}

TEST(StatusTitle, HasABarOf60AndABarOf30) {
    EXPECT_EQ(Title(0.25, 0.5, "Generate.Linking"),
              "{SetTitle G:[IIIIIIIIIIIIIII                                             ] "
              "L:<IIIIIIIIIIIIIII               >  Generate.Linking}");
    EXPECT_EQ(Title(1.0, 0.0, "A"), Line(60, 0, "A"));
    EXPECT_EQ(Title(0.0, 1.0, ""), Line(0, 30, ""));
}

TEST(StatusTitle, CellsAreTruncated) {
    EXPECT_EQ(Title(0.0999, 0.0999, "A"), Line(5, 2, "A"));
    EXPECT_EQ(Title(0.9999, 0.9999, "A"), Line(59, 29, "A"));
}

TEST(StatusTitle, HoldsWhatIsOutsideTheRange) {
    EXPECT_EQ(Title(7.0, 1e300, "A"), Line(60, 30, "A"));
    EXPECT_EQ(Title(-7.0, -1e300, "A"), Line(0, 0, "A"));
    EXPECT_EQ(Title(NaN, NaN, "A"), Line(0, 0, "A"));
    EXPECT_EQ(Title(HUGE_VAL, -HUGE_VAL, "A"), Line(60, 0, "A"));
}

/// Sends status to the cache folder and to the console, each when a test asks for it.
class StatusOutputs : public testing::Test {
protected:
    StatusOutputs() {
        Caching::Path(folder / "");
        ID(12);
    }
    ~StatusOutputs() override {
        IsEnableInCacheProgressStatus(false);
        IsEnableInConsoleProgressStatus(false);
        ID(1);
    }

    TempFolder folder;
};
using StatusElement = StatusOutputs;
using StatusFile = StatusOutputs;
using StatusMessage = StatusOutputs;
using Status = StatusOutputs;

/// The text of each line that the reports write.
std::string Elements(const std::function<void()>& reports) {
    return InChild([&] {
        RecordingDevice device;
        const LogOn on(device);
        IsEnableInConsoleProgressStatus(true);
        reports();
        std::string text;
        for (const Verbose::LogRecord& record : Verbose::LogRecords()) text += record.label + record.message + "|";
        return text;
    });
}

TEST_F(StatusElement, IsALineOfItsOwn) {
    EXPECT_EQ(Elements([] { Report(0.22, 0.8, "Run.Analyzing"); }),
              "`C15`\n<CurrentStatus Global=\"0.22\" Local=\"0.8\" Message=\"Run.Analyzing\"/>`C`|");
}

TEST_F(StatusElement, IsWrittenWhateverTheLevel) {
    EXPECT_NE(Elements([] {
                  Verbose::Level(Verbose::EMessageType::None);
                  Report(1.0, 0.0, "A");
              }).find("<CurrentStatus Global=\"1\" Local=\"0\" Message=\"A\"/>"),
              std::string::npos);
}

TEST_F(StatusElement, IsNotWrittenUnlessEnabled) {
    EXPECT_EQ(Elements([] {
                  IsEnableInConsoleProgressStatus(false);
                  Report(0.5, 0.5, "A");
              }),
              "");
}

/// The names in the folder after the reports, each in brackets.
std::string NamesAfter(const TempFolder& folder, const std::function<void()>& reports) {
    return InChild([&] {
        IsEnableInCacheProgressStatus(true);
        reports();
        std::string text;
        for (const std::string& name : folder.Names()) text += "[" + name + "]";
        return text;
    });
}

TEST_F(StatusFile, NameIsTheMessage) {
    EXPECT_EQ(NamesAfter(folder, [] { Report(0.6, 0.1, "Generate.Toolpath.Linking"); }),
              "[!Message(ID=12, 0.6, 0.1, Generate.Toolpath.Linking)]");
    EXPECT_EQ(folder.Bytes("!Message(ID=12, 0.6, 0.1, Generate.Toolpath.Linking)"), "");
}

TEST_F(StatusFile, ReplacesTheOneBefore) {
    EXPECT_EQ(NamesAfter(folder,
                         [] {
                             Report(0.1, 0.5, "A");
                             Report(1.0 / 3.0, 0.0, "A.B: 2 of 3 (fine, so far)");
                         }),
              "[!Message(ID=12, 0.333333, 0, A.B: 2 of 3 (fine, so far))]");
}

TEST_F(StatusFile, GlobalProgressNeverFalls) {
    EXPECT_EQ(NamesAfter(folder,
                         [] {
                             Report(0.6, 0.5, "A");
                             Report(0.2, 0.7, "B");
                             Report(NaN, 0.8, "C");
                         }),
              "[!Message(ID=12, 0.6, 0.8, C)]");
}

TEST_F(StatusFile, LeavesTheFilesOfOthers) {
    const std::vector<std::string> others{"!Break(ID=12)", "!Message(ID=1, 0.5, 0.5, A)",
                                          "!Message(ID=120, 0.5, 0.5, A)", "$result.1.Data", "!Finished(ID=12)"};
    for (const std::string& name : others) folder.Write(name, "kept");
    folder.Write("!Message(ID=12, 0.9, 0.9, of a run that died)", "");
    EXPECT_EQ(NamesAfter(folder, [] { Report(0.5, 0.5, "*"); }),
              "[!Break(ID=12)][!Finished(ID=12)][!Message(ID=1, 0.5, 0.5, A)][!Message(ID=12, 0.5, 0.5, *)]"
              "[!Message(ID=120, 0.5, 0.5, A)][$result.1.Data]");
    for (const std::string& name : others) EXPECT_EQ(folder.Bytes(name), "kept");
}

TEST_F(StatusFile, NameStaysInItsFolder) {
    Caching::Path(folder / "inner/");
    const std::string hostile = std::string("../../x/\\..\\*?\n\t\x7f") + '\0' + "end";
    const std::string names = InChild([&] {
        IsEnableInCacheProgressStatus(true);
        Report(0.5, 0.5, hostile);
        std::string text;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / ""))
            text += "[" + std::filesystem::relative(entry.path(), folder / "").string() + "]";
        return text;
    });
    EXPECT_EQ(names, "[inner][inner/!Message(ID=12, 0.5, 0.5, .._.._x__.._*?\n\t\x7f_end)]");
}

TEST_F(StatusFile, LongNameIsCutBetweenCharacters) {
    std::string umlauts;
    for (int i = 0; i < 150; ++i) umlauts += "\xc3\xa4";
    for (const std::string& message : {std::string(300, 'm'), umlauts, "m" + umlauts, std::string(100000, 'm')}) {
        const std::string name = NamesAfter(folder, [&] { Report(0.5, 0.5, message); });
        EXPECT_GE(name.size(), 2u + 250u);
        EXPECT_LE(name.size(), 2u + 251u);
        const std::string start = "[!Message(ID=12, 0.5, 0.5, ";
        const std::string cut = name.substr(start.size(), name.size() - start.size() - 2);
        EXPECT_EQ(name, start + cut + ")]");
        EXPECT_EQ(message.substr(0, cut.size()), cut);
        if (message != std::string(message.size(), 'm')) {
            EXPECT_EQ(cut.size() % 2, message.size() % 2) << "half a character";
        }
    }
}

TEST_F(StatusFile, FolderThatIsGoneIsMadeAgain) {
    std::filesystem::remove(folder / "");
    EXPECT_EQ(NamesAfter(folder, [] { Report(0.5, 0.5, "A"); }), "[!Message(ID=12, 0.5, 0.5, A)]");
}

TEST_F(StatusFile, FolderThatCannotBeWrittenIsAFileError) {
    folder.Write("file", "");
    Caching::Path(folder / "file/");
    IsEnableInCacheProgressStatus(true);
    EXPECT_THROW(Report(0.0, 0.5, "A"), IO::XFileIOError);
}

TEST_F(StatusFile, IsNotWrittenUnlessEnabled) {
    Report(0.0, 0.5, "A");
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(StatusMessage, GoesToTheWindow) {
    const WindowInbox inbox;
    ASSERT_TRUE(inbox.IsOpen());
    Report(0.0, 0.25, "A");
    EXPECT_EQ(inbox.Take(), "nothing");
    NamesAfter(folder, [] { Report(0.5, 0.25, "A.B"); });
    HsMessage message;
    const std::string datagram = inbox.Take();
    ASSERT_GT(datagram.size(), 12u);
    message.Deserialize(datagram.data() + 12, static_cast<int>(datagram.size()) - 12);
    EXPECT_EQ(message.Text(), "A.B");
    EXPECT_EQ(message.LocalPercent(), 25);
    EXPECT_EQ(message.GlobalPercent(), 50);
}

TEST_F(Status, PolicyCanBeReplaced) {
    struct : Application::StatusPolicy {
        void operator()(double global, double local, const std::string& message) const override {
            text += std::to_string(global + local) + message;
        }
        mutable std::string text;
    } policy;
    const Application::StatusPolicy& before = Application::Services::Status();
    Application::Services::Status(policy);
    EXPECT_EQ(&Application::Services::Status(), &policy);
    Report(1.0, 0.5, "A");
    Application::Services::Status(before);
    EXPECT_EQ(policy.text, "1.500000A");
}

TEST_F(Status, BeginningOfTheNameFollowsFolderAndID) {
    EXPECT_EQ(BeginningOfTheMessageFileName(), Caching::Path() + "!Message(ID=12, ");
    ID(-3);
    Caching::Path(folder / "other");
    EXPECT_EQ(BeginningOfTheMessageFileName(), Caching::Path() + "!Message(ID=-3, ");
}

}  // namespace
}  // namespace KM
