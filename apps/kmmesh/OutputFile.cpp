#include "OutputFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <limits>

#include "Facet/StlFile.h"
#include "Failure.h"

namespace KM::Tool {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void RefuseToWrite(const std::string& name, int error) {
    throw Failure(name, std::string("cannot be written: ") + std::strerror(error));
}

/// Renaming would replace a file that may not be written, and a device as well.
void CheckMayBeReplaced(const std::string& name, const fs::path& target) {
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (!fs::exists(status)) return;
    if (fs::is_directory(status)) throw Failure(name, "cannot be written: it is a folder");
    if (!fs::is_regular_file(status)) throw Failure(name, "cannot be written: it is no plain file");
    if (access(target.c_str(), W_OK) != 0) RefuseToWrite(name, errno);
}

void MakeFolder(const std::string& name, const fs::path& folder) {
    std::error_code error;
    if (folder.empty() || fs::is_directory(folder, error)) return;
    fs::create_directories(folder, error);
    if (error) throw Failure(name, "cannot be written: no folder " + folder.string() + " (" + error.message() + ")");
}

std::string TemporaryNameFor(const fs::path& target) {
    return (target.parent_path() / (".kmmesh-" + std::to_string(getpid()) + ".tmp")).string();
}

}  // namespace

OutputFile::OutputFile(const std::string& name) : name_(name), target_(name) {
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(target_, error))) target_ = fs::weakly_canonical(target_);
    CheckMayBeReplaced(name_, target_);
    MakeFolder(name_, target_.parent_path());
    const std::string temporary = TemporaryNameFor(target_);
    // "x": what another one has there is not ours to empty. It can only be left from a run that was killed.
    fs::remove(temporary, error);
    std::FILE* const file = std::fopen(temporary.c_str(), "wbx");
    if (file == nullptr) RefuseToWrite(name_, errno);
    std::fclose(file);
    temporary_ = temporary;
}

OutputFile::~OutputFile() {
    std::error_code ignored;
    if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

void OutputFile::Write(const std::string& bytes) {
    std::ofstream(temporary_, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    Commit(bytes.size());
}

void OutputFile::Commit(std::uintmax_t expectedSize) {
    std::error_code error;
    if (fs::file_size(temporary_, error) != expectedSize || error)
        throw Failure(name_, "could not be written to its end");
    const fs::file_status old = fs::status(target_, error);
    if (fs::exists(old)) fs::permissions(temporary_, old.permissions(), error);
    fs::rename(temporary_, target_, error);
    if (error) RefuseToWrite(name_, error.value());
    temporary_.clear();
}

StlOutput::StlOutput(const std::string& name, bool isText)
    : name_(name), output_(name), isText_(isText), file_(STLOpenWriter(output_.TemporaryName().c_str(), isText)) {
    if (file_ == nullptr) RefuseToWrite(name_, errno);
}

StlOutput::~StlOutput() {
    if (file_ != nullptr) std::fclose(file_);
}

void StlOutput::Add(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c) {
    if (triangles_ == std::numeric_limits<int>::max()) throw Failure(name_, "has more triangles than a file can hold");
    STLWriteFacet(file_, a, b, c, isText_);
    ++triangles_;
}

void StlOutput::Commit() {
    constexpr std::uintmax_t lastLine = 9;  // "endsolid" and its line feed
    const bool isWhole = std::fflush(file_) == 0 && std::ferror(file_) == 0;
    const long size = std::ftell(file_);
    STLCloseWriter(file_, triangles_, isText_);
    file_ = nullptr;
    if (!isWhole || size < 0) throw Failure(name_, "could not be written to its end");
    output_.Commit(static_cast<std::uintmax_t>(size) + (isText_ ? lastLine : 0));
}

}  // namespace KM::Tool
