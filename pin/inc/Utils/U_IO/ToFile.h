#pragma once

#include <cstdio>
#include <string>

#include "KmApi.h"

namespace KM::IO {

/// A file operation failed; the details have been logged.
class KM_API XFileIOError {};

/// A file object that never leaves a half-written file: what is written goes to the name with ".tmp", which replaces
/// the target when the file is closed. If the process dies before, the target is as it was. Of several who write the
/// same target at once, each writes a file of its own, and the last one to close wins. Devices and pipes are written
/// themselves.
///
/// Before it opens, it waits for other processes that have left the name with ".IsOpened", at most for the seconds of
/// the setting "Debug.SecondsToWaitForAFileToUnlock".
class KM_API ToFile {
public:
    /// Opens the file.
    /// @param mode       as for `fopen`; the first letter may be a capital
    /// @param color      colour of the name in the log line; 0 writes none
    /// @param overwrite  kept for those who ask
    /// @throws XFileIOError when it cannot be opened: with a `Warning` in the log, but for an empty name and a file
    ///                      that is to be read and is not there; the marker of these two is deleted
    ///
    /// The folder of a file that is to be written is made, with a `Warning`, if it is missing.
    ToFile(const std::string& name, const std::string& mode, int color, bool overwrite);
    ToFile(const ToFile&) = delete;
    ToFile& operator=(const ToFile&) = delete;
    ~ToFile();

    /// Opens it again after `Close`, as the constructor does. One that is open stays as it is, with an `Error` in the
    /// log.
    void Open();
    /// Puts what was written in the place of the target, whose attributes are kept. If it could not be written to its
    /// end (a full disk), one `Error` is logged and the target stays as it was. Nothing happens when it is closed.
    void Close();
    /// Closes and deletes the file. A device is closed only.
    void Erase();

    operator std::FILE*() const { return file_; }
    std::FILE* operator->() const { return file_; }
    bool IsWriteMode() const { return writeMode_; }
    bool IsOverwrite() const { return overwrite_; }
    const std::string& Name() const { return name_; }

private:
    void Log(bool isReading) const;
    void WaitForOthers() const;
    void OpenOnDisk(bool isSecondTry);
    void OpenReplacement(bool isSecondTry);
    bool CloseOnDisk();
    bool IsReadMode() const;

    std::FILE* file_ = nullptr;
    std::string name_;
    std::string mode_;
    bool writeMode_;
    bool overwrite_;
    int color_;
    std::string nameOnDisk_;
};

/// Reads exactly `size` bytes and returns `size`. On a short read logs one `Error` with the place of call, closes the
/// file (which stays on disk) and throws.
/// @throws XFileIOError
KM_API unsigned Read(void* buffer, unsigned size, ToFile& file, const char* sourceFile, int sourceLine);

/// Writes exactly `size` bytes and returns `size`. On a short write logs one `Error` with the place of call and throws.
/// @throws XFileIOError
KM_API unsigned Write(const void* buffer, unsigned size, ToFile& file, const char* sourceFile, int sourceLine);

}  // namespace KM::IO

/// `IO::Read` and `IO::Write` with the place of call filled in.
#define KM_IO_READ(buffer, size, file) ::KM::IO::Read(buffer, size, file, __FILE__, __LINE__)
#define KM_IO_WRITE(buffer, size, file) ::KM::IO::Write(buffer, size, file, __FILE__, __LINE__)
