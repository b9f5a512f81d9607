#include "Utils/U_Debug/Chronometer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Support/LogCapture.h"
#include "Support/Pattern.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/ReadableCount.h"
#include "Utils/U_Debug/Time.h"

namespace KM {
namespace {

using Application::Services;
using Test::LogCapture;
using Time::AdditiveChronometer;
using Time::Chronometer;

/// The dump stream, kept for its life time.
class DumpStreamKept {
public:
    explicit DumpStreamKept(std::ostream& stream) { Services::DumpStream(stream); }
    DumpStreamKept(const DumpStreamKept&) = delete;
    DumpStreamKept& operator=(const DumpStreamKept&) = delete;
    ~DumpStreamKept() { Services::DumpStream(before_); }

private:
    std::ostream& before_ = Services::DumpStream();
};

TEST(Chronometer, WritesItsBeginAndItsEnd) {
    std::ostringstream out;
    const DumpStreamKept kept(out);
    {
        const Chronometer chronometer("Task", true, "pre", "post", 3);
        EXPECT_EQ(out.str(), "\nTask.begin();");
    }
    const std::string form = "\nTask\\.begin\\(\\);Task\\.end\\(\\); //Elapsed Time = [0-9.e-]+\\[sec\\]; \n";
    EXPECT_TRUE(KM::Test::Matches(out.str(), form)) << out.str();
}

TEST(Chronometer, WritesNothingWhenDisabled) {
    std::ostringstream out;
    const DumpStreamKept kept(out);
    { const Chronometer chronometer("Task", false, "", "", 0); }
    EXPECT_EQ(out.str(), "");
}

TEST(Chronometer, MeasuresFromItsReset) {
    const Chronometer chronometer("Task", false, "", "", 0);
    const double start = Time::Get();
    while (Time::Get() < start + 0.005) {}
    EXPECT_GE(chronometer.ElapsedTime(), 0.004);
    chronometer.Reset();
    EXPECT_LT(chronometer.ElapsedTime(), 0.004);
}

TEST(Chronometer, OnAStreamThatThrowsEndsQuietly) {
    std::ostringstream out;
    const DumpStreamKept kept(out);
    const Chronometer chronometer("Task", true, "", "", 0);
    out.exceptions(std::ios::badbit);
    EXPECT_THROW(out.setstate(std::ios::badbit), std::ios::failure);
}

/// The line of a chronometer of so many calls that took nothing.
std::string LineAfter(std::int64_t calls) {
    AdditiveChronometer chronometer("Place");
    for (std::int64_t i = 0; i < calls; ++i) chronometer.EndSpan(Time::Get());
    const LogCapture log;
    chronometer.Dump();
    const auto texts = log.Texts(Verbose::EMessageType::Info);
    if (texts.empty()) return {};
    return KM::Test::Replaced(texts[0], "Time: +[0-9.]+ ", "Time: t ");
}

TEST(AdditiveChronometer, WithoutCallsDumpsNothing) { EXPECT_EQ(LineAfter(0), ""); }

TEST(AdditiveChronometer, ScalesTheCountForReading) {
    EXPECT_EQ(LineAfter(1), "Time: t Seconds, Called:    1  Times, Inside: Place;");
    EXPECT_EQ(LineAfter(9999), "Time: t Seconds, Called: 9999  Times, Inside: Place;");
    EXPECT_EQ(LineAfter(10000), "Time: t Seconds, Called:   10 KTimes, Inside: Place;");
    EXPECT_EQ(LineAfter(12345), "Time: t Seconds, Called:   12 KTimes, Inside: Place;");
    EXPECT_EQ(LineAfter(19999), "Time: t Seconds, Called:   19 KTimes, Inside: Place;");
}

TEST(AdditiveChronometer, ScalesMillionsAndBillions) {
    const struct {
        std::int64_t calls;
        long long count;
        char unit;
    } rows[] = {{9999, 9999, ' '},
                {10000, 10, 'K'},
                {9999999, 9999, 'K'},
                {10000000, 10, 'M'},
                {9999999999, 9999, 'M'},
                {10000000000, 10, 'B'},
                {std::numeric_limits<std::int64_t>::max(), 9223372036, 'B'}};
    for (const auto& row : rows) {
        EXPECT_EQ(Time::Scaled(row.calls).count, row.count) << row.calls;
        EXPECT_EQ(Time::Scaled(row.calls).unit, row.unit) << row.calls;
    }
}

TEST(AdditiveChronometer, ShowsTheTotalWithTwoDigits) {
    AdditiveChronometer chronometer("Place");
    chronometer.EndSpan(Time::Get() - 1.5);
    EXPECT_NEAR(chronometer.Total(), 1.5, 0.1);
    const LogCapture log;
    chronometer.Dump();
    const std::string text = log.Texts(Verbose::EMessageType::Info).at(0);
    EXPECT_TRUE(KM::Test::Matches(text, "Time:    1\\.5[0-9] Seconds, Called:    1  Times, Inside: Place;")) << text;
}

TEST(AdditiveChronometer, SurvivesAnyStart) {
    for (const double start : {-1e308, 1e308, std::numeric_limits<double>::quiet_NaN(), -HUGE_VAL}) {
        AdditiveChronometer chronometer("Place");
        chronometer.EndSpan(start);
        const LogCapture log;
        chronometer.Dump();
        EXPECT_TRUE(
            log.Texts(Verbose::EMessageType::Info).at(0).ends_with("Seconds, Called:    1  Times, Inside: Place;"));
    }
}

TEST(AdditiveChronometer, CopiesAndMoves) {
    AdditiveChronometer first("Place");
    first.EndSpan(Time::Get() - 2);
    const AdditiveChronometer copy(first);
    AdditiveChronometer assigned("Other");
    assigned = copy;
    AdditiveChronometer moved(std::move(first));
    AdditiveChronometer moveAssigned("Third");
    moveAssigned = std::move(assigned);
    for (const AdditiveChronometer* each :
         std::initializer_list<const AdditiveChronometer*>{&copy, &moved, &moveAssigned}) {
        EXPECT_EQ(each->Name(), "Place");
        EXPECT_EQ(each->Calls(), 1);
        EXPECT_EQ(each->Total(), copy.Total());
    }
}

TEST(AdditiveChronometer, AutoFindsTheOneOfItsName) {
    AdditiveChronometer *here = nullptr, *there = nullptr, *elsewhere = nullptr;
    { const AdditiveChronometer::Auto span("Auto.Same", here); }
    { const AdditiveChronometer::Auto span("Auto.Same", there); }
    { const AdditiveChronometer::Auto span("Auto.Other", elsewhere); }
    ASSERT_NE(here, nullptr);
    EXPECT_EQ(here, there);
    EXPECT_NE(here, elsewhere);
    EXPECT_EQ(here->Calls(), 2);
    EXPECT_EQ(here->Name(), "Auto.Same");
    { const AdditiveChronometer::Auto span("Auto.NotAskedAgain", here); }
    EXPECT_EQ(here->Calls(), 3);
}

TEST(AdditiveChronometer, AutoSurvivesASlotThatIsCleared) {
    AdditiveChronometer* slot = nullptr;
    const AdditiveChronometer::Auto span("Auto.Cleared", slot);
    slot = nullptr;
}

TEST(AdditiveChronometer, ThreadsMakeOneOfAName) {
    static AdditiveChronometer* shared = nullptr;
    constexpr int threads = 8, calls = 500;
    std::vector<AdditiveChronometer*> own(threads, nullptr);
    std::vector<std::thread> running;
    for (int t = 0; t < threads; ++t)
        running.emplace_back([&own, t] {
            for (int i = 0; i < calls; ++i) {
                const AdditiveChronometer::Auto span("Threads.Shared", shared);
                const AdditiveChronometer::Auto ownSpan("Threads.Shared", own[static_cast<std::size_t>(t)]);
                AdditiveChronometer* fresh = nullptr;
                const AdditiveChronometer::Auto other("Threads." + std::to_string(i % 7), fresh);
            }
        });
    for (std::thread& thread : running) thread.join();
    for (const AdditiveChronometer* each : own) EXPECT_EQ(each, shared);
    EXPECT_EQ(shared->Calls(), 2 * threads * calls);
}

TEST(AdditiveChronometer, DumpAllGoesByName) {
    AdditiveChronometer *b = nullptr, *a = nullptr;
    { const AdditiveChronometer::Auto span("DumpAll.b", b); }
    { const AdditiveChronometer::Auto span("DumpAll.a", a); }
    const LogCapture log;
    AdditiveChronometer::DumpAll();
    const auto& lines = log.Lines();
    ASSERT_GE(lines.size(), 5u);
    EXPECT_EQ(lines.front(), "<ActiveActionsTracers>");
    EXPECT_EQ(lines.back(), "</ActiveActionsTracers>");
    std::vector<std::string> names;
    for (const std::string& text : log.Texts(Verbose::EMessageType::Info))
        names.push_back(text.substr(text.find("Inside: ")));
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
    EXPECT_NE(std::find(names.begin(), names.end(), "Inside: DumpAll.a;"), names.end());
}

}  // namespace
}  // namespace KM
