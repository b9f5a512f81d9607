#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Utils/U_Caching/CacheFolder.h"
#include "Utils/U_Caching/CachedObjects.h"
#include "Utils/U_Caching/CachedResults.h"

namespace KM::Caching {
namespace {

namespace fs = std::filesystem;
using Test::Result;
using Test::ViewedResult;
using Names = std::vector<std::string>;
using Verbose::EMessageType;

class Invalidation : public Test::CacheFolder {
protected:
    ~Invalidation() override {
        SetPrefixStr("");
        SetPostfixStr("");
    }

    /// The name of a result's file in the folder of the test.
    static std::string NameOf(const ACached& result, const std::string& extension) {
        return "cache/" + result.CreateFileName(extension).substr(Path().size());
    }
    void Make(const ACached& result, const std::string& extension = ".Data") const {
        temp.Write(NameOf(result, extension), "bytes");
    }
    bool Has(const ACached& result, const std::string& extension = ".Data") const {
        return temp.Has(NameOf(result, extension));
    }
};

TEST_F(Invalidation, DeletesAllFilesOfTheResult) {
    const Result a("A");
    const Result b("B");
    for (const char* extension : {".Data", ".Info", ".Progress", ".Data.IsOpened", ".", ".*"}) Make(a, extension);
    Make(a, "x.Data");
    Make(a, "");
    Make(b);
    a.Invalidate();
    for (const char* extension : {".Data", ".Info", ".Progress", ".Data.IsOpened", ".", ".*"})
        EXPECT_FALSE(Has(a, extension)) << extension;
    EXPECT_TRUE(Has(a, "x.Data"));
    EXPECT_TRUE(Has(a, ""));
    EXPECT_TRUE(Has(b));
    a.Invalidate();
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(Invalidation, GoesDownToWhatWasDerived) {
    Names released;
    const ViewedResult a("A", &released);
    const ViewedResult b("B", &released);
    const ViewedResult c("C", &released);
    const ViewedResult other("O", &released);
    b.SubscribeDependsOn(a, true);
    c.SubscribeDependsOn(b, true);
    for (const ViewedResult* result : {&a, &b, &c, &other}) Make(*result);
    b.Invalidate();
    EXPECT_EQ(released, (Names{"B", "C"}));
    EXPECT_TRUE(Has(a));
    released.clear();
    a.Invalidate();
    EXPECT_EQ(released, (Names{"A", "B", "C"}));
    for (const ViewedResult* result : {&a, &b, &c}) EXPECT_FALSE(Has(*result));
    EXPECT_TRUE(Has(other));
}

TEST_F(Invalidation, DeletesFilesOnTheWayBack) {
    /// Notes when it is released which files are still there.
    struct Watching : ViewedResult {
        Watching(const std::string& name, std::function<void()> onRelease)
            : ViewedResult(name), onRelease_(std::move(onRelease)) {}
        void Release() override { onRelease_(); }
        std::function<void()> onRelease_;
    };
    const Result a("A");
    const Result b("B");
    const Result c("C");
    Names seen;
    const auto note = [&] {
        std::string files;
        for (const Result* result : {&a, &b, &c}) files += Has(*result) ? result->Name() : "";
        seen.push_back(files);
    };
    const Watching last("D", note);
    b.SubscribeDependsOn(a, true);
    c.SubscribeDependsOn(b, true);
    last.SubscribeDependsOn(c, true);
    const Watching sibling("E", note);
    const Watching aunt("F", note);
    sibling.SubscribeDependsOn(b, true);
    aunt.SubscribeDependsOn(a, true);
    for (const Result* result : {&a, &b, &c}) Make(*result);
    a.Invalidate();
    note();
    EXPECT_EQ(seen, (Names{"ABC", "AB", "A", ""}));
}

TEST_F(Invalidation, ReleasesOnEachWay) {
    Names released;
    const ViewedResult a("A", &released);
    const ViewedResult b("B", &released);
    const ViewedResult c("C", &released);
    const ViewedResult d("D", &released);
    b.SubscribeDependsOn(a, true);
    c.SubscribeDependsOn(a, true);
    d.SubscribeDependsOn(b, true);
    d.SubscribeDependsOn(c, true);
    a.Invalidate();
    EXPECT_EQ(released, (Names{"A", "B", "D", "C", "D"}));
    b.SubscribeDependsOn(a, false);
    released.clear();
    a.Invalidate();
    EXPECT_EQ(released, (Names{"A", "B", "D", "C", "D", "B", "D"}));
}

TEST_F(Invalidation, DeletesOnEachWay) {
    /// Writes its file when it is released.
    struct Saving : ViewedResult {
        using ViewedResult::ViewedResult;
        void Release() override { onRelease(); }
        std::function<void()> onRelease;
    };
    const Result a("A");
    Saving b("B");
    b.SubscribeDependsOn(a, true);
    b.SubscribeDependsOn(a, false);
    int written = 0;
    b.onRelease = [&] {
        EXPECT_FALSE(Has(b));
        Make(b);
        ++written;
    };
    a.Invalidate();
    EXPECT_EQ(written, 2);
    EXPECT_FALSE(Has(b));
}

// Each object is derived twice from the one before: sixty of them have more ways than could ever be walked.
TEST_F(Invalidation, OfMoreWaysThanCanBeWalkedReachesEachObject) {
    Names released;
    std::vector<std::unique_ptr<ViewedResult>> ladder;
    for (int i = 0; i < 60; ++i) {
        ladder.push_back(std::make_unique<ViewedResult>(std::to_string(i), &released));
        for (const bool flag : {false, true})
            if (i > 0) ladder[i]->SubscribeDependsOn(*ladder[i - 1], flag);
    }
    for (const int i : {0, 30, 59}) Make(*ladder[i]);  // more of them would only make the folder slow to read
    const ViewedResult late("late", &released);  // when the many ways have been walked, new objects are still entered
    late.SubscribeDependsOn(*ladder.front(), true);
    ladder.front()->Invalidate();
    EXPECT_LT(released.size(), 200'000u);
    EXPECT_EQ(released.back(), "late");
    for (const auto& result : ladder) {
        EXPECT_NE(std::find(released.begin(), released.end(), result->Name()), released.end()) << result->Name();
        EXPECT_FALSE(Has(*result)) << result->Name();
    }
    released.clear();
    ladder[50]->Invalidate();
    EXPECT_EQ(released.size(), 1023u);  // as many as the ways are, where they can be walked
}

TEST_F(Invalidation, OfObjectsThatAllDependOnEachOtherEnds) {
    Names released;
    std::vector<std::unique_ptr<ViewedResult>> objects;
    for (int i = 0; i < 40; ++i) objects.push_back(std::make_unique<ViewedResult>(std::to_string(i), &released));
    for (const auto& object : objects)
        for (const auto& other : objects) object->SubscribeDependsOn(*other, true);
    objects.front()->Invalidate();
    for (const auto& object : objects)
        EXPECT_NE(std::find(released.begin(), released.end(), object->Name()), released.end()) << object->Name();
}

TEST_F(Invalidation, EndsInLoops) {
    Names released;
    const ViewedResult a("A", &released);
    const ViewedResult b("B", &released);
    a.SubscribeDependsOn(a, true);
    a.SubscribeDependsOn(b, true);
    b.SubscribeDependsOn(a, true);
    Make(a);
    Make(b);
    a.Invalidate();
    EXPECT_EQ(released, (Names{"A", "B"}));
    released.clear();
    b.Invalidate();
    EXPECT_EQ(released, (Names{"B", "A"}));
    EXPECT_FALSE(Has(a) || Has(b));
}

TEST_F(Invalidation, LeavesOutTheDetached) {
    Names released;
    const ViewedResult a("A", &released);
    const ViewedResult b("B", &released);
    b.SubscribeDependsOn(a, true);
    b.SubscribeDependsOn(a, false);
    a.DetachDerived(b);
    a.Invalidate();
    EXPECT_EQ(released, (Names{"A", "B"}));
    a.DetachDerived(b);
    a.DetachDerived(b);
    released.clear();
    a.Invalidate();
    EXPECT_EQ(released, Names{"A"});
}

TEST_F(Invalidation, TakesNamesAsTheyAre) {
    const Result ab("ab");
    Make(ab);
    Make(ab, "?.Data");
    for (const char* name : {"*", "a*", "a?", "?b", "[ab]", "a b", "\xff\x01", ".", ".."}) {
        const Result result(name);
        Make(result);
        result.Invalidate();
        EXPECT_FALSE(Has(result)) << name;
    }
    SetPrefixStr("*");
    Result("ab").Invalidate();
    SetPrefixStr("");
    SetPostfixStr("?");
    ab.Invalidate();
    EXPECT_FALSE(Has(ab));  // "$ab.key?.Data"
    SetPostfixStr("");
    EXPECT_TRUE(Has(ab));
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(Invalidation, FindsFilesInFoldersBelow) {
    fs::create_directories(temp / "cache/$sub/folder");
    for (const char* name : {"sub/a", "sub\\a", "sub/folder/../b", "sub/folder\\c"}) {
        const Result result(name);
        std::string file = NameOf(result, ".Data");
        for (char& c : file) c = c == '\\' ? '/' : c;
        temp.Write(file, "bytes");
        result.Invalidate();
        EXPECT_FALSE(temp.Has(file)) << name;
    }
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(Invalidation, DeletesNothingOutsideTheCacheFolder) {
    fs::create_directory(temp / "cache/$x");
    fs::create_directory(temp / "outside");
    fs::create_directory_symlink(temp / "outside", temp / "cache/$link");
    const struct {
        const char* name;
        const char* folder;
    } leading[] = {{"x/../../precious", ""}, {"x\\..\\..\\precious", ""}, {"link/precious", "outside/"}};
    for (const auto& [name, folder] : leading) {
        const Result result(name);
        const std::string file = folder + ("precious." + KeyText(result.GetKey())) + ".Data";
        temp.Write(file, "bytes");
        Verbose::ClearLog();
        result.Invalidate();
        EXPECT_EQ(log.Texts(EMessageType::Warning),
                  Names{"The files " + result.FileName() + ".* are not deleted: they lie outside the cache folder."});
        EXPECT_TRUE(temp.Has(file));
    }
}

TEST_F(Invalidation, DeletesALinkAndNotItsTarget) {
    const Result a("A");
    temp.Write("precious", "bytes");
    fs::create_symlink(temp / "precious", temp / NameOf(a, ".Data"));
    a.Invalidate();
    EXPECT_FALSE(fs::is_symlink(temp / NameOf(a, ".Data")));
    EXPECT_TRUE(temp.Has("precious"));
}

TEST_F(Invalidation, OfNamesThatNoFileCanHaveDeletesNothing) {
    Make(Result("A"));
    for (const std::string& name :
         {std::string("A\0", 2), std::string("A.\0*", 4), std::string(5000, 'A'), std::string("no/such/folder")}) {
        const Result result(name);
        EXPECT_EQ(result.FileName(), Path() + "$" + name + "." + KeyText(result.GetKey()));
        result.Invalidate();
    }
    EXPECT_TRUE(Has(Result("A")));
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(Invalidation, OfAMissingFolderDoesNotMakeIt) {
    const Result a("A");
    fs::remove(temp / "cache");
    a.Invalidate();
    EXPECT_FALSE(temp.Has("cache"));
}

}  // namespace
}  // namespace KM::Caching
