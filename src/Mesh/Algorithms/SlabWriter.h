#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>

#include "Facet/StlFile.h"
#include "Facet/StlRecord.h"
#include "Geometry/Point.h"

namespace KM {

/// The binary STL file of one slab. Until `Finish` its header counts no triangles, so that a file of a run that failed
/// never passes for a whole one.
class SlabWriter {
public:
    /// @param path     a real path; one that cannot be opened leaves the writer without a file
    /// @param waiting  how many triangles are collected before they are written at once, at least 1
    SlabWriter(const std::string& path, std::size_t waiting);

    bool IsOpen() const { return file_ != nullptr; }

    /// @throws IO::STL::XSizeMustBe3 if there are not three points
    void Add(std::span<const TPoint<double>> points) {
        if (points.size() != 3) throw IO::STL::XSizeMustBe3();
        if (next_ == end_) MakeRoom();
        PutStlRecord(next_, points.data());
        next_ += StlRecordSize;
        ++triangles_;
    }

    /// True if a write has failed by now. What still waits to be written can fail later; of a writer that goes without
    /// `Finish` it is not written.
    bool HasFailed() const { return std::ferror(file_.get()) != 0; }

    /// Writes the number of triangles and closes the file.
    /// @return false if not all of it could be written
    bool Finish();

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void WriteWaiting();
    void MakeRoom();

    std::string path_;
    std::unique_ptr<std::FILE, Closer> file_;
    std::size_t mostWaiting_;          ///< in bytes
    std::unique_ptr<char[]> waiting_;  ///< records, written many at a time; null before the first one
    char* next_ = nullptr;             ///< where the next record goes
    char* end_ = nullptr;
    std::uint32_t triangles_ = 0;
};

}  // namespace KM
