#include "Utils/U_IO/Persistent.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Support/LogOn.h"
#include "Support/SignalDevice.h"
#include "Support/TempFolder.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

using Test::InChild;
using Test::LogCapture;
using Test::LogOn;
using Test::SignalDevice;
using Test::TempFolder;
using Verbose::EMessageType;
using Texts = std::vector<std::string>;

const Texts AlreadyLocked = {"(Is already locked!"};
const Texts AlreadyUnlocked = {"(Is already unlocked!"};

// What an object tells of itself: a second lock of the same kind is what is logged.
bool IsLocked(const Lockable& object) {
    LogCapture log;
    object.Lock();
    const bool wasLocked = log.Texts(EMessageType::Warning) == AlreadyLocked;
    if (!wasLocked) object.Unlock();
    return wasLocked;
}

// An object whose saving and loading a test decides on.
class Document : public Persistent {
public:
    std::function<void(IO::ToFile&)> save = [](IO::ToFile& file) { KM_IO_WRITE("saved", 5, file); };
    std::function<bool(IO::ToFile&)> load = [](IO::ToFile&) { return true; };

    ~Document() override { WaitUntilUnlock(); }
    bool DoLoad(IO::ToFile& file) override { return load(file); }
    void DoSave(IO::ToFile& file) const override { save(file); }
};

class DerivedFailure : public IO::XFileIOError {};

// True if the work throws the plain tag, not an object of a class derived from it.
bool ThrowsFileFailure(const std::function<void()>& work) {
    try {
        work();
    } catch (const DerivedFailure&) {
        return false;
    } catch (const IO::XFileIOError&) {
        return true;
    }
    return false;
}

bool EndsWithin(std::future<void>& work, int milliseconds) {
    return work.wait_for(std::chrono::milliseconds(milliseconds)) == std::future_status::ready;
}

static_assert(!std::is_polymorphic_v<Lockable> && sizeof(Lockable) == 1);
static_assert(std::is_abstract_v<Persistent> && std::has_virtual_destructor_v<Persistent>);
static_assert(std::is_same_v<IO::Persistent, Persistent>);

TEST(Lockable, IsUnlockedAtStart) {
    const Lockable fresh;
    LogCapture log;
    fresh.Unlock();
    EXPECT_EQ(log.Texts(EMessageType::Warning), AlreadyUnlocked);
    EXPECT_FALSE(IsLocked(fresh));
}

TEST(Lockable, TakesEachStateTwiceWithAWarning) {
    const Lockable object;
    LogCapture log;
    object.Lock();
    EXPECT_EQ(log.Count(EMessageType::Warning), 0);
    object.Lock();
    EXPECT_EQ(log.Texts(EMessageType::Warning), AlreadyLocked);
    Verbose::ClearLog();
    object.Unlock();
    EXPECT_EQ(log.Count(EMessageType::Warning), 0);
    object.Unlock();
    EXPECT_EQ(log.Texts(EMessageType::Warning), AlreadyUnlocked);
    EXPECT_FALSE(IsLocked(object));
}

TEST(Lockable, IsCopiedWithItsState) {
    Lockable locked;
    locked.Lock();
    Lockable copy(locked);
    EXPECT_TRUE(IsLocked(copy));
    locked.Unlock();
    EXPECT_TRUE(IsLocked(copy));
    copy = locked;
    EXPECT_FALSE(IsLocked(copy));
}

TEST(Lockable, WaitsUntilAnotherThreadUnlocks) {
    const Lockable object;
    object.WaitUntilUnlock();  // returns, since it is unlocked
    object.Lock();
    std::future<void> waiter = std::async(std::launch::async, [&] { object.WaitUntilUnlock(); });
    EXPECT_FALSE(EndsWithin(waiter, 30));
    object.Unlock();
    waiter.get();
}

TEST(Persistent, IsDestroyedWhenAnotherThreadHasUnlockedIt) {
    // Without a destructor of its own: here it is the base that waits.
    struct Plain : Persistent {
        bool DoLoad(IO::ToFile&) override { return true; }
        void DoSave(IO::ToFile&) const override {}
    };
    auto object = std::make_unique<Plain>();
    const Lockable& mark = *object;
    mark.Lock();
    std::future<void> end = std::async(std::launch::async, [&] { object.reset(); });
    EXPECT_FALSE(EndsWithin(end, 30));
    mark.Unlock();
    end.get();
    EXPECT_EQ(object, nullptr);
}

TEST(Persistent, IsCopiedWithItsLock) {
    Document locked;
    locked.Lock();
    Document copy(locked);
    EXPECT_TRUE(IsLocked(copy));
    locked.Unlock();
    copy = locked;
    EXPECT_FALSE(IsLocked(copy));
}

TEST(PersistentLoad, ReturnsWhatTheObjectSays) {
    const TempFolder temp;
    temp.Write("a", "text");
    IO::ToFile file(temp / "a", "rb", 0, false);
    Document document;
    EXPECT_TRUE(document.Load(file));
    document.load = [](IO::ToFile&) { return false; };
    EXPECT_FALSE(document.Load(file));
}

TEST(PersistentLoad, WaitsUntilUnlocked) {
    const TempFolder temp;
    temp.Write("a", "text");
    IO::ToFile file(temp / "a", "rb", 0, false);
    Document document;
    document.Lock();
    std::future<void> load = std::async(std::launch::async, [&] { EXPECT_TRUE(document.Load(file)); });
    EXPECT_FALSE(EndsWithin(load, 30));
    document.Unlock();
    load.get();
}

TEST(PersistentLoad, PassesOnFailuresOfTheFileOnly) {
    const TempFolder temp;
    temp.Write("a", "text");
    IO::ToFile file(temp / "a", "rb", 0, false);
    Document document;
    document.load = [](IO::ToFile&) -> bool { throw std::runtime_error("lost"); };
    EXPECT_FALSE(document.Load(file));
    document.load = [](IO::ToFile&) -> bool { throw 7; };
    EXPECT_FALSE(document.Load(file));
    document.load = [](IO::ToFile&) -> bool { throw DerivedFailure(); };
    EXPECT_TRUE(ThrowsFileFailure([&] { document.Load(file); }));
    char beyond[100];
    document.load = [&](IO::ToFile& from) { return KM_IO_READ(beyond, sizeof beyond, from) != 0; };
    EXPECT_TRUE(ThrowsFileFailure([&] { document.Load(file); }));
}

TEST(PersistentSave, PassesOnFailuresOfTheFileOnly) {
    const TempFolder temp;
    IO::ToFile file(temp / "a", "wb", 0, false);
    Document document;
    LogCapture log;
    document.save = [](IO::ToFile&) { throw std::runtime_error("lost"); };
    document.Save(file);
    document.save = [](IO::ToFile&) { throw "text"; };
    document.Save(file);
    EXPECT_TRUE(log.Lines().empty());
    document.save = [](IO::ToFile&) { throw DerivedFailure(); };
    EXPECT_TRUE(ThrowsFileFailure([&] { document.Save(file); }));
}

TEST(PersistentSave, DoesNotAskForTheLock) {
    const TempFolder temp;
    Document document;
    document.Lock();
    {
        IO::ToFile file(temp / "a", "wb", 0, false);
        document.Save(file);
    }
    EXPECT_EQ(temp.Bytes("a"), "saved");
    document.Unlock();
}

TEST(MultithreadedSave, SavesUnderTheLockAndCounts) {
    const TempFolder temp;
    Document document;
    const std::int32_t before = RunningThreadsCount();
    std::thread::id savedBy;
    document.save = [&](IO::ToFile& file) {
        savedBy = std::this_thread::get_id();
        EXPECT_TRUE(IsLocked(document));
        EXPECT_EQ(RunningThreadsCount(), before + 1);
        KM_IO_WRITE("new", 3, file);
    };
    temp.Write("a", "old");
    document.MultithreadedSave(temp / "a");
    EXPECT_EQ(savedBy, std::this_thread::get_id());
    EXPECT_EQ(temp.Bytes("a"), "new");
    EXPECT_FALSE(temp.Has("a.tmp"));
    EXPECT_FALSE(IsLocked(document));
    EXPECT_EQ(RunningThreadsCount(), before);
}

TEST(MultithreadedSave, CleansUpWhateverIsThrown) {
    const TempFolder temp;
    Document document;
    const std::int32_t before = RunningThreadsCount();
    const std::function<void(IO::ToFile&)> lost[] = {[](IO::ToFile&) { throw std::runtime_error("lost"); },
                                                     [](IO::ToFile&) { throw 7; }};
    for (const auto& save : lost) {
        document.save = save;
        document.MultithreadedSave(temp / "a");
        EXPECT_FALSE(IsLocked(document));
        EXPECT_EQ(RunningThreadsCount(), before);
        EXPECT_FALSE(temp.Has("a.tmp"));  // closed
    }
    document.save = [](IO::ToFile&) { throw DerivedFailure(); };
    EXPECT_TRUE(ThrowsFileFailure([&] { document.MultithreadedSave(temp / "a"); }));
    EXPECT_FALSE(IsLocked(document));
    EXPECT_EQ(RunningThreadsCount(), before);
}

TEST(MultithreadedSave, PassesOnThatTheFileCannotBeOpened) {
    const TempFolder temp;
    temp.Write("file", "");
    const Document document;
    const std::int32_t before = RunningThreadsCount();
    for (const std::string& name : {std::string(), temp / "file/below", temp / ""}) {
        EXPECT_TRUE(ThrowsFileFailure([&] { document.MultithreadedSave(name); })) << name;
        EXPECT_FALSE(IsLocked(document));
        EXPECT_EQ(RunningThreadsCount(), before);
    }
    EXPECT_EQ(temp.Names(), Texts{"file"});
}

TEST(MultithreadedSave, UnlocksWhatIsLockedAlready) {
    const TempFolder temp;
    const Document document;
    document.Lock();
    LogCapture log;
    document.MultithreadedSave(temp / "a");
    EXPECT_EQ(log.Texts(EMessageType::Warning), AlreadyLocked);
    EXPECT_FALSE(IsLocked(document));
}

TEST(MultithreadedSave, RunsInManyThreadsAtOnce) {
    constexpr int count = 8;
    const TempFolder temp;
    const std::int32_t before = RunningThreadsCount();
    std::counting_semaphore<count> begun(0);
    std::counting_semaphore<count> goOn(0);
    std::vector<Document> documents(count);
    std::vector<std::future<void>> saves;
    for (int i = 0; i < count; ++i) {
        documents[i].save = [&begun, &goOn, i](IO::ToFile& file) {
            begun.release();
            goOn.acquire();
            KM_IO_WRITE(&i, sizeof i, file);
            if (i % 2 == 1) throw std::runtime_error("lost");
        };
        saves.push_back(std::async(std::launch::async,
                                   [&, i] { documents[i].MultithreadedSave(temp / ("file" + std::to_string(i))); }));
    }
    for (int i = 0; i < count; ++i) begun.acquire();
    EXPECT_EQ(RunningThreadsCount(), before + count);
    goOn.release(count);
    for (std::future<void>& save : saves) save.get();
    EXPECT_EQ(RunningThreadsCount(), before);
    for (int i = 0; i < count; ++i) {
        EXPECT_FALSE(IsLocked(documents[i]));
        EXPECT_EQ(temp.Bytes("file" + std::to_string(i)).size(), sizeof i);
    }
}

TEST(MultithreadedSave, LetsTheDestructorWaitForIt) {
    const TempFolder temp;
    std::binary_semaphore begun(0);
    std::binary_semaphore goOn(0);
    auto document = std::make_unique<Document>();
    document->save = [&](IO::ToFile& file) {
        begun.release();
        goOn.acquire();
        KM_IO_WRITE("whole", 5, file);
    };
    std::future<void> save =
        std::async(std::launch::async, [object = document.get(), &temp] { object->MultithreadedSave(temp / "a"); });
    begun.acquire();
    std::future<void> end = std::async(std::launch::async, [&] { document.reset(); });
    EXPECT_FALSE(EndsWithin(end, 30));
    goOn.release();
    end.get();
    EXPECT_EQ(temp.Bytes("a"), "whole");
    save.get();
}

const std::string Finished = "Looks like all concurrent threads have finished running. Program can close safely.\n";

std::string StillOpened(int seconds) {
    return "Are still other threads opened. I can't stop the application right now! Wait for other: " +
           std::to_string(seconds) + " seconds.\n";
}

std::string HasPassed(int seconds, int threads) {
    return "The waiting time - " + std::to_string(seconds) +
           " seconds - has passed. Program will be closed without waiting after still running: " +
           std::to_string(threads) + " threads.\n";
}

std::string LoggedMessages() {
    std::string texts;
    for (const Verbose::LogRecord& record : Verbose::LogRecords()) texts += record.message + '\n';
    return texts;
}

// What a process of its own logs in a wait while nothing is saved.
std::string LogOfIdleWait(const std::vector<int>& calls) {
    return InChild([&] {
        LogCapture log;
        for (const int seconds : calls) WaitUntilOtherThreadsEnd(seconds);
        return LoggedMessages();
    });
}

// The same while one object is saved, until the log has its first line if `ends` is true, else for ever.
std::string LogOfBusyWait(int seconds, bool ends) {
    const TempFolder temp;
    return InChild([&] {
        std::counting_semaphore<> begun(0);
        std::counting_semaphore<> goOn(0);
        Document document;
        document.save = [&](IO::ToFile&) {
            begun.release();
            goOn.acquire();
        };
        std::thread save([&] { document.MultithreadedSave(temp / "a"); });
        begun.acquire();
        SignalDevice device([&] {
            if (ends) goOn.release();
        });
        const LogOn log(device);
        WaitUntilOtherThreadsEnd(seconds);
        const std::string text = LoggedMessages();
        goOn.release();
        save.join();
        return text;
    });
}

TEST(WaitUntilOtherThreadsEnd, ReturnsAtOnceIfNothingRuns) {
    const double start = Time::Get();
    EXPECT_EQ(LogOfIdleWait({5}), Finished);
    EXPECT_EQ(LogOfIdleWait({2147483647}), Finished);
    EXPECT_LT(Time::Get() - start, 5.0);
}

TEST(WaitUntilOtherThreadsEnd, HasPassedWithoutASecondToWait) {
    for (const int seconds : {0, -1, -2147483647 - 1}) EXPECT_EQ(LogOfIdleWait({seconds}), HasPassed(seconds, 0));
}

TEST(WaitUntilOtherThreadsEnd, RefusesASecondCall) {
    const std::string refusal = "Multiple calls to WaitUntilOtherThreadsEnd!\n";
    EXPECT_EQ(LogOfIdleWait({5, 5, 0}), Finished + refusal + refusal);
}

TEST(WaitUntilOtherThreadsEnd, GivesUpOnAThreadThatNeverEnds) {
    const double start = Time::Get();
    EXPECT_EQ(LogOfBusyWait(2, false), StillOpened(2) + StillOpened(1) + HasPassed(2, 1));
    EXPECT_GE(Time::Get() - start, 1.99);
}

TEST(WaitUntilOtherThreadsEnd, GoesOnWhenTheLastThreadHasEnded) {
    EXPECT_EQ(LogOfBusyWait(3, true), StillOpened(3) + Finished);
}

TEST(WaitUntilOtherThreadsEnd, TellsOfTheSecondsIfTheLastThreadEndsInTheLastOne) {
    EXPECT_EQ(LogOfBusyWait(1, true), StillOpened(1) + HasPassed(1, 0));
}

}  // namespace
}  // namespace KM
