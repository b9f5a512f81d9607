#include "Utils/U_Console/DumpingDevice.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <type_traits>

#include "Support/LogOn.h"
#include "Support/RecordingDevice.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Debug/LogState.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

using Verbose::EMessageType;

static_assert(std::is_abstract_v<DumpingDevice>);

class PlainDevice : public DumpingDevice {
public:
    using DumpingDevice::DumpingDevice;
    void Reset() override {}
    void ApplyBackground() override {}
};

// Hosts that were built against the interface call by slot, so the slots must keep their places.
TEST(DumpingDevice, SlotsStandInTheirOrder) {
    KM::Test::RecordingDevice device;
    DumpingDevice* base = &device;
    // Two entries of a virtual destructor come first, as the platform's calling convention has it.
    using NoArgument = void (*)(DumpingDevice*);
    using Number = void (*)(DumpingDevice*, int);
    using Text = void (*)(DumpingDevice*, const std::string&);
    void* const* const slots = *reinterpret_cast<void* const* const*>(base) + 1;
    const std::string text = "t";
    std::string expected;
    const char* const names[] = {
        "",          "SetTitle t", "BoldB",   "BoldE",     "ItalicB",    "ItalicE",        "UnderlineB", "UnderlineE",
        "StrikeB",   "StrikeE",    "SuperB",  "SuperE",    "SubB",       "SubE",           "HyperlinkB", "HyperlinkE",
        "AccoladeB", "AccoladeE",  "SizeB 3", "SizeE",     "FgColorB 3", "FgColorE",       "BkColorB 3", "BkColorE",
        "",          "OnBegin",    "OnEnd",   "DumpAll t", "Reset",      "ApplyBackground"};
    for (std::size_t slot = 1; slot < std::size(names); ++slot) {
        const std::string name = names[slot];
        device.Take();
        if (name.empty() || name.ends_with(" t"))
            reinterpret_cast<Text>(slots[slot])(base, text);
        else if (name.ends_with(" 3"))
            reinterpret_cast<Number>(slots[slot])(base, 3);
        else
            reinterpret_cast<NoArgument>(slots[slot])(base);
        EXPECT_EQ(device.Take(), name.empty() ? "t" : "{" + name + "}") << "slot " << slot + 1;
    }
}

TEST(DumpingDevice, IsDarkAtFirst) {
    EXPECT_TRUE(PlainDevice().IsDarkBackground());
    EXPECT_FALSE(PlainDevice(false).IsDarkBackground());
}

int Analyzed(const PlainDevice& device, int color) {
    device.AnalyzeColor(color);
    return color;
}

TEST(DumpingDevice, AnalyzeColorChangesNothingOnADarkOne) {
    for (int color = -3; color < 20; ++color) EXPECT_EQ(Analyzed(PlainDevice(), color), color);
}

TEST(DumpingDevice, AnalyzeColorMakesReadableOnALightOne) {
    const int expected[] = {0, 9, 10, 11, 12, 13, 14, 8, 7, 1, 2, 3, 4, 5, 6, 0, 8, 9};
    for (int color = 0; color < static_cast<int>(std::size(expected)); ++color)
        EXPECT_EQ(Analyzed(PlainDevice(false), color), expected[color]) << color;
    EXPECT_EQ(Analyzed(PlainDevice(false), -1), 7);
    EXPECT_EQ(Analyzed(PlainDevice(false), INT_MIN), INT_MIN + 8);
    EXPECT_EQ(Analyzed(PlainDevice(false), INT_MAX), INT_MAX - 8);
}

/// Notes its start in the journal of the device.
class NotingFormatter : public XMLFormatter {
public:
    explicit NotingFormatter(KM::Test::RecordingDevice& device) : device_(device) {}
    void OnInit() override { device_.journal += "{OnInit}"; }
    std::string OpenMarkStart() override { return "<<"; }

private:
    KM::Test::RecordingDevice& device_;
};

class Replay : public testing::Test {
protected:
    ~Replay() override { Services::SetOutputFormatter(nullptr); }

    KM::Test::RecordingDevice device_;
    KM::Test::LogOn on_{device_};
    NotingFormatter formatter_{device_};
};

TEST_F(Replay, RedrawWritesTheRecordsAgain) {
    Services::SetOutputFormatter(&formatter_);
    const Verbose::Scope scope("Outer");
    device_.Take();
    Verbose::WriteMessage_2(EMessageType::Info, "text", "link", 3);
    WriteLine("line");
    const std::string drawn = device_.Take();
    const auto records = Verbose::LogRecords().size();
    for (int i = 0; i < 2; ++i) {
        device_.Redraw();
        EXPECT_EQ(device_.Take(), "{ApplyBackground}{Reset}{OnInit}" + drawn);
        EXPECT_EQ(Verbose::LogRecords().size(), records);
        EXPECT_EQ(Verbose::CurrentIndentation(), 1);
    }
}

/// Logs while it is painted, and counts the records that stand there.
class PaintingDevice : public KM::Test::RecordingDevice {
public:
    std::size_t painted = 0, reset = 1;
    void ApplyBackground() override {
        Verbose::WriteMessage_1(EMessageType::Info, "painted");
        painted = Verbose::LogRecords().size();
    }
    void Reset() override { reset = Verbose::LogRecords().size(); }
};

TEST(Redraw, ForgetsTheRecordsBehindTheBackground) {
    PaintingDevice device;
    const KM::Test::LogOn on(device);
    Verbose::WriteMessage_1(EMessageType::Info, "text");
    device.Redraw();
    EXPECT_EQ(device.painted, 2u);
    EXPECT_EQ(device.reset, 0u);
    ASSERT_EQ(Verbose::LogRecords().size(), 1u);
    EXPECT_EQ(Verbose::LogRecords()[0].message, "text");
}

TEST_F(Replay, RedrawDoesNotFilterAgain) {
    Verbose::WriteMessage_1(EMessageType::Info, "text");
    const std::string drawn = device_.Take();
    Verbose::State().level = EMessageType::None;
    device_.Redraw();
    EXPECT_TRUE(
        device_.Take().ends_with("text{FgColorB 7}{FgColorB 7}</{BoldB}{FgColorB 10}Info{FgColorB 7}{BoldE}"
                                 "{FgColorB 7}>{OnEnd}"));
}

TEST_F(Replay, ANewFormatterRedraws) {
    Verbose::WriteMessage_1(EMessageType::Info, "text");
    device_.Take();
    Services::SetOutputFormatter(&formatter_);
    EXPECT_TRUE(device_.Take().starts_with("{OnInit}{ApplyBackground}{Reset}{OnInit}{OnBegin}<<{BoldB}"));
    Services::SetOutputFormatter(&formatter_);
    EXPECT_EQ(device_.Take(), "");
    Services::SetOutputFormatter(nullptr);
    EXPECT_EQ(device_.Take(), "");
    Services::SetOutputFormatter(&formatter_);  // after none, there is nothing to replace
    EXPECT_EQ(device_.Take(), "");
}

TEST_F(Replay, ANewDeviceGetsTheRecordsWhenItIsRedrawn) {
    Verbose::WriteMessage_1(EMessageType::Info, "text");
    KM::Test::RecordingDevice other;
    Services::SetDumpingDevice(&other);
    EXPECT_EQ(other.Take(), "");
    other.Redraw();
    EXPECT_NE(other.Take().find("text"), std::string::npos);
    Services::SetDumpingDevice(&device_);
}

TEST_F(Replay, ClsForgetsTheRecords) {
    Services::SetOutputFormatter(&formatter_);
    Verbose::WriteMessage_1(EMessageType::Info, "text");
    Verbose::CurrentIndentation() = 3;
    device_.Take();
    device_.CLS();
    EXPECT_EQ(device_.Take(), "{Reset}{OnInit}");
    EXPECT_TRUE(Verbose::LogRecords().empty());
    EXPECT_EQ(Verbose::CurrentIndentation(), 3);
}

TEST_F(Replay, ADarkBackgroundRedrawsOnlyWhenItChanges) {
    device_.EnableDarkBackground(true);
    EXPECT_EQ(device_.Take(), "{Reset}");  // of the start
    device_.EnableDarkBackground(false);
    EXPECT_EQ(device_.Take(), "{ApplyBackground}{Reset}");
    EXPECT_FALSE(device_.IsDarkBackground());
    device_.EnableDarkBackground(false);
    EXPECT_EQ(device_.Take(), "");
    device_.EnableDarkBackground(true);
    EXPECT_EQ(device_.Take(), "{ApplyBackground}{Reset}");
}

TEST_F(Replay, ClearLogRedrawsAnEmptyLog) {
    Services::SetOutputFormatter(&formatter_);
    Verbose::WriteMessage_1(EMessageType::Info, "text");
    device_.Take();
    Verbose::ClearLog();
    EXPECT_TRUE(device_.Take().starts_with("{ApplyBackground}{Reset}{OnInit}{OnBegin}"));
    ASSERT_EQ(Verbose::LogRecords().size(), 1u);
    EXPECT_EQ(Verbose::LogRecords()[0].message, "Log has been cleared!");
}

TEST_F(Replay, OfALongLogKeepsItsOrder) {
    for (int i = 0; i < 1000; ++i) {
        const Verbose::Scope scope("S");
        Verbose::WriteMessage_1(EMessageType::Info, std::to_string(i));
    }
    device_.Take();
    device_.Redraw();
    const std::string first = device_.Take();
    device_.Redraw();
    EXPECT_EQ(device_.Take(), first);
    EXPECT_EQ(Verbose::LogRecords().size(), 4000u);
}

}  // namespace
}  // namespace KM
