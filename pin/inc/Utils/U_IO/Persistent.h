#pragma once

#include <cstdint>
#include <string>

#include "KmApi.h"
#include "Utils/U_IO/ToFile.h"

namespace KM {

/// A mark that says that the object is being saved. It keeps nobody out: those who care look at it, five times a second.
/// A copy is marked as the original is.
class KM_API Lockable {
public:
    Lockable() = default;
    Lockable(const Lockable& other) : locked_(other.IsLocked()) {}
    Lockable& operator=(const Lockable& other) {
        SetLocked(other.IsLocked());
        return *this;
    }

    /// Sets the mark. If it is set already, a `Warning` is logged.
    void Lock() const;
    /// Takes the mark away. If there is none, a `Warning` is logged.
    void Unlock() const;
    /// Returns when the mark is gone, however long that takes.
    void WaitUntilUnlock() const;

private:
    bool IsLocked() const;
    void SetLocked(bool locked) const;

    mutable bool locked_ = false;
};

/// The base of objects that are saved to a file; what stands in the file is the derived class's own.
///
/// The virtual operations stand in this order.
class KM_API Persistent : public Lockable {
public:
    Persistent() = default;
    Persistent(const Persistent&) = default;
    Persistent& operator=(const Persistent&) = default;
    /// Waits until the object is unlocked, however long that takes. The derived part is gone by then, so a class that is
    /// saved by other threads calls `WaitUntilUnlock` in its own destructor.
    virtual ~Persistent() = 0;
    virtual bool DoLoad(IO::ToFile& file) = 0;
    virtual void DoSave(IO::ToFile& file) const = 0;

    /// Waits until the object is unlocked, and loads it.
    /// @return  what `DoLoad` returns; false if it threw anything but a file failure
    /// @throws  IO::XFileIOError
    bool Load(IO::ToFile& file);

    /// Saves the object. A file failure goes on to the caller; whatever else `DoSave` throws is lost, since a save that
    /// fails must not stop the computation that asked for it.
    /// @throws  IO::XFileIOError
    void Save(IO::ToFile& file) const;

    /// Saves the object to a file of this name, in the calling thread, and returns when the file is closed. Meanwhile
    /// the object is locked, and counts in `RunningThreadsCount`. Can be called from any thread; failures are those of
    /// `Save`, and the file holds what was written before.
    /// @throws  IO::XFileIOError
    void MultithreadedSave(const std::string& name) const;

private:
    int SaveHelper(const std::string& name) const;
};

/// How many saves by `MultithreadedSave` are under way.
KM_API std::int32_t RunningThreadsCount();

/// Waits at the end of a run for the saves that are still under way, at most for so many seconds, and logs what it
/// waits for and how that ended. Returns at once if nothing is under way, or if it was called before in this process.
///
/// The last line tells of the seconds, not of the saves: when the last save ends within the last second, and when
/// `seconds` is 0 or less, it says that the time has passed.
KM_API void WaitUntilOtherThreadsEnd(int seconds);

namespace IO {

// Reachable beside the files as well.
using KM::Lockable;
using KM::Persistent;
using KM::RunningThreadsCount;
using KM::WaitUntilOtherThreadsEnd;

}  // namespace IO

}  // namespace KM
