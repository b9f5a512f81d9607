#include "Utils/U_Caching/CachedObjects.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "Support/LogOn.h"
#include "Support/Numbers.h"
#include "Support/SignalDevice.h"
#include "Utils/U_Caching/CacheFolder.h"
#include "Utils/U_Caching/CachedResults.h"
#include "Utils/U_XMLReader/Element.h"

namespace KM::Caching {
namespace {

using Test::LogOn;
using Test::Numbers;
using Test::Result;
using Test::SameBits;
using Test::SignalDevice;
using Test::ViewedResult;
using Objects = std::vector<ACached*>;
using Names = std::vector<std::string>;
using Verbose::EMessageType;

class Cached : public Test::CacheFolder {};

static_assert(std::is_abstract_v<ACached> && std::is_abstract_v<AInterface>);
static_assert(std::has_virtual_destructor_v<ACached>);
static_assert(std::is_base_of_v<ACached, AInterface>);
static_assert(!std::is_copy_constructible_v<Result> && !std::is_copy_assignable_v<Result>);
static_assert(!std::is_copy_constructible_v<ViewedResult> && !std::is_copy_assignable_v<ViewedResult>);

TEST_F(Cached, StartsWithoutNameAndWithANewKey) {
    const Result result;
    EXPECT_EQ(result.Name(), "");
    EXPECT_EQ(result.GetKey().count, 10.0);
    EXPECT_EQ(result.FileName(), Path() + "$.000000");
    EXPECT_EQ(result.CreateFileName(".Data"), Path() + "$.000000.Data");
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(Cached, NameGoesIntoTheKey) {
    Result result("A");
    EXPECT_EQ(result.GetKey().count, 11.0);
    for (int j = 0; j < 6; ++j) EXPECT_TRUE(SameBits(result.GetKey().k[j], (j + 1) / std::log(65.0) / std::log(11.0)));
    EXPECT_EQ(result.FileName(), Path() + "$A.apf10zqwh81jhmcpu2ydqzdlg977z13y4ngl");
    EXPECT_EQ(Result("A").FileName(), result.FileName());
    EXPECT_NE(KeyText(Result("B").GetKey()), KeyText(result.GetKey()));
}

TEST_F(Cached, SecondNameIsMixedInAsWell) {
    Result result("A");
    result.Name("A");
    EXPECT_EQ(result.Name(), "A");
    EXPECT_EQ(KeyText(result.GetKey()), KeyText(Result("AA").GetKey()));
    EXPECT_EQ(result.GetKey().count, 12.0);
}

TEST_F(Cached, InputsOfDerivedClassesGoIntoTheKey) {
    const Result result("A");
    Mix(result.GetKey(), 2.5);
    EXPECT_EQ(result.GetKey().count, 12.0);
    EXPECT_NE(result.FileName(), Result("A").FileName());
}

TEST_F(Cached, PlainOperationsDoNothing) {
    const Result result("A");
    XML::Element element("x");
    result.Dump(element, true);
    EXPECT_TRUE(element.Children().empty());
    EXPECT_TRUE(element.Attributes().empty());
}

TEST_F(Cached, KeyDumpingIsASwitchOfTheProcess) {
    EXPECT_FALSE(ACached::KeyDumping());
    ACached::EnableKeyDumping();
    EXPECT_TRUE(ACached::KeyDumping());
    ACached::DisableKeyDumping();
    EXPECT_FALSE(ACached::KeyDumping());
}

TEST_F(Cached, DependencyGoesIntoTheKeyOncePerFlag) {
    const Result a("A");
    const Result b("B");
    const Result result("Result");
    result.SubscribeDependsOn(a, true);
    EXPECT_EQ(result.GetKey().count, 17.0);
    result.SubscribeDependsOn(a, true);
    EXPECT_EQ(result.GetKey().count, 17.0);
    result.SubscribeDependsOn(b, true);
    result.SubscribeDependsOn(a, false);
    EXPECT_EQ(result.GetKey().count, 19.0);
    EXPECT_EQ(KeyText(result.GetKey()), "54chpuej8qkrlsuzfot2h18am0c31h5j7lp");
    result.SubscribeDependsOn(a, false);
    result.SubscribeDependsOn(b, true);
    EXPECT_EQ(result.GetKey().count, 19.0);
}

TEST_F(Cached, OrderOfDependenciesMatters) {
    const Result a("A");
    const Result b("B");
    const Result ab("R");
    const Result ba("R");
    ab.SubscribeDependsOn(a, true);
    ab.SubscribeDependsOn(b, true);
    ba.SubscribeDependsOn(b, true);
    ba.SubscribeDependsOn(a, true);
    EXPECT_NE(KeyText(ab.GetKey()), KeyText(ba.GetKey()));
}

TEST_F(Cached, MayDependOnItself) {
    const Result self("Self");
    self.SubscribeDependsOn(self, true);
    EXPECT_EQ(KeyText(self.GetKey()), "18zujdignaai8pf1p2r0xb14tvr63kl0hev");
}

TEST_F(Cached, ObjectThatDiedIsNoDependencyAnyMore) {
    const Result result("R");
    double count = result.GetKey().count;
    for (int i = 0; i < 100; ++i) {  // often at the same address
        const auto input = std::make_unique<Result>("I");
        result.SubscribeDependsOn(*input, true);
        EXPECT_EQ(result.GetKey().count, ++count);
    }
    EXPECT_EQ(result.GetDescription(), "R{K=" + KeyText(result.GetKey()) + ",}");
}

TEST_F(Cached, ListHasTheLiveObjectsInOrder) {
    const Objects before = CachedObjects();
    Result a;
    {
        ViewedResult b("B");
        EXPECT_EQ(CachedObjects().size(), before.size() + 2);
        EXPECT_EQ(CachedObjects().back(), &b);
    }
    EXPECT_EQ(CachedObjects().back(), &a);
}

TEST_F(Cached, DeathTakesTheLastEntryWhoeverItBelongsTo) {
    const std::size_t before = CachedObjects().size();
    const auto a = std::make_unique<Result>();
    auto b = std::make_unique<Result>();
    const auto c = std::make_unique<Result>();
    b.reset();
    // The entry of c has gone, and that of b leads nowhere.
    ASSERT_EQ(CachedObjects().size(), before + 1);
    EXPECT_EQ(CachedObjects().back(), a.get());
}

TEST_F(Cached, ObjectsMayDieInAnyOrder) {
    Verbose::Level(EMessageType::All);
    Numbers next(1);
    std::vector<std::unique_ptr<ViewedResult>> objects(50);
    for (int i = 0; i < 5000; ++i) {
        auto& object = objects[next.Below(50)];
        auto& other = objects[next.Below(50)];
        switch (next.Below(6)) {
            case 0:
                object = std::make_unique<ViewedResult>(std::to_string(i));
                break;
            case 1:
                object.reset();
                break;
            case 2:
                if (object && other) object->SubscribeInterface(*other);
                break;
            case 3:
                if (object && other) object->DetachDerived(*other);
                break;
            default:
                // One input each: the ways between objects with many are beyond counting.
                if (object && other && object->GetDescription().find('[') == std::string::npos)
                    object->SubscribeDependsOn(*other, true);
        }
        if (object && i % 10 == 0) object->Invalidate();
        if (i % 10 == 5) DumpCurrentlyCachedObjects();
    }
    Verbose::Level(EMessageType::Note);
    EXPECT_EQ(log.Count(EMessageType::Warning), 0);
}

TEST_F(Cached, ViewSubscribesItself) {
    Names released;
    const ViewedResult result("R", &released);
    result.Create();
    result.Destroy();
    EXPECT_EQ(released, Names{"R"});
    EXPECT_EQ(result.FileName_(), result.FileName());
    EXPECT_EQ(result.GetDescription_(), result.GetDescription());
}

TEST_F(Cached, CreatesThroughItsView) {
    ViewedResult result("R");
    EXPECT_FALSE(result.IsCreated());
    result.Load();
    EXPECT_TRUE(result.IsCreated());
}

TEST_F(Cached, DestroyReleasesAllViewsAndKeepsFiles) {
    Names released;
    const Result result("R");
    const ViewedResult first("1", &released);
    const ViewedResult second("2", &released);
    result.SubscribeInterface(first);
    result.SubscribeInterface(second);
    result.SubscribeInterface(first);
    temp.Write("cache/" + result.CreateFileName(".Data").substr(Path().size()), "");
    result.Destroy();
    EXPECT_EQ(released, (Names{"1", "2", "1"}));
    EXPECT_EQ(temp.Names(), Names{"cache"});
    EXPECT_TRUE(temp.Has("cache/" + result.CreateFileName(".Data").substr(Path().size())));
}

TEST_F(Cached, DeathReleasesTheViewsOfOthers) {
    Names released;
    const ViewedResult view("V", &released);
    {
        const Result result;
        result.SubscribeInterface(view);
    }
    EXPECT_EQ(released, Names{"V"});
}

TEST_F(Cached, ViewThatDiedIsNotReleased) {
    Names released;
    const Result result;
    {
        const ViewedResult view("V", &released);
        result.SubscribeInterface(view);
    }
    const ViewedResult another("W", &released);  // often at the same address
    result.Destroy();
    EXPECT_TRUE(released.empty());
}

TEST_F(Cached, ReleaseMayEndTheObject) {
    struct Suicidal : ViewedResult {
        using ViewedResult::ViewedResult;
        void Release() override { victim.reset(); }
        std::unique_ptr<Result> victim = std::make_unique<Result>("Victim");
    };
    Suicidal view("V");
    const Result derived("D");
    derived.SubscribeDependsOn(*view.victim, true);
    view.victim->SubscribeInterface(view);
    view.victim->SubscribeInterface(view);
    view.victim->Invalidate();
    EXPECT_EQ(view.victim, nullptr);
}

TEST_F(Cached, ReleaseThatThrowsDoesNotEndTheProcess) {
    struct Throwing : ViewedResult {
        using ViewedResult::ViewedResult;
        void Release() override { throw 1; }
    };
    Names released;
    const Throwing first("1");
    const ViewedResult second("2", &released);
    {
        const Result result;
        result.SubscribeInterface(first);
        result.SubscribeInterface(second);
        EXPECT_THROW(result.Destroy(), int);
        EXPECT_TRUE(released.empty());
    }
    EXPECT_EQ(released, Names{"2"});
}

TEST_F(Cached, ConstructionCleansTheFolder) {
    temp.Write("cache/$old.0.Data", "bytes");
    CleaningEnabled(true);
    CleaningSize(0.0);
    const Result result;
    EXPECT_EQ(log.Texts(EMessageType::Info).back(), "Do cache cleaning!");
    EXPECT_FALSE(temp.Has("cache/$old.0.Data"));
    CleaningEnabled(false);
    LastAnalysisTime(0.0);
    const std::size_t before = log.Lines().size();
    const Result another;
    EXPECT_EQ(log.Lines().size(), before);
}

TEST_F(Cached, ConstructionThatIsStoppedLeavesNoTrace) {
    struct Stop {};
    const Result result("R");
    const Objects before = CachedObjects();
    SignalDevice device([] { throw Stop(); });
    {
        const LogOn on(device);
        CleaningEnabled(true);
        EXPECT_THROW(Result("stopped"), Stop);
    }
    EXPECT_EQ(CachedObjects(), before);
}

TEST_F(Cached, LongChainsAreNoBurden) {
    constexpr int length = 100'000;
    std::vector<std::unique_ptr<Result>> chain;
    for (int i = 0; i < length; ++i) {
        chain.push_back(std::make_unique<Result>("L"));
        if (i > 0) chain[i]->SubscribeDependsOn(*chain[i - 1], true);
    }
    const std::string text = chain.back()->GetDescription();
    std::size_t told = 0;
    for (std::size_t at = 0; (at = text.find("L{K=", at)) != std::string::npos; ++at) ++told;
    EXPECT_EQ(told, static_cast<std::size_t>(length));
    chain.front()->Invalidate();
    chain.clear();
}

TEST_F(Cached, InputOfManyResultsKeepsNoneOfTheDead) {
    const Result input("I");
    for (int i = 0; i < 100'000; ++i) Result("R").SubscribeDependsOn(input, true);
    Names released;
    const ViewedResult last("L", &released);
    last.SubscribeDependsOn(input, true);
    input.Invalidate();
    EXPECT_EQ(released, Names{"L"});
}

}  // namespace
}  // namespace KM::Caching
