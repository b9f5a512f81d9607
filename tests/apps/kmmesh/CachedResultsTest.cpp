#include "CachedResults.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <filesystem>
#include <limits>
#include <random>

#include "CacheFile.h"
#include "Support/Meshes.h"
#include "Support/TempFolder.h"
#include "ToolRun.h"
#include "Utils/U_Caching/Caching.h"

namespace KM::Tool {
namespace {

namespace fs = std::filesystem;
using namespace Test;

/// All results go into a folder of their own, however quick they are made.
class CachedResults : public testing::Test {
protected:
    void SetUp() override {
        Caching::Path(cache_ / "");
        Caching::Persistent(-1.0);
        folder_.Write("a.stl", BinaryStl(BumpySphereFacets(6).AsSoup()));
        Settle("a.stl");
    }
    void TearDown() override {
        Caching::Path(pathBefore_);
        Caching::Persistent(persistentBefore_);
    }

    /// As if the file had been there for long.
    void Settle(const std::string& name) const {
        fs::last_write_time(folder_ / name, fs::file_time_type::clock::now() - std::chrono::hours(1));
    }
    std::string File() const { return folder_ / "a.stl"; }

    const TempFolder folder_;
    const TempFolder cache_;

private:
    const std::string pathBefore_ = Caching::Path();
    const double persistentBefore_ = Caching::PersistentTime();
};

/// A result that counts how often it is made.
struct Counted {
    explicit Counted(const std::string& file, const std::string& inputs, bool isUsed = true)
        : part(file, isUsed),
          numbers(
              "distances", inputs, (part.Load(), part), [this] { return ++made, Numbers(); },
              [](const std::vector<double>& found) { return found == Numbers(); }) {
        numbers.Load();
    }
    static std::vector<double> Numbers() { return {1.0, -0.0, INFINITY, 5e-324}; }

    int made = 0;
    CachedPart part;
    Cached<std::vector<double>> numbers;
};

TEST_F(CachedResults, AreFoundByTheirInputs) {
    EXPECT_EQ(Counted(File(), "from 1").made, 1);
    EXPECT_EQ(cache_.Names().size(), 2u);
    const Counted again(File(), "from 1");
    EXPECT_EQ(again.made, 0);
    EXPECT_TRUE(again.part.IsFound());
    EXPECT_TRUE(again.numbers.IsFound());
    EXPECT_EQ(Counted(File(), "from 2").made, 1);
    EXPECT_EQ(Counted(File(), "from 1").made, 0);
}

TEST_F(CachedResults, HoldTheSameBits) {
    const Part fresh = ReadPart(File());
    for (const bool isFound : {false, true}) {
        CachedPart part(File(), true);
        part.Load();
        EXPECT_EQ(part.IsFound(), isFound);
        EXPECT_EQ(Pack(part.Value()), Pack(fresh));
    }
}

TEST_F(CachedResults, DependOnTheFile) {
    const std::string bytes = folder_.Bytes("a.stl");
    EXPECT_EQ(Counted(File(), "x").made, 1);
    fs::create_directory(folder_ / "sub");
    fs::copy(File(), folder_ / "sub/a.stl");
    Settle("sub/a.stl");
    EXPECT_EQ(Counted(folder_ / "sub/a.stl", "x").made, 1) << "another path";
    const auto time = fs::last_write_time(File());
    fs::last_write_time(File(), time + std::chrono::nanoseconds(1));
    EXPECT_EQ(Counted(File(), "x").made, 1) << "another time";
    folder_.Write("a.stl", bytes + "behind");
    fs::last_write_time(File(), time);
    EXPECT_EQ(Counted(File(), "x").made, 1) << "another size";
    folder_.Write("a.stl", bytes);
    fs::last_write_time(File(), time);
    EXPECT_EQ(Counted(File(), "x").made, 0) << "as it was";
    fs::create_symlink(File(), folder_ / "link.stl");
    EXPECT_EQ(Counted(folder_ / "link.stl", "x").made, 0) << "the same file";
}

TEST_F(CachedResults, OfAFileThatMayStillChangeAreNotKept) {
    folder_.Write("a.stl", folder_.Bytes("a.stl"));
    EXPECT_EQ(Counted(File(), "x").made, 1);
    fs::last_write_time(File(), fs::file_time_type::clock::now() + std::chrono::hours(1));
    EXPECT_EQ(Counted(File(), "x").made, 1);
    EXPECT_EQ(cache_.Names(), std::vector<std::string>());
}

TEST_F(CachedResults, OfAFileThatChangesMeanwhileAreNeitherFoundNorKept) {
    EXPECT_EQ(Counted(File(), "x").made, 1);
    const std::vector<std::string> kept = cache_.Names();
    fs::remove(cache_ / kept.back());
    ASSERT_NE(kept.back().find("mesh"), std::string::npos);
    CachedPart part(File(), true);
    fs::last_write_time(File(), fs::last_write_time(File()) + std::chrono::seconds(1));
    part.Load();
    bool isMade = false;
    Cached<std::vector<double>> numbers("distances", "x", part, [&] { return isMade = true, Counted::Numbers(); });
    numbers.Load();
    EXPECT_TRUE(isMade);
    EXPECT_EQ(cache_.Names(), std::vector<std::string>{kept.front()});
}

TEST_F(CachedResults, AreKeptOnlyIfTheyTookLong) {
    Caching::Persistent(1e6);
    EXPECT_EQ(Counted(File(), "x").made, 1);
    EXPECT_EQ(cache_.Names(), std::vector<std::string>());
}

TEST_F(CachedResults, AreNeitherFoundNorKeptWithoutTheCache) {
    EXPECT_EQ(Counted(File(), "x", false).made, 1);
    EXPECT_EQ(cache_.Names(), std::vector<std::string>());
    EXPECT_EQ(Counted(File(), "x").made, 1);
    EXPECT_EQ(Counted(File(), "x", false).made, 1);
}

TEST_F(CachedResults, ThatLieUnderTheNameOfAnotherAreReplaced) {
    EXPECT_EQ(Counted(File(), "x").made, 1);
    const std::string name = cache_ / cache_.Names().front();
    ASSERT_NE(name.find("distances"), std::string::npos);
    const CacheFile sound = ReadCacheFile(name);
    std::string older = sound.madeFrom;
    older.replace(older.rfind("kmmesh "), std::string::npos, "kmmesh 0.0.9-1");
    ASSERT_NE(older, sound.madeFrom);
    const std::pair<std::string, std::string> others[] = {
        {older, sound.data},
        {sound.madeFrom, sound.data + "x"},
        {sound.madeFrom, ""},
        {sound.madeFrom, Pack(std::vector<double>{1.0})},
    };
    for (const auto& [madeFrom, data] : others) {
        ASSERT_TRUE(WriteCacheFile(name, madeFrom, data));
        testing::internal::CaptureStderr();
        const Counted anew(File(), "x");
        EXPECT_EQ(Lines(testing::internal::GetCapturedStderr()).size(), 1u);
        EXPECT_EQ(anew.made, 1);
        EXPECT_EQ(ReadCacheFile(name).madeFrom, sound.madeFrom);
        EXPECT_EQ(ReadCacheFile(name).data, sound.data);
    }
}

TEST_F(CachedResults, ThatAreUnsoundAreReplacedHoweverQuickTheyAreMade) {
    EXPECT_EQ(Counted(File(), "x").made, 1);
    const std::string name = cache_.Names().front();
    const std::string sound = cache_.Bytes(name);
    Caching::Persistent(1e6);
    cache_.Write(name, "");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Counted(File(), "x").made, 1);
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(),
        "kmmesh: " + (cache_ / name) + ": is cut short or too long; it is left aside, and the result made anew\n");
    EXPECT_EQ(cache_.Bytes(name), sound);
}

TEST_F(CachedResults, CanBeDroppedAndLoadedAgain) {
    Counted result(File(), "x");
    result.numbers.Destroy();
    EXPECT_FALSE(result.numbers.IsCreated());
    EXPECT_TRUE(result.numbers.Value().empty());
    result.numbers.Load();
    EXPECT_EQ(result.numbers.Value(), Counted::Numbers());
    EXPECT_EQ(result.made, 1);
    result.part.Invalidate();
    EXPECT_EQ(cache_.Names(), std::vector<std::string>());
}

TEST_F(CachedResults, TellWhatTheyAreMadeFrom) {
    const Counted result(File(), "from 7");
    const CacheFile file = ReadCacheHead(cache_ / cache_.Names().front());
    EXPECT_TRUE(file.madeFrom.starts_with("distances from 7; mesh of " + fs::canonical(File()).string() + ", "))
        << file.madeFrom;
    EXPECT_NE(result.numbers.GetDescription().find("OtherDependencies[, from 7]"), std::string::npos);
}

TEST(ExactText, TellsNumbersApartThatDifferInTheLastBit) {
    for (const double number : {0.1, 1e-300, 12345.678, -0.0}) {
        EXPECT_NE(ExactText(number), ExactText(std::nextafter(number, 1e300)));
        EXPECT_EQ(std::stod(ExactText(number)), number);
    }
}

/// Whole bytes come back the same; all prefixes, and more bytes, are refused.
template <class T>
void ExpectPacks(const T& value) {
    const std::string bytes = Pack(value);
    T back;
    ASSERT_TRUE(Unpack(bytes, back));
    EXPECT_EQ(Pack(back), bytes);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        T other;
        ASSERT_FALSE(Unpack(bytes.substr(0, size), other)) << size;
    }
    T other;
    EXPECT_FALSE(Unpack(bytes + '\0', other));
}

TEST(Packing, TakesWholeResultsOnly) {
    ExpectPacks(Part{Cube(), 14, 1, 1});
    ExpectPacks(Part());
    ExpectPacks(Reduction{Cube(), {0.5, -0.0}});
    ExpectPacks(std::vector<double>{NAN, -0.0, 1e308});
    ExpectPacks(std::vector<double>());
    PIN mesh = BumpySphere(4);
    const Levels levels(mesh, {0.0, 5.0});
    ExpectPacks(levels);
    Levels back;
    ASSERT_TRUE(Unpack(Pack(levels), back));
    EXPECT_EQ(back.FileOf(mesh), levels.FileOf(mesh));
}

TEST(Packing, RefusesIndicesBeyondTheMesh) {
    for (const std::int32_t index : {-2, 1000, std::numeric_limits<std::int32_t>::max()}) {
        for (std::int32_t Edge::*link : {&Edge::NE, &Edge::TE, &Edge::P0}) {
            Part part{Cube()};
            part.mesh.edges[5].*link = index;
            Part back;
            EXPECT_FALSE(Unpack(Pack(part), back)) << index;
        }
        Reduction reduction{Cube(), {}};
        reduction.mesh.p2e[0] = index;
        Reduction back;
        EXPECT_FALSE(Unpack(Pack(reduction), back)) << index;
    }
}

template <class T>
void ExpectSurvivesChangedBytes(const T& value, std::mt19937& random) {
    std::string bytes = Pack(value);
    for (int change = 0; change < 3; ++change) bytes[random() % bytes.size()] = static_cast<char>(random());
    T back;
    if (!Unpack(bytes, back)) return;
    EXPECT_EQ(Pack(back), bytes);
}

TEST(Packing, TakesChangedBytesAsTheyAreOrRefusesThem) {
    PIN mesh = BumpySphere(3);
    const Part part{mesh};
    const Reduction reduction{mesh, {}};
    const Levels levels(mesh, {0.0, 5.0});
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        ExpectSurvivesChangedBytes(part, random);
        ExpectSurvivesChangedBytes(reduction, random);
        ExpectSurvivesChangedBytes(levels, random);
    }
}

TEST(Packing, ReservesNothingForCountsThatCannotBe) {
    for (const char byte : {'\x7f', '\xff'}) {
        std::vector<double> numbers;
        EXPECT_FALSE(Unpack(std::string(16, byte), numbers));
        Levels levels;
        EXPECT_FALSE(Unpack(std::string(16, byte), levels));
    }
}

}  // namespace
}  // namespace KM::Tool
