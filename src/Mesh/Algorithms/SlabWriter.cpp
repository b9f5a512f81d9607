#include "SlabWriter.h"

#include <filesystem>

#include "Facet/StlFile.h"

namespace KM {

SlabWriter::SlabWriter(const std::string& path, std::size_t waiting)
    : path_(path), file_(STLOpenWriter(path_.c_str(), false)), mostWaiting_(waiting * StlRecordSize) {}

void SlabWriter::WriteWaiting() {
    if (next_ != waiting_.get())
        std::fwrite(waiting_.get(), 1, static_cast<std::size_t>(next_ - waiting_.get()), file_.get());
    next_ = waiting_.get();
}

void SlabWriter::MakeRoom() {
    WriteWaiting();
    if (waiting_ != nullptr) return;
    waiting_ = std::make_unique_for_overwrite<char[]>(mostWaiting_);
    next_ = waiting_.get();
    end_ = next_ + mostWaiting_;
}

bool SlabWriter::Finish() {
    WriteWaiting();
    const bool isWritten = std::fflush(file_.get()) == 0 && !HasFailed();
    const long size = std::ftell(file_.get());
    STLCloseWriter(file_.release(), static_cast<int>(triangles_), false);
    std::error_code error;
    // A device or a pipe has no size.
    if (!isWritten || !std::filesystem::is_regular_file(path_, error)) return isWritten;
    return std::filesystem::file_size(path_, error) == static_cast<std::uintmax_t>(size) && !error;
}

}  // namespace KM
