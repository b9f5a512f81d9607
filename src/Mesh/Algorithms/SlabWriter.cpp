#include "SlabWriter.h"

#include <filesystem>

#include "Facet/StlFile.h"
#include "Facet/StlFormat.h"
#include "Facet/StlRecord.h"

namespace KM {
namespace {

constexpr std::size_t MostWaiting = 512 * StlRecordSize;

}  // namespace

SlabWriter::SlabWriter(const std::string& path) : path_(path), file_(STLOpenWriter(path_.c_str(), false)) {}

void SlabWriter::Add(std::span<const TPoint<double>> points) {
    if (points.size() != 3) throw IO::STL::XSizeMustBe3();
    if (waiting_.capacity() == 0) waiting_.reserve(MostWaiting);
    waiting_.resize(waiting_.size() + StlRecordSize);
    PutStlRecord(waiting_.data() + waiting_.size() - StlRecordSize, points.data());
    ++triangles_;
    if (waiting_.size() == MostWaiting) WriteWaiting();
}

void SlabWriter::WriteWaiting() {
    if (waiting_.empty()) return;
    std::fwrite(waiting_.data(), 1, waiting_.size(), file_.get());
    waiting_.clear();
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
