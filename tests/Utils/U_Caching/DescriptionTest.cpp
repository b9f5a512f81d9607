#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Utils/U_Caching/CachedObjects.h"
#include "Utils/U_Caching/CachedResults.h"

namespace KM::Caching {
namespace {

using Test::Result;

std::string Start(const ACached& object) { return object.Name() + "{K=" + KeyText(object.GetKey()) + ","; }
std::string Alone(const ACached& object) { return Start(object) + "}"; }

TEST(Description, OfOneObject) {
    EXPECT_EQ(Result().GetDescription(), "{K=000000,}");
    EXPECT_EQ(Result("A").GetDescription(), "A{K=apf10zqwh81jhmcpu2ydqzdlg977z13y4ngl,}");
}

TEST(Description, HasOtherDependencies) {
    const Result result("A", "x=1");
    EXPECT_EQ(result.GetDescription(), Start(result) + "OtherDependencies[x=1]}");
}

TEST(Description, HasCachedDependencies) {
    const Result a("A");
    const Result b("B");
    const Result c("C");
    c.SubscribeDependsOn(a, true);
    c.SubscribeDependsOn(b, false);
    c.SubscribeDependsOn(a, false);
    EXPECT_EQ(c.GetDescription(),
              Start(c) + "CachedDependencies[" + Alone(a) + "," + Alone(b) + "," + Alone(a) + "], }");
}

TEST(Description, HasBoth) {
    const Result a("A", "y");
    const Result b("B", "x");
    b.SubscribeDependsOn(a, true);
    EXPECT_EQ(b.GetDescription(),
              Start(b) + "CachedDependencies[" + Start(a) + "OtherDependencies[y]}], OtherDependencies[, x]}");
}

TEST(Description, TellsSharedDependenciesEachTime) {
    const Result a("A");
    const Result b("B");
    const Result c("C");
    const Result d("D");
    b.SubscribeDependsOn(a, true);
    c.SubscribeDependsOn(a, true);
    d.SubscribeDependsOn(b, true);
    d.SubscribeDependsOn(c, true);
    const std::string inner = "CachedDependencies[" + Alone(a) + "], }";
    EXPECT_EQ(d.GetDescription(),
              Start(d) + "CachedDependencies[" + Start(b) + inner + "," + Start(c) + inner + "], }");
}

TEST(Description, EndsAtObjectsThatDependOnThemselves) {
    const Result self("S", "x");
    self.SubscribeDependsOn(self, true);
    EXPECT_EQ(self.GetDescription(), Start(self) + "CachedDependencies[" + Alone(self) + "], OtherDependencies[, x]}");
}

TEST(Description, EndsInLoops) {
    const Result a("A");
    const Result b("B");
    a.SubscribeDependsOn(b, true);
    b.SubscribeDependsOn(a, true);
    EXPECT_EQ(a.GetDescription(),
              Start(a) + "CachedDependencies[" + Start(b) + "CachedDependencies[" + Alone(a) + "], }], }");
}

TEST(Description, LeavesOutTheDead) {
    auto a = std::make_unique<Result>("A");
    const Result b("B");
    const Result c("C");
    c.SubscribeDependsOn(*a, true);
    c.SubscribeDependsOn(b, true);
    a.reset();
    EXPECT_EQ(c.GetDescription(), Start(c) + "CachedDependencies[" + Alone(b) + "], }");
}

// Each object is told twice by the next one: in full, sixty of them would fill all memory.
TEST(Description, OfMoreWaysThanCanBeToldStaysBounded) {
    std::vector<std::unique_ptr<Result>> ladder;
    for (int i = 0; i < 60; ++i) {
        ladder.push_back(std::make_unique<Result>("L"));
        for (const bool flag : {false, true})
            if (i > 0) ladder[i]->SubscribeDependsOn(*ladder[i - 1], flag);
    }
    const std::string text = ladder.back()->GetDescription();
    EXPECT_GT(text.size(), std::size_t{64} << 20);
    EXPECT_LT(text.size(), std::size_t{65} << 20);
}

}  // namespace
}  // namespace KM::Caching
