#include <gtest/gtest.h>

#include <string>

#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_Settings/Settings.h"

namespace KM {
namespace {

using Test::InChild;
using Test::LogCapture;

std::string Values() {
    std::string text = std::to_string(ID()) + " ";
    text += IsEnableInCacheLookingForCheckAbort() ? 'Y' : 'N';
    text += IsEnableInCacheProgressStatus() ? 'Y' : 'N';
    text += IsEnableInConsoleProgressStatus() ? 'Y' : 'N';
    return text + " " + std::to_string(TimeGranularity()) + " " + std::to_string(Verbose::Level());
}

TEST(StatusConfiguration, IsQuietAtStart) { EXPECT_EQ(InChild(Values), "1 NNN 0.200000 5"); }

TEST(StatusConfiguration, DefaultsOfTheSettingsAreThoseAtStart) {
    EXPECT_EQ(InChild([] {
                  ID(7);
                  IsEnableInCacheLookingForCheckAbort(true);
                  IsEnableInCacheProgressStatus(true);
                  IsEnableInConsoleProgressStatus(true);
                  TimeGranularity(3.0);
                  Verbose::ConfigureFromSettings();
                  return Values();
              }),
              "1 NNN 0.200000 5");
}

TEST(StatusConfiguration, EachValueHasItsSetting) {
    const struct {
        const char* key;
        const char* value;
        const char* expected;
    } table[] = {
        {"Communication.ID", "12", "12 NNN 0.200000 5"},
        {"Communication.EnableInCacheLookingForCheckAbort", "y", "1 YNN 0.200000 5"},
        {"Communication.EnableInCacheProgressStatus", "ON", "1 NYN 0.200000 5"},
        {"Communication.EnableInConsoleProgressStatus", "1", "1 NNY 0.200000 5"},
        {"Communication.TimeGranularity", "1.5", "1 NNN 1.500000 5"},
        {"Debug.VerboseLevel", "2", "1 NNN 0.200000 2"},
    };
    for (const auto& row : table) {
        SCOPED_TRACE(row.key);
        EXPECT_EQ(InChild([&] {
                      Settings::ToXMLElement(row.key).V(row.value);
                      Verbose::ConfigureFromSettings();
                      return Values();
                  }),
                  row.expected);
    }
}

TEST(StatusConfiguration, ChangeOfTheLevelIsLogged) {
    EXPECT_EQ(InChild([] {
                  const LogCapture log;
                  Settings::ToXMLElement("Debug.VerboseLevel").V("1");
                  Verbose::ConfigureFromSettings();
                  return log.Lines().at(0);
              }),
              "<System>Level has changed from: MessageType.Note to: MessageType.System;</System>");
}

}  // namespace
}  // namespace KM
