#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

#include "Geometry/Point.h"

namespace KM::Tool {

/// A file that appears under its name when it is whole, and not before: it is written beside it under a name of its own,
/// and renamed by `Commit`. Without that nothing is left of it, and what had the name stays as it was.
class OutputFile {
public:
    /// Makes the folders above, if they are missing. A link is followed; what stands there already keeps its
    /// permissions.
    /// @throws Failure  where no file can be made, or where what has the name is no plain file that may be written
    explicit OutputFile(const std::string& name);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    ~OutputFile();

    /// Where to write.
    const std::string& TemporaryName() const { return temporary_; }

    /// Writes these bytes and commits.
    void Write(const std::string& bytes);

    /// Puts the file in its place. It must have been closed.
    /// @param expectedSize  what was written; a file that is shorter did not fit on the disk
    /// @throws Failure
    void Commit(std::uintmax_t expectedSize);

private:
    std::string name_;  ///< as the user wrote it
    std::filesystem::path target_;
    std::string temporary_;
};

/// An STL file that is written facet by facet.
class StlOutput {
public:
    StlOutput(const std::string& name, bool isText);
    StlOutput(const StlOutput&) = delete;
    StlOutput& operator=(const StlOutput&) = delete;
    ~StlOutput();

    void Add(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c);
    void Commit();

    int Triangles() const { return triangles_; }

private:
    std::string name_;
    OutputFile output_;
    bool isText_;
    std::FILE* file_;
    int triangles_ = 0;
};

}  // namespace KM::Tool
