#include "StlCheck.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

constexpr std::uint64_t HeaderSize = 84;  // text, and the number of triangles
constexpr std::uint64_t TriangleSize = 50;

[[noreturn]] void Refuse(const std::string& why) { throw std::runtime_error(why); }

std::uint64_t SizeOfPlainFile(const std::string& file) {
    const auto status = std::filesystem::status(file);
    if (!std::filesystem::exists(status)) Refuse("no such file");
    if (std::filesystem::is_directory(status)) Refuse("is a folder, not an STL file");
    if (!std::filesystem::is_regular_file(status)) Refuse("is no plain file");
    return std::filesystem::file_size(file);
}

/// Up to `count` bytes from `offset` on.
std::string BytesAt(const std::string& file, std::uint64_t offset, std::size_t count) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) Refuse("cannot be opened");
    std::string bytes(count, '\0');
    stream.seekg(static_cast<std::streamoff>(offset));
    stream.read(bytes.data(), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

/// The rule of the library: many binary files begin with "solid", so the bytes behind the header text decide.
bool IsBinary(const std::string& file) {
    const std::string bytes = BytesAt(file, 80, 512);
    return std::any_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 128; });
}

void CheckBinary(const std::string& file, std::uint64_t size) {
    const std::string word = BytesAt(file, 80, 4);
    if (word.size() < 4) Refuse("is cut short within its header");
    std::uint64_t promised = 0;
    for (int i = 3; i >= 0; --i)
        promised = promised * 256 + static_cast<unsigned char>(word[static_cast<std::size_t>(i)]);
    const std::uint64_t present = size > HeaderSize ? (size - HeaderSize) / TriangleSize : 0;
    if (present < promised)
        Refuse("is cut short: its header promises " + std::to_string(promised) + " triangles, and " +
               std::to_string(present) + " are there");
}

void CheckText(const std::string& file, std::uint64_t size) {
    constexpr std::uint64_t tail = 1024;  // room for the name behind the word
    std::string end = BytesAt(file, size > tail ? size - tail : 0, tail);
    std::transform(end.begin(), end.end(), end.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    const std::size_t at = end.rfind("endsolid");
    if (at == std::string::npos) Refuse("is cut short, or no STL file: it does not end with \"endsolid\"");
}

}  // namespace

void CheckIsWholeStl(const std::string& file) {
    const std::uint64_t size = SizeOfPlainFile(file);
    if (size == 0) Refuse("is empty");
    if (IsBinary(file)) CheckBinary(file, size);
    else CheckText(file, size);
}
