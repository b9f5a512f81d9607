#include "Expressions.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <string_view>

#include "Failure.h"

namespace KM::Tool {
namespace {

namespace fs = std::filesystem;

constexpr char FileMark = '@';
constexpr std::string_view WhiteSpace("\0 \t\r\n", 5);

bool IsLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
bool IsLetterOrDigit(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }

/// A path with an extension, and nothing that only an expression has. Taken for an expression, a name that was misspelt
/// would be a new variable, and give 0.
bool ReadsLikeFile(const std::string& word) {
    const auto isOfPath = [](char c) {
        return IsLetterOrDigit(c) || static_cast<unsigned char>(c) > 127 ||
               std::string_view("_-./~").find(c) != std::string_view::npos;
    };
    const std::string extension = word.substr(std::min(word.rfind('.'), word.size() - 1) + 1);
    return std::all_of(word.begin(), word.end(), isOfPath) && !extension.empty() && IsLetter(extension[0]) &&
           std::all_of(extension.begin(), extension.end(), IsLetterOrDigit) && word.find('.') != std::string::npos;
}

std::string MarkedPath(const std::string& path) {
    if (path.empty()) throw Misuse("\"@\"", "names no file");
    return FileMark + fs::absolute(path).lexically_normal().string();
}

void CheckIsThere(const std::string& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found) throw Failure(file, "no such file");
    if (fs::is_directory(status)) throw Failure(file, "is a folder");
}

std::string BytesOf(const std::string& file) {
    CheckIsThere(file);
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw Failure(file, "cannot be opened");
    std::string bytes(LongestExpression + 1, '\0');  // one more, so that a longer file is known as such
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

std::string WithoutByteOrderMark(std::string text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    return text.starts_with(mark) ? text.substr(mark.size()) : text;
}

}  // namespace

std::string Trimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(WhiteSpace);
    if (begin == std::string::npos) return "";
    return text.substr(begin, text.find_last_not_of(WhiteSpace) + 1 - begin);
}

std::string ExpressionOf(const std::string& word) {
    const std::string text = Trimmed(word);
    if (text.empty()) throw Misuse("\"\"", "is no expression");
    if (text[0] == FileMark) return MarkedPath(text.substr(1));
    std::error_code error;
    return fs::exists(text, error) || ReadsLikeFile(text) ? MarkedPath(text) : text;
}

const std::string& CheckExpression(const std::string& text, const std::string& subject) {
    if (text.size() > LongestExpression)
        throw Failure(subject, "holds more than " + std::to_string(LongestExpression) + " bytes, too many to evaluate");
    if (Trimmed(text).empty()) throw Failure(subject, "holds no expression");
    return text;
}

SourceText ExpressionIn(const std::string& value) {
    if (!value.starts_with(FileMark)) return {CheckExpression(value, "expression"), "expression"};
    const std::string file = value.substr(1);
    return {WithoutByteOrderMark(CheckExpression(BytesOf(file), file)), file};
}

}  // namespace KM::Tool
