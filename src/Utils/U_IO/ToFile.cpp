#include "Utils/U_IO/ToFile.h"

#include <optional>
#include <utility>

#include "Platform/Files.h"
#include "Platform/Replacement.h"
#include "Utils/U_Debug/Chronometer.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/FileNames.h"
#include "Utils/U_IO/Files.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::IO {
namespace {

using Verbose::EMessageType;

bool BeginsWith(const std::string& mode, char lower, char upper) {
    return !mode.empty() && (mode[0] == lower || mode[0] == upper);
}

std::string TransferFailure(const char* what, const ToFile& file, const char* sourceFile, int sourceLine,
                            const char* action) {
    return std::string(what) + " a file problem has been detected in file: \"" +
           (sourceFile != nullptr ? sourceFile : "") + "\", line: " + std::to_string(sourceLine) +
           " trying to access: \"" + file.Name() + "\". Action: " + action + "::KM::IO::XFileIOError exception thrown!";
}

}  // namespace

ToFile::ToFile(const std::string& name, const std::string& mode, int color, bool overwrite)
    : name_(name), mode_(mode), writeMode_(BeginsWith(mode, 'w', 'W')), overwrite_(overwrite), color_(color) {
    // The C library knows its modes in small letters only.
    if (!mode_.empty() && mode_[0] >= 'A' && mode_[0] <= 'Z') mode_[0] = static_cast<char>(mode_[0] - 'A' + 'a');
    Open();
}

ToFile::~ToFile() {
    try {
        Close();
    } catch (...) {
        // A message is a point of cancellation; a destructor must not pass it on.
    }
}

bool ToFile::IsReadMode() const { return BeginsWith(mode_, 'r', 'R'); }

void ToFile::Log(bool isReading) const {
    if (color_ != 0)
        Verbose::WriteMessage_2(EMessageType::Info,
                                std::string("Has been opened for ") + (isReading ? "reading" : "writing"), name_,
                                color_);
}

void ToFile::WaitForOthers() const {
    int wait = Settings::ToInt("Debug.SecondsToWaitForAFileToUnlock");
    if (wait <= 0) return;
    while (wait != 0 && FileExist(name_ + ".IsOpened")) {
        --wait;
        Verbose::WriteMessage_1(EMessageType::Warning,
                                "File " + name_ + " is locked. Wait for other: " + std::to_string(wait) + " seconds;");
        Time::Sleep(1000);
    }
    if (wait == 0) Verbose::WriteMessage_1(EMessageType::Warning, "File is still locked I'll ignore the warning!");
}

void ToFile::OpenReplacement(bool isSecondTry) {
    nameOnDisk_ = name_ + ".tmp";
    bool isTaken = false;
    file_ = Platform::OpenReplacement(nameOnDisk_, name_, mode_.c_str(), isTaken);
    if (file_ != nullptr || !(isTaken || isSecondTry)) return;
    nameOnDisk_ = Platform::OwnNameBeside(name_);
    file_ = Platform::OpenReplacement(nameOnDisk_, name_, mode_.c_str(), isTaken);
}

void ToFile::OpenOnDisk(bool isSecondTry) {
    const std::optional<Platform::FileInfo> target = Platform::InfoOf(name_);
    nameOnDisk_ = name_;
    // A device is written itself: a file in its place would be a disaster for the whole machine.
    if (!writeMode_ || (target && !target->isPlain))
        file_ = Platform::OpenFile(name_, mode_.c_str());
    else
        OpenReplacement(isSecondTry);
}

void ToFile::Open() {
    if (file_ != nullptr) return Verbose::WriteMessage_1(EMessageType::Error, "File: " + name_ + " is double opened!");
    if (name_.empty() || (IsReadMode() && !FileExist(name_))) {
        Platform::RemoveFile(name_ + ".IsOpened");
        throw XFileIOError();
    }
    Log(IsReadMode());
    WaitForOthers();
    OpenOnDisk(false);
    if (file_ != nullptr) return;
    if (writeMode_) MkDir(ValidateFileName(FileNameManipulation::Path(name_)));
    // Before the second try, since a message can end in an exception, and nobody would close the file.
    Verbose::WriteMessage_1(EMessageType::Warning,
                            "The desired path for: " + name_ + " file. Wasn't found and was created.");
    if (writeMode_) OpenOnDisk(true);
    if (file_ == nullptr) throw XFileIOError();
}

bool ToFile::CloseOnDisk() {
    std::FILE* const file = std::exchange(file_, nullptr);
    return nameOnDisk_ == name_ ? std::fclose(file) == 0 : Platform::CloseReplacement(file, nameOnDisk_, name_);
}

void ToFile::Close() {
    if (file_ == nullptr || CloseOnDisk()) return;
    Verbose::WriteMessage_1(EMessageType::Error, writeMode_
                                                     ? "File: " + name_ + " could not be written and stays as it was!"
                                                     : "File: " + name_ + " could not be written to its end!");
}

void ToFile::Erase() {
    const bool isDevice = writeMode_ && nameOnDisk_ == name_;
    Close();
    if (!isDevice) Platform::RemoveFile(name_);
}

unsigned Read(void* buffer, unsigned size, ToFile& file, const char* sourceFile, int sourceLine) {
    static Time::AdditiveChronometer* slot = nullptr;
    const Time::AdditiveChronometer::Auto span("Read", slot);
    const bool isOpen = static_cast<std::FILE*>(file) != nullptr && (buffer != nullptr || size == 0);
    const bool isSound = isOpen && std::ferror(file) == 0;
    if (isOpen && (size == 0 || std::fread(buffer, 1, size, file) == size)) return size;
    if (isSound) std::clearerr(file);  // this failure spoils nothing of what was written before
    Verbose::WriteMessage_1(EMessageType::Error, TransferFailure("Reading from", file, sourceFile, sourceLine,
                                                                 "File will be closed, deleted and "));
    file.Close();
    throw XFileIOError();
}

unsigned Write(const void* buffer, unsigned size, ToFile& file, const char* sourceFile, int sourceLine) {
    static Time::AdditiveChronometer* slot = nullptr;
    const Time::AdditiveChronometer::Auto span("Write", slot);
    const bool isOpen = static_cast<std::FILE*>(file) != nullptr && (buffer != nullptr || size == 0);
    if (isOpen && (size == 0 || std::fwrite(buffer, 1, size, file) == size)) return size;
    Verbose::WriteMessage_1(EMessageType::Error, TransferFailure("Writing to", file, sourceFile, sourceLine, ""));
    throw XFileIOError();
}

}  // namespace KM::IO
