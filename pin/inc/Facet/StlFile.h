#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

class StlInput;

namespace IO::STL {

/// Thrown where a facet with other than three points is to be written.
class KM_API XSizeMustBe3 {};

}  // namespace IO::STL

/// Hands out the triangles of an STL file, text or binary, one at a time. Memory does not grow with their number,
/// only with the digits of a single coordinate.
///
/// A file is binary if one of the up to 512 bytes behind offset 80 is 128 or more; the word "solid" at its start is not
/// looked at, since many binary files begin with it. So a text file with an umlaut there counts as binary, and a binary
/// file of zeros and other low bytes as text.
class KM_API STLReader {
public:
    /// Opens the file and goes to its first triangle. A null name, a file that cannot be opened, and whatever is
    /// neither a plain file nor a link to one (a folder, a pipe, a device) leave the reader without a file; it can then
    /// be asked all the same, and has no triangles.
    explicit STLReader(const char* fileName);
    explicit STLReader(const std::string& fileName) : STLReader(fileName.c_str()) {}
    ~STLReader();
    STLReader(const STLReader&) = delete;
    STLReader& operator=(const STLReader&) = delete;

    bool IsOpen() const { return file_ != nullptr; }
    const std::string& FileName() const { return fileName_; }

    /// Reads the next triangle: x, y, z of its first, second and third vertex.
    ///
    /// Binary: the records behind byte 84, to the last whole one; the normal, the attribute and the count in the header
    /// are not looked at. Text: behind the next word VERTEX, in capitals or not, three numbers, then twice a word,
    /// whatever it says, and three numbers. Words and numbers are those that `fscanf` reads with "%999s" and "%lf" in
    /// the C locale, whatever the locale of the process: a "1e" is a one, and hexadecimal numbers, "inf" and "nan" are
    /// numbers too. A number that is none leaves its double, and those of the same vertex behind it, as they were; the
    /// next word is then read where that number failed.
    ///
    /// @param nine  room for nine doubles; null is refused with false, and the triangle stays to be read
    /// @return      false, with `nine` as it was, at the end of the file; a read error counts as the end. A text file
    ///              that ends within its last triangle gives that triangle with what could be read.
    bool Read(double* nine);

    /// Goes back to the start and reads the header text. `Read` then gives the first triangle again.
    ///
    /// @return  not more than 80 bytes, to the first zero. Binary: the first 80 bytes, to the first above 127. Text:
    ///          the first line with its line feed. Empty without a file.
    std::string ReadHeader();

    /// How much of the file has been read, 0 to 1, some thousand triangles ahead of `Read`. Asks the system: not for each
    /// triangle.
    double ShareRead() const;

private:
    struct Closer {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void OpenAsText();
    std::string FirstLine();
    bool ReadText(double* nine);

    std::string fileName_;
    bool isText_ = true;
    bool atVertex_ = false;  ///< the word that `Read` looks for has been read already
    std::unique_ptr<std::FILE, Closer> file_;
    std::unique_ptr<StlInput> input_;  ///< what `Read` has in memory of the file; null before its first call
};

// A writer is a plain C file. All ignore null. A full disk makes the file shorter: ask `ferror` where that matters.

/// Makes the file, or empties it, and writes what stands in front of the first facet.
/// @return  null if the name is null or the file cannot be made
KM_API std::FILE* STLOpenWriter(const char* name, bool isText);

/// Appends one facet. The normal comes from the winding a, b, c: the vector product of its sides from `a`, brought to
/// length one. Where its length counts as zero it keeps x and y as they are and gets 1 as z.
///
/// Text has six decimals and a point, whatever the locale. Binary has the points rounded to float.
KM_API void STLWriteFacet(std::FILE* file, const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c,
                          bool isText);

/// Closes the file. A text gets its last line before, a binary file the number of triangles in its header; where the
/// file cannot go back to it, as a pipe cannot, the number stays 0.
KM_API void STLCloseWriter(std::FILE* file, int triangles, bool isText);

}  // namespace KM

extern "C" {

/// Opens a reader for the host and gives the header text of the file.
///
/// @param header  room for 81 characters: gets up to 80 and a zero; null if it is not wanted
/// @return        a handle for `KmSTLClose`. A file that cannot be opened has one too, without triangles and with an
///                empty header. Null if the name is null or memory is short.
KM_API KM::STLReader* KmSTLOpen(const char* fileName, char* header);

/// Closes the file and frees the reader. Null is ignored.
KM_API void KmSTLClose(KM::STLReader* handle);

}  // extern "C"
