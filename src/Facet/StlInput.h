#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace KM {

/// What lies ahead in a C file, read in large blocks and taken apart as `fscanf` would do it in the C locale.
///
/// The differences are none but speed: also where a number breaks off, the same bytes are gone, and `EndSeen` is what
/// `feof` or `ferror` would say. The file's own position is of no use to others meanwhile.
class StlInput {
public:
    /// Begins at the present position of `file`, which must stay open while this object is in use.
    explicit StlInput(std::FILE* file);

    /// Whether a read has run against the end of the file, or failed. Standing behind the last byte is not yet the end.
    bool EndSeen() const { return endSeen_; }

    /// The next `size` bytes, or null if the file has fewer. They stay until the next call.
    const char* ReadRecord(std::size_t size) {
        if (static_cast<std::size_t>(end_ - next_) < size && !Ahead(size)) return nullptr;
        next_ += size;
        return next_ - size;
    }

    /// "%999s": the next word, at most 999 bytes of it; what is longer goes on as the next word. Zeros belong to a word
    /// like any byte. Empty only at the end of the file. It stays until the next call.
    std::string_view ReadWord();

    /// "%lf": false if no number begins here; `value` is then as it was, and the bytes that could have begun one are
    /// gone.
    bool ReadNumber(double& value);

private:
    bool Ahead(std::size_t size);
    int Peek();
    void SkipSpace();
    bool ReadPlainNumber(double& value);
    bool ReadAnyNumber(double& value);
    void Collect();
    bool CollectLetter(char lower);
    bool CollectRest(const char* lower);
    bool CollectName();
    bool CollectDigits();

    std::FILE* file_;
    std::vector<char> block_;
    const char* next_;
    const char* end_;
    bool allRead_ = false;  ///< the file has nothing behind this block
    bool endSeen_;
    std::string number_;  ///< the number that is being read byte by byte
};

}  // namespace KM
