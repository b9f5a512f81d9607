#include "Utils/U_Console/LogServices.h"

#include <gtest/gtest.h>

#include "Support/RecordingDevice.h"
#include "Utils/U_Console/ConsoleDumpingDevice.h"

namespace KM {
namespace {

TEST(Services, MakeOneConsoleDeviceForTheWholeProcess) {
    Services::SetDumpingDevice(nullptr);
    DumpingDevice* const made = Services::GetDumpingDevice();
    EXPECT_NE(dynamic_cast<ConsoleDumpingDevice*>(made), nullptr);
    EXPECT_EQ(Services::GetDumpingDevice(), made);
    KM::Test::RecordingDevice own;
    Services::SetDumpingDevice(&own);
    EXPECT_EQ(Services::GetDumpingDevice(), &own);
    EXPECT_EQ(own.Take(), "");
    Services::SetDumpingDevice(nullptr);
    EXPECT_EQ(Services::GetDumpingDevice(), made);
    Services::SetDumpingDevice(nullptr);
}

TEST(Services, MakeOneXmlFormatterForTheWholeProcess) {
    Services::SetOutputFormatter(nullptr);
    EXPECT_FALSE(Services::HasOutputFormatter());
    OutputFormatter* const made = Services::GetOutputFormatter();
    EXPECT_NE(dynamic_cast<XMLFormatter*>(made), nullptr);
    EXPECT_TRUE(Services::HasOutputFormatter());
    Services::SetOutputFormatter(nullptr);
    EXPECT_EQ(Services::GetOutputFormatter(), made);
}

}  // namespace
}  // namespace KM
