#include "OutputFile.h"

#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <fstream>
#include <limits>
#include <set>

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

/// Makes an empty file beside the target; its name.
std::string MakeBeside(const fs::path& target, const std::string& name) {
    static int number = 0;
    for (;;) {
        const std::string file = ".kmmesh-" + std::to_string(getpid()) + '-' + std::to_string(++number) + ".tmp";
        const std::string temporary = (target.parent_path() / file).string();
        // "x": one that is there was left by a run that was killed, or is another machine's in a folder that both share.
        std::FILE* const made = std::fopen(temporary.c_str(), "wbx");
        if (made != nullptr) return std::fclose(made), temporary;
        if (errno != EEXIST) RefuseToWrite(name, errno);
    }
}

/// Not so for a finite coordinate that would become infinite.
bool FitsSingle(const TPoint<double>& p) {
    constexpr double largest = std::numeric_limits<float>::max();
    const auto fits = [](double x) { return !std::isfinite(x) || std::fabs(x) <= largest; };
    return fits(p.X) && fits(p.Y) && fits(p.Z);
}

}  // namespace

OutputFile::OutputFile(const std::string& name) : name_(name), target_(name) {
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(target_, error))) target_ = fs::weakly_canonical(target_);
    CheckMayBeReplaced(name_, target_);
    MakeFolder(name_, target_.parent_path());
    temporary_ = MakeBeside(target_, name_);
}

OutputFile::~OutputFile() {
    std::error_code ignored;
    if (!temporary_.empty()) fs::remove(temporary_, ignored);
}

void OutputFile::Write(const std::string& bytes) {
    std::ofstream(temporary_, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    CheckSize(bytes.size());
}

void OutputFile::CheckSize(std::uintmax_t expected) const {
    std::error_code error;
    if (fs::file_size(temporary_, error) != expected || error) throw Failure(name_, "could not be written to its end");
}

void OutputFile::Commit() {
    std::error_code error;
    const fs::file_status old = fs::status(target_, error);
    if (fs::exists(old)) fs::permissions(temporary_, old.permissions(), error);
    fs::rename(temporary_, target_, error);
    if (error) RefuseToWrite(name_, error.value());
    temporary_.clear();
}

void WriteFile(const std::string& name, const std::string& bytes) {
    OutputFile file(name);
    file.Write(bytes);
    file.Commit();
}

void CheckOutputsDiffer(const std::vector<std::string>& inputs,
                        const std::function<std::string(const std::string&)>& nameOf) {
    std::set<std::string> names;
    for (const std::string& input : inputs)
        if (!names.insert(nameOf(input)).second)
            throw Failure(input, "what is made of it would have the name of what is made of another; run one by one");
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
    if (!isText_ && !(FitsSingle(a) && FitsSingle(b) && FitsSingle(c)))
        throw Failure(name_, "would have coordinates beyond single precision; --text can hold them");
    STLWriteFacet(file_, a, b, c, isText_);
    ++triangles_;
}

void StlOutput::Finish() {
    constexpr std::uintmax_t lastLine = 9;  // "endsolid" and its line feed
    const bool isWhole = std::fflush(file_) == 0 && std::ferror(file_) == 0;
    const long size = std::ftell(file_);
    STLCloseWriter(file_, triangles_, isText_);
    file_ = nullptr;
    if (!isWhole || size < 0) throw Failure(name_, "could not be written to its end");
    output_.CheckSize(static_cast<std::uintmax_t>(size) + (isText_ ? lastLine : 0));
}

}  // namespace KM::Tool
