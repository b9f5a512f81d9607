#include "Utils/U_Console/OutputFormatter.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "Support/LogOn.h"
#include "Support/RecordingDevice.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

static_assert(std::is_base_of_v<OutputFormatterBoldLabel, XMLFormatter>);
static_assert(std::is_base_of_v<OutputFormatter, OutputFormatterBoldLabel>);

using Texts = std::string (OutputFormatter::*)();

constexpr Texts TextSlots[] = {&OutputFormatter::Header,
                               &OutputFormatter::Footer,
                               &OutputFormatter::OpenMarkStart,
                               &OutputFormatter::OpenMarkEnd,
                               &OutputFormatter::CloseMarkStart,
                               &OutputFormatter::CloseMarkEnd,
                               &OutputFormatter::OpenLabelStyleStart,
                               &OutputFormatter::OpenLabelStyleEnd,
                               &OutputFormatter::CloseLabelStyleStart,
                               &OutputFormatter::CloseLabelStyleEnd};

void ExpectTexts(OutputFormatter& formatter, const std::vector<std::string>& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i) EXPECT_EQ((formatter.*TextSlots[i])(), texts[i]) << i;
    EXPECT_FALSE(formatter.HasNoLabels());
    EXPECT_FALSE(formatter.IsOpenLabelPlain());
    EXPECT_FALSE(formatter.IsCloseLabelPlain());
    formatter.OnInit();
    formatter.OnClose();
}

TEST(OutputFormatter, GivesNothing) {
    OutputFormatter formatter;
    ExpectTexts(formatter, {"", "", "", "", "", "", "", "", "", ""});
}

TEST(OutputFormatter, OfABoldLabelGivesItsStyle) {
    OutputFormatterBoldLabel formatter;
    ExpectTexts(formatter, {"", "", "", "", "", "", "`B`", "`B`", "`B`", "`B`"});
}

TEST(OutputFormatter, OfXmlGivesMarks) {
    XMLFormatter formatter;
    ExpectTexts(formatter, {"", "", "`C7`<", "`C7`>", "`C7`</", "`C7`>", "`B`", "`B`", "`B`", "`B`"});
}

/// Answers each question with its slot, and keeps the order of the questions.
class AskedFormatter : public OutputFormatter {
public:
    std::string asked;
    bool isPlain = false;

    void OnInit() override { Note("2"); }
    void OnClose() override { Note("3"); }
    std::string Header() override { return Note("4"); }
    std::string Footer() override { return Note("5"); }
    bool HasNoLabels() override { return !Note("6").empty(); }
    std::string OpenMarkStart() override { return Note("7"); }
    std::string OpenMarkEnd() override { return Note("8"); }
    bool IsOpenLabelPlain() override { return !Note("9").empty() && isPlain; }
    std::string CloseMarkStart() override { return Note("10"); }
    std::string CloseMarkEnd() override { return Note("11"); }
    bool IsCloseLabelPlain() override { return !Note("12").empty() && isPlain; }
    std::string OpenLabelStyleStart() override { return Note("13"); }
    std::string OpenLabelStyleEnd() override { return Note("14"); }
    std::string CloseLabelStyleStart() override { return Note("15"); }
    std::string CloseLabelStyleEnd() override { return Note("16"); }

private:
    std::string Note(const std::string& slot) {
        asked += slot + " ";
        return slot + ".";
    }
};

TEST(OutputFormatter, IsAskedInTheOrderOfTheText) {
    AskedFormatter formatter;
    KM::Test::RecordingDevice device;
    const KM::Test::LogOn on(device);
    Services::SetOutputFormatter(&formatter);
    formatter.asked.clear();
    device.Take();
    Verbose::WriteMessage_2(Verbose::EMessageType::Info, "text", "link", 3);
    EXPECT_EQ(formatter.asked, "7 13 9 14 8 10 15 12 16 11 ");
    EXPECT_EQ(device.Take(),
              "{OnBegin}7.13.{FgColorB 10}Info{FgColorB 7} Link=\"{FgColorB 3}link{FgColorB 7}\"14.8."
              "{FgColorB 15}text{FgColorB 7}10.15.{FgColorB 10}Info{FgColorB 7}16.11.{OnEnd}");
    formatter.isPlain = true;
    Verbose::WriteMessage_1(Verbose::EMessageType::Info, "text");
    EXPECT_EQ(device.Take(), "{OnBegin}7.13.Info14.8.{FgColorB 15}text{FgColorB 7}10.15.Info16.11.{OnEnd}");
    Services::SetOutputFormatter(nullptr);
}

// Hosts that were built against the interface call by slot, so the slots must keep their places.
TEST(OutputFormatter, SlotsStandInTheirOrder) {
    AskedFormatter formatter;
    OutputFormatter* base = &formatter;
    void* const* const slots = *reinterpret_cast<void* const* const*>(base) + 1;
    for (const std::size_t slot : {2, 3}) reinterpret_cast<void (*)(OutputFormatter*)>(slots[slot - 1])(base);
    for (const std::size_t slot : {6, 9, 12}) reinterpret_cast<bool (*)(OutputFormatter*)>(slots[slot - 1])(base);
    for (const std::size_t slot : {4, 5, 7, 8, 10, 11, 13, 14, 15, 16})
        EXPECT_EQ(reinterpret_cast<std::string (*)(OutputFormatter*)>(slots[slot - 1])(base),
                  std::to_string(slot) + ".");
    EXPECT_EQ(formatter.asked, "2 3 6 9 12 4 5 7 8 10 11 13 14 15 16 ");
}

}  // namespace
}  // namespace KM
