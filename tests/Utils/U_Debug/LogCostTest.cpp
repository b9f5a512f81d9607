#include <gtest/gtest.h>

#include <string>

#include "Support/Allocations.h"
#include "Support/LogCapture.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Debug/Chronometer.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

/// Whether `run` takes memory, if only for a moment.
template <class Run>
bool TakesMemory(Run run) {
    const std::size_t before = Bench::LiveBytes();
    Bench::ForgetPeak();
    run();
    return Bench::PeakBytes() != before;
}

TEST(LogCost, AFilteredMessageTakesNoMemory) {
    const KM::Test::LogCapture log;
    const std::string text(100, 'x'), link(100, 'y');
    EXPECT_FALSE(TakesMemory([&] {
        for (int i = 0; i < 1000; ++i) {
            Verbose::WriteMessage_1(Verbose::EMessageType::All, text);
            Verbose::WriteMessage_2(Verbose::EMessageType::All, text, link, 5);
        }
    }));
    EXPECT_TRUE(TakesMemory([&] { Verbose::WriteMessage_1(Verbose::EMessageType::Note, text); }));
}

TEST(LogCost, ARunningSpanTakesNoMemory) {
    Time::AdditiveChronometer* slot = nullptr;
    const std::string name = "A name too long to lie inside its object";
    { const Time::AdditiveChronometer::Auto first(name, slot); }
    EXPECT_FALSE(TakesMemory([&] {
        for (int i = 0; i < 1000; ++i) const Time::AdditiveChronometer::Auto span(name, slot);
    }));
}

}  // namespace
}  // namespace KM
