#pragma once

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "Geometry/Point.h"

namespace KM::Tool {

/// A file that appears under its name when it is whole, and not before: it is written beside it under a name of its own,
/// and renamed by `Commit`. Without that nothing is left of it, and what had the name stays as it was. Files that belong
/// together are all written first, and then committed.
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

    /// Writes these bytes as the whole file.
    /// @throws Failure
    void Write(const std::string& bytes);

    /// To be asked when the file has been closed.
    /// @param expected  what was written, in bytes
    /// @throws Failure  for a shorter file, which did not fit on the disk
    void CheckSize(std::uintmax_t expected) const;

    /// Puts the file in its place. It must have been closed.
    /// @throws Failure
    void Commit();

private:
    std::string name_;  ///< as the user wrote it
    std::filesystem::path target_;
    std::string temporary_;
};

/// Writes a whole file under its name.
/// @throws Failure
void WriteFile(const std::string& name, const std::string& bytes);

/// Whether each input gives an output of its own.
/// @param nameOf  the name of what is made of an input
/// @throws Failure
void CheckOutputsDiffer(const std::vector<std::string>& inputs,
                        const std::function<std::string(const std::string&)>& nameOf);

/// An STL file that is written facet by facet.
class StlOutput {
public:
    StlOutput(const std::string& name, bool isText);
    StlOutput(const StlOutput&) = delete;
    StlOutput& operator=(const StlOutput&) = delete;
    ~StlOutput();

    /// @throws Failure  for a coordinate that a binary file cannot hold
    void Add(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c);
    /// Behind the last facet.
    /// @throws Failure
    void Finish();
    /// Puts the finished file in its place.
    /// @throws Failure
    void Commit() { output_.Commit(); }

    const std::string& Name() const { return name_; }
    int Triangles() const { return triangles_; }

private:
    std::string name_;
    OutputFile output_;
    bool isText_;
    std::FILE* file_;
    int triangles_ = 0;
};

}  // namespace KM::Tool
