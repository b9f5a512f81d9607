#include "Facet/StlCheck.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <fstream>

#include "Facet/StlFormat.h"

namespace KM {
namespace {

/// Up to `count` bytes from `offset` on.
std::string BytesAt(std::ifstream& stream, std::uint64_t offset, std::size_t count) {
    std::string bytes(count, '\0');
    stream.clear();
    stream.seekg(static_cast<std::streamoff>(offset));
    stream.read(bytes.data(), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return bytes;
}

/// The rule of the reader: many binary files begin with "solid", so the bytes behind the header text decide.
bool IsBinary(std::ifstream& stream) {
    const std::string bytes = BytesAt(stream, StlHeaderSize, 512);
    return std::any_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 128; });
}

std::string FaultOfBinary(std::ifstream& stream, std::uint64_t size) {
    const std::string word = BytesAt(stream, StlHeaderSize, 4);
    if (word.size() < 4) return "is cut short within its header";
    std::uint64_t promised = 0;
    for (std::size_t i = 4; i-- != 0;) promised = promised * 256 + static_cast<unsigned char>(word[i]);
    const std::uint64_t present = (size - StlFirstRecord) / StlRecordSize;
    if (present >= promised) return "";
    return "is cut short: its header promises " + std::to_string(promised) + " triangles, and " +
           std::to_string(present) + " are there";
}

std::string FaultOfText(std::ifstream& stream, std::uint64_t size) {
    constexpr std::uint64_t tail = 1024;  // the word, and a name behind it
    std::string end = BytesAt(stream, size > tail ? size - tail : 0, tail);
    std::transform(end.begin(), end.end(), end.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    if (end.find("endsolid") != std::string::npos) return "";
    return "is cut short, or no STL file: it does not end with \"endsolid\"";
}

}  // namespace

std::string STLFault(const std::string& fileName) {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::file_status status = fs::status(fileName, error);
    if (!fs::exists(status)) return "no such file";
    if (fs::is_directory(status)) return "is a folder, not an STL file";
    if (!fs::is_regular_file(status)) return "is no plain file";
    std::ifstream stream(fileName, std::ios::binary);
    if (!stream) return "cannot be opened";
    stream.seekg(0, std::ios::end);
    const std::streamoff size = stream.tellg();
    if (size <= 0) return size == 0 ? "is empty" : "cannot be read";
    return IsBinary(stream) ? FaultOfBinary(stream, static_cast<std::uint64_t>(size))
                            : FaultOfText(stream, static_cast<std::uint64_t>(size));
}

}  // namespace KM
