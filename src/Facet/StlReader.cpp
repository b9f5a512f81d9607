#include <algorithm>
#include <bit>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "Facet/StlFile.h"
#include "Facet/StlFormat.h"
#include "Facet/StlInput.h"
#include "KmTools.h"

namespace KM {

namespace {

constexpr std::size_t ProbeSize = 512;
constexpr std::size_t LineSize = 256;  // with the closing zero

bool IsHigh(char c) { return (static_cast<unsigned char>(c) & 0x80u) != 0; }

// A file is read from its start three times, which a pipe cannot do, and to its end, which some devices do not have. The
// name is taken as `fopen` takes it; for the framework's own files a back-slash would be a slash.
bool IsPlainFile(const char* name) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(name, ignored);
}

bool ProbeIsText(std::FILE* file) {
    char probe[ProbeSize];
    std::fseek(file, StlHeaderSize, SEEK_SET);
    const std::size_t size = std::fread(probe, 1, sizeof probe, file);
    for (std::size_t i = 0; i < size; ++i)
        if (IsHigh(probe[i])) return false;
    return true;
}

// Words end at a zero byte when they are compared, as any C string does.
bool IsVertex(std::string_view word) {
    static constexpr char Wanted[] = "VERTEX";
    constexpr std::size_t length = sizeof Wanted - 1;
    if (word.size() < length || (word.size() > length && word[length] != '\0')) return false;
    for (std::size_t i = 0; i < length; ++i)
        if (word[i] != Wanted[i] && word[i] != Wanted[i] - 'A' + 'a') return false;
    return true;
}

bool ReadBinary(StlInput& input, double* nine) {
    static_assert(std::endian::native == std::endian::little, "floats of the file are taken as they lie there");
    const char* from = input.ReadRecord(StlRecordSize);
    if (from == nullptr) return false;
    from += StlNormalSize;
    for (int i = 0; i < 9; ++i, from += sizeof(float)) {
        float value;
        std::memcpy(&value, from, sizeof value);
        nine[i] = static_cast<double>(value);
    }
    return true;
}

void ReadPoint(StlInput& input, double* three) {
    for (int i = 0; i < 3; ++i)
        if (!input.ReadNumber(three[i])) return;
}

}  // namespace

STLReader::STLReader(const char* fileName) : fileName_(fileName != nullptr ? fileName : "") {
    if (fileName == nullptr || !IsPlainFile(fileName)) return;
    file_.reset(std::fopen(fileName, "rb"));
    if (file_ == nullptr) return;
    isText_ = ProbeIsText(file_.get());
    if (isText_) OpenAsText();
    ReadHeader();
}

STLReader::~STLReader() = default;

// Text mode is a mode of its own where line ends have two bytes.
void STLReader::OpenAsText() {
    file_.reset();
    file_.reset(std::fopen(fileName_.c_str(), "r"));
}

std::string STLReader::ReadHeader() {
    if (file_ == nullptr) return std::string();
    input_.reset();
    std::rewind(file_.get());
    if (isText_) return FirstLine().substr(0, StlHeaderSize);
    char bytes[StlFirstRecord] = {};
    std::fread(bytes, 1, sizeof bytes, file_.get());
    std::size_t length = 0;
    while (length < StlHeaderSize && bytes[length] != '\0' && !IsHigh(bytes[length])) ++length;
    return std::string(bytes, length);
}

double STLReader::ShareRead() const {
    if (file_ == nullptr) return 0.0;
    std::error_code error;
    const auto size = static_cast<double>(std::filesystem::file_size(fileName_, error));
    const auto position = static_cast<double>(std::ftell(file_.get()));
    return error || !(size > 0.0) ? 0.0 : std::clamp(position / size, 0.0, 1.0);
}

std::string STLReader::FirstLine() {
    char line[LineSize] = {};
    if (std::fgets(line, sizeof line, file_.get()) == nullptr) line[0] = '\0';
    // The line counts as a word that has been read. Only a zero in it can hide the line feed, which no word has.
    atVertex_ = IsVertex(line);
    return line;
}

bool STLReader::Read(double* nine) {
    if (file_ == nullptr || nine == nullptr) return false;
    if (input_ == nullptr) input_ = std::make_unique<StlInput>(file_.get());
    return isText_ ? ReadText(nine) : ReadBinary(*input_, nine);
}

bool STLReader::ReadText(double* nine) {
    while (!atVertex_ && !input_->EndSeen()) atVertex_ = IsVertex(input_->ReadWord());
    // A file that ends with that very word has no triangle there.
    if (input_->EndSeen()) return false;
    atVertex_ = false;
    ReadPoint(*input_, nine);
    for (int i = 3; i < 9; i += 3)
        if (!input_->ReadWord().empty()) ReadPoint(*input_, nine + i);
    return true;
}

}  // namespace KM

extern "C" {

KM::STLReader* KmSTLOpen(const char* fileName, char* header) try {
    if (header != nullptr) header[0] = '\0';
    if (fileName == nullptr) return nullptr;
    auto reader = std::make_unique<KM::STLReader>(fileName);
    const std::string text = reader->ReadHeader();
    if (header == nullptr) return reader.release();
    KmStrCpy(header, text.c_str(), KM::StlHeaderSize + 1);
    header[KM::StlHeaderSize] = '\0';
    return reader.release();
} catch (...) { return nullptr; }

void KmSTLClose(KM::STLReader* handle) { delete handle; }

}  // extern "C"
