#include "Utils/U_App/MemoryLoad.h"

#include <gtest/gtest.h>

#include <string>

#include "Support/LogCapture.h"
#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Settings/Settings.h"

namespace KM {
namespace {

using Test::LogCapture;

/// "restart", or "goes on", and the log line by line.
std::string Judge(double factor, double percent) {
    const LogCapture log;
    std::string text = "goes on";
    try {
        JudgeMemoryLoad(factor, percent);
    } catch (const XRestartMe&) {
        text = "restart";
    }
    for (const std::string& line : log.Lines()) text += "\n" + line;
    return text;
}

TEST(MemoryLoad, AboveTheFactorRestarts) {
    EXPECT_EQ(
        Judge(0.5, 51.0),
        "restart\n<Info>Current MemoryLoading is: 51% this is unacceptable. Memory is fragmented and a restart is "
        "required.</Info>");
    EXPECT_EQ(Judge(0.9, 91.0).substr(0, 7), "restart");
    EXPECT_EQ(Judge(0.1, 11.0).substr(0, 7), "restart");
}

TEST(MemoryLoad, UpToTheFactorGoesOn) {
    EXPECT_EQ(Judge(0.5, 50.0),
              "goes on\n<Info>Current MemoryLoading is: 50% this is acceptable lower than MaxAcceptableMemoryLoading: "
              "50%. Execution continue.</Info>");
    // Truncated: 0.29 * 100.0 is a little less than 29.
    EXPECT_NE(Judge(0.29, 12.0).find("MaxAcceptableMemoryLoading: 28%"), std::string::npos);
}

TEST(MemoryLoad, FactorsOutsideTheRangeSwitchItOff) {
    for (const double factor : {1.0, 0.95, 0.90001, 0.09999, 0.0, -1.0, std::stod("nan"), std::stod("inf")})
        EXPECT_FALSE(IsMemoryLimit(factor)) << factor;
    for (const double factor : {0.1, 0.5, 0.9}) EXPECT_TRUE(IsMemoryLimit(factor)) << factor;
}

TEST(MemoryLoad, FactorIsASetting) {
    const LogCapture log;
    XML::Element& setting = Settings::ToXMLElement("Behavior.MaxAcceptableMemoryLoadingFactor");
    EXPECT_NO_THROW(RestartIfIsHeavyMemoryUsage());
    EXPECT_TRUE(log.Lines().empty());
    const auto told = [&](const char* factor) {
        setting.V(factor);
        try {
            RestartIfIsHeavyMemoryUsage();
        } catch (const XRestartMe&) {}
        return log.Count(Verbose::EMessageType::Info);
    };
    EXPECT_EQ(told("0.95"), 0);
    EXPECT_EQ(told("0.5"), 1);
    setting.V("1.0");
}

}  // namespace
}  // namespace KM
