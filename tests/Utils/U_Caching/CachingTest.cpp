#include "Utils/U_Caching/Caching.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <limits>
#include <sstream>
#include <string>

#include "Support/InChild.h"
#include "Support/TempFolder.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_IO/FileNames.h"

// All in processes of their own, so that each finds the state as it is at start.
namespace KM {
namespace {

namespace fs = std::filesystem;
using Test::InChild;
using Test::TempFolder;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

template <class... Values>
std::string Listed(const Values&... values) {
    std::ostringstream text;
    ((text << values << ' '), ...);
    return text.str();
}

std::string PathAtStart(const char* cache, const std::string& home) {
    return InChild([&] {
        if (cache != nullptr) setenv("XDG_CACHE_HOME", cache, 1);
        else unsetenv("XDG_CACHE_HOME");
        setenv("HOME", home.c_str(), 1);
        return Caching::Path();
    });
}

TEST(Caching, HasItsDefaultsAtStart) {
    EXPECT_EQ(InChild([] {
                  using namespace Caching;
                  return Listed(DataExt(), InfoExt(), ProgressExt(), ColorForWriting(), ColorForReading(),
                                CleaningSize(), DeleteFactor(), TimeBetweenAnalysis(), LastAnalysisTime(),
                                CleaningEnabled(), PersistentTime(), IsEnabledInfoWrite(), InfoNeedsReading());
              }),
              ".Data .Info .Progress 4 2 2000 0.5 900 0 0 1 0 1 ");
}

TEST(Caching, KeepsWhatIsSet) {
    EXPECT_EQ(InChild([] {
                  using namespace Caching;
                  DataExt(".d");
                  InfoExt("");
                  ProgressExt(".p");
                  ColorForWriting(0);
                  ColorForReading(-7);
                  CleaningSize(0.0);
                  DeleteFactor(3.5);
                  TimeBetweenAnalysis(-1.0);
                  LastAnalysisTime(1e9);
                  CleaningEnabled(true);
                  Persistent(2.5);
                  InfoWrite(true);
                  InfoNeedsReading(false);
                  return Listed(DataExt(), InfoExt(), ProgressExt(), ColorForWriting(), ColorForReading(),
                                CleaningSize(), DeleteFactor(), TimeBetweenAnalysis(), LastAnalysisTime(),
                                CleaningEnabled(), PersistentTime(), IsEnabledInfoWrite(), InfoNeedsReading());
              }),
              ".d  .p 0 -7 0 3.5 -1 1e+09 1 2.5 1 0 ");
}

TEST(Caching, RefusesNumbersThatCannotBeMeant) {
    EXPECT_EQ(InChild([] {
                  using namespace Caching;
                  for (const double wrong : {NaN, -Infinity, -1e20, -1e300}) {
                      CleaningSize(wrong);
                      DeleteFactor(wrong);
                  }
                  CleaningSize(-1.0);
                  DeleteFactor(-0.1);
                  for (const double wrong : {NaN, -Infinity, -1e20, -1e19}) {
                      TimeBetweenAnalysis(wrong);
                      PersistentTime(wrong);
                      Persistent(wrong);
                  }
                  for (const double wrong : {NaN, Infinity, -Infinity, 1e20, -1e20}) LastAnalysisTime(wrong);
                  return Listed(CleaningSize(), DeleteFactor(), TimeBetweenAnalysis(), LastAnalysisTime(),
                                PersistentTime());
              }),
              "2000 0.5 900 0 1 ");
}

TEST(Caching, TakesASizeWithoutLimit) {
    EXPECT_EQ(InChild([] {
                  Caching::CleaningSize(Infinity);
                  return Listed(Caching::CleaningSize());
              }),
              "inf ");
}

TEST(Caching, TakesSpansWithoutEnd) {
    for (const double endless : {1e20, Infinity}) {
        EXPECT_EQ(InChild([&] {
                      Caching::TimeBetweenAnalysis(endless);
                      Caching::Persistent(endless);
                      return Listed(Caching::TimeBetweenAnalysis(), Caching::PersistentTime(),
                                    Caching::IsPersistent(0.0));
                  }),
                  Listed(endless, endless, false));
    }
}

TEST(CachingPath, LiesInTheCacheOfTheUserAndIsNotMade) {
    const TempFolder temp;
    EXPECT_EQ(PathAtStart((temp / "cache").c_str(), temp / "home"), IO::ValidateFileName(temp / "cache/km/Cache"));
    for (const char* cache : {static_cast<const char*>(nullptr), "", "relative"})
        EXPECT_EQ(PathAtStart(cache, temp / "home"), IO::ValidateFileName(temp / "home/.cache/km/Cache"));
    EXPECT_TRUE(temp.Names().empty());
}

TEST(CachingPath, IsValidatedAndMade) {
    const TempFolder temp;
    EXPECT_EQ(InChild([&] {
                  Caching::Path(temp / "a b /c");
                  return Caching::Path();
              }),
              IO::ValidateFileName(temp / "a b/c"));
    EXPECT_TRUE(fs::is_directory(temp / "a b/c"));
}

TEST(CachingPath, ThatCannotBeMadeIsKept) {
    const TempFolder temp;
    temp.Write("file", "");
    EXPECT_EQ(InChild([&] {
                  Caching::Path(temp / "file/below");
                  return Caching::Path();
              }),
              IO::ValidateFileName(temp / "file/below"));
}

TEST(CachingIsPersistent, AsksWhetherItTookLonger) {
    EXPECT_EQ(InChild([] {
                  using Caching::IsPersistent;
                  const double now = Time::Get();
                  return Listed(IsPersistent(now), IsPersistent(now + 100.0), IsPersistent(now - 1.5),
                                IsPersistent(NaN), IsPersistent(Infinity), IsPersistent(-Infinity));
              }),
              "0 0 1 0 0 1 ");
    EXPECT_EQ(InChild([] {
                  Caching::Persistent(100.0);
                  const double now = Time::Get();
                  return Listed(Caching::IsPersistent(now - 50.0), Caching::IsPersistent(now - 100.5));
              }),
              "0 1 ");
}

}  // namespace
}  // namespace KM
