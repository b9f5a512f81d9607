#include "Facet/StlInput.h"

#include <charconv>
#include <clocale>
#include <cstdlib>
#include <cstring>

namespace KM {

namespace {

constexpr std::size_t BlockSize = std::size_t{1} << 18;
constexpr std::size_t LongestWord = 999;

// The classes of the C locale. Those of <cctype> follow the locale of the process, and a host may have set another.
bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(int c) { return c >= '0' && c <= '9'; }
int ToLower(int c) { return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c; }
bool IsHexDigit(int c) { return IsDigit(c) || (ToLower(c) >= 'a' && ToLower(c) <= 'f'); }

// The value of what has been collected; false if that is but a point.
bool Convert(std::string& text, double& value) {
    // The library function waits for the decimal point of the process's locale, which may have more than one byte.
    const std::size_t point = text.find('.');
    if (point != std::string::npos) text.replace(point, 1, std::localeconv()->decimal_point);
    char* end = nullptr;
    const double converted = std::strtod(text.c_str(), &end);
    if (end == text.c_str()) return false;
    value = converted;
    return true;
}

}  // namespace

StlInput::StlInput(std::FILE* file)
    : file_(file),
      block_(BlockSize),
      next_(block_.data()),
      end_(block_.data()),
      endSeen_(std::feof(file) != 0 || std::ferror(file) != 0) {}

// Makes the next `size` bytes lie in the block, as far as the file has them.
bool StlInput::Ahead(std::size_t size) {
    std::size_t ready = static_cast<std::size_t>(end_ - next_);
    if (ready >= size || allRead_) return ready >= size;
    std::memmove(block_.data(), next_, ready);
    ready += std::fread(block_.data() + ready, 1, BlockSize - ready, file_);
    allRead_ = ready < BlockSize;
    next_ = block_.data();
    end_ = next_ + ready;
    return ready >= size;
}

int StlInput::Peek() {
    if (next_ == end_ && !Ahead(1)) {
        endSeen_ = true;
        return EOF;
    }
    return static_cast<unsigned char>(*next_);
}

void StlInput::SkipSpace() {
    do {
        while (next_ != end_ && IsSpace(*next_)) ++next_;
    } while (next_ == end_ && Peek() != EOF);
}

std::string_view StlInput::ReadWord() {
    SkipSpace();
    const bool more = Ahead(LongestWord);
    const char* const limit = more ? next_ + LongestWord : end_;
    const char* const begin = next_;
    while (next_ != limit && !IsSpace(*next_)) ++next_;
    // A word of the full length ends without a look at the byte behind it; each shorter one by that look.
    if (next_ == end_ && !more) endSeen_ = true;
    return std::string_view(begin, static_cast<std::size_t>(next_ - begin));
}

bool StlInput::ReadNumber(double& value) {
    SkipSpace();
    return ReadPlainNumber(value) || ReadAnyNumber(value);
}

// Nearly all numbers are plain: decimal, in range, whole in the block and with white space behind. Such a number can be
// read in one go, since `from_chars` gives the nearest double just as `strtod` does. Takes nothing of any other.
bool StlInput::ReadPlainNumber(double& value) {
    const char* first = next_;
    if (first != end_ && *first == '-') ++first;
    if (first == end_ || !(IsDigit(*first) || *first == '.')) return false;  // from_chars also knows names
    double converted = 0.0;
    const std::from_chars_result result = std::from_chars(next_, end_, converted);
    if (result.ec != std::errc() || result.ptr == end_ || !IsSpace(*result.ptr)) return false;
    value = converted;
    next_ = result.ptr;
    return true;
}

// All others, byte by byte; nothing is given back but the one byte that was looked at last.
//
//   number := [sign] (name | digits)
//   name   := "nan" | "inf" | "infinity"
//   digits := decimal bytes [point bytes] ["e" [sign] bytes], or the same with "0x" in front, hexadecimal bytes and "p"
//
// The digits may be missing in one of their places, not in all; an exponent may be empty, and counts as none then.
bool StlInput::ReadAnyNumber(double& value) {
    number_.clear();
    if (Peek() == EOF) return false;
    if (Peek() == '-' || Peek() == '+') Collect();
    const int c = ToLower(Peek());
    const bool accepted = c == 'n' || c == 'i' ? CollectName() : CollectDigits();
    return accepted && Convert(number_, value);
}

void StlInput::Collect() { number_ += *next_++; }

bool StlInput::CollectLetter(char lower) {
    if (ToLower(Peek()) != lower) return false;
    Collect();
    return true;
}

// A byte that breaks a name off has been read by then, and `fscanf` does not give it back.
bool StlInput::CollectRest(const char* lower) {
    for (; *lower != '\0'; ++lower) {
        if (CollectLetter(*lower)) continue;
        if (Peek() != EOF) ++next_;
        return false;
    }
    return true;
}

bool StlInput::CollectName() {
    if (CollectLetter('n')) return CollectRest("an");
    // One more "i" binds: "infi" can only go on as "infinity".
    return CollectRest("inf") && (!CollectLetter('i') || CollectRest("nity"));
}

bool StlInput::CollectDigits() {
    const std::size_t sign = number_.size();
    const bool hexadecimal = CollectLetter('0') && CollectLetter('x');
    const std::size_t prefix = number_.size();
    const char exponent = hexadecimal ? 'p' : 'e';
    bool digit = !hexadecimal && prefix != sign;
    bool point = false;
    bool inExponent = false;
    for (int c = Peek(); c != EOF; c = Peek()) {
        if (IsDigit(c) || (hexadecimal && !inExponent && IsHexDigit(c)))
            digit = true;
        else if (c == '.' && !point)
            point = true;
        else if (ToLower(c) == exponent && digit && !inExponent)
            inExponent = point = true;
        else if (!((c == '-' || c == '+') && inExponent && ToLower(number_.back()) == exponent))
            break;
        Collect();
    }
    return number_.size() > (hexadecimal ? prefix : sign);
}

}  // namespace KM
