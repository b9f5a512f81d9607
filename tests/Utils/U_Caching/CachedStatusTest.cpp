#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Utils/U_Caching/CacheFolder.h"
#include "Utils/U_Caching/CachedObjects.h"
#include "Utils/U_Caching/CachedResults.h"

namespace KM::Caching {
namespace {

using Test::Result;
using Test::ViewedResult;
using Texts = std::vector<std::string>;
using Verbose::EMessageType;

class CachedStatus : public Test::CacheFolder {
protected:
    CachedStatus() { Verbose::Level(EMessageType::All); }
    ~CachedStatus() override { Verbose::Level(EMessageType::Note); }

    /// The messages of one dump.
    Texts Dumped() const {
        const std::size_t before = log.Texts(EMessageType::Info).size();
        DumpCurrentlyCachedObjects();
        Texts texts = log.Texts(EMessageType::Info);
        texts.erase(texts.begin(), texts.begin() + static_cast<std::ptrdiff_t>(before));
        return texts;
    }
};

TEST_F(CachedStatus, IsToldAtTheLevelOfAllOnly) {
    const ViewedResult a("A");
    Verbose::Level(EMessageType::Note);
    const std::size_t before = log.Lines().size();
    DumpCurrentlyCachedObjects();
    EXPECT_EQ(log.Lines().size(), before);
}

TEST_F(CachedStatus, IsToldInAScope) {
    const ViewedResult a("A");
    const std::size_t before = log.Lines().size();
    DumpCurrentlyCachedObjects();
    ASSERT_EQ(log.Lines().size(), before + 4);
    EXPECT_EQ(log.Lines()[before], "<CachedObjectsStatus>");
    EXPECT_EQ(log.Lines()[before + 3], "</CachedObjectsStatus>");
}

TEST_F(CachedStatus, TellsWhatIsCreated) {
    const ViewedResult idle("Idle");
    const ViewedResult created("Created one");
    created.Create();
    const Result withoutView("W");
    EXPECT_EQ(Dumped(), (Texts{"Status: IDLE    , Size:      0[Kb] , Name: Idle",
                               "Status: CREATED , Size:      0[Kb] , Name: Created one"}));
}

TEST_F(CachedStatus, TellsTheSizeOfTheDataFile) {
    const ViewedResult a("A");
    const std::string name = "cache/" + a.CreateFileName(DataExt()).substr(Path().size());
    temp.Write(name, "");
    const struct {
        std::uintmax_t bytes;
        const char* size;
    } sizes[] = {{1023, "     0"}, {1024, "     1"}, {5000, "     4"}, {1023999999, "999999"}, {1 << 30, "1048576"}};
    for (const auto& [bytes, size] : sizes) {
        std::filesystem::resize_file(temp / name, bytes);
        EXPECT_EQ(Dumped(), Texts{"Status: IDLE    , Size: " + std::string(size) + "[Kb] , Name: A"});
    }
}

TEST_F(CachedStatus, AsksTheFirstViewThatIsThere) {
    const Result result("R");
    auto first = std::make_unique<ViewedResult>("1");
    const ViewedResult second("2");
    result.SubscribeInterface(*first);
    result.SubscribeInterface(second);
    first->Create();
    EXPECT_EQ(Dumped().front(), "Status: CREATED , Size:      0[Kb] , Name: R");
    second.Create();
    first.reset();
    EXPECT_EQ(Dumped().front(), "Status: CREATED , Size:      0[Kb] , Name: R");
}

TEST_F(CachedStatus, PassesOverTheDead) {
    const ViewedResult a("A");
    auto b = std::make_unique<ViewedResult>("B");
    const ViewedResult c("C");
    b.reset();
    EXPECT_EQ(Dumped(), Texts{"Status: IDLE    , Size:      0[Kb] , Name: A"});
}

}  // namespace
}  // namespace KM::Caching
