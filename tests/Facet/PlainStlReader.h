#pragma once

#include <array>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace KM::Test {

/// The rules of reading STL in their plain form, one C call after the other: what the library is compared with. It
/// follows the locale of the process, so it is to be used in the C locale only.
class PlainStlReader {
public:
    explicit PlainStlReader(const std::string& name) {
        file_ = std::fopen(name.c_str(), "rb");
        if (file_ == nullptr) return;
        if (std::fread(token_, 1, 6, file_) == 6) UpperCase();
        std::fseek(file_, 80, SEEK_SET);
        unsigned char probe[512];
        const std::size_t size = std::fread(probe, 1, sizeof probe, file_);
        for (std::size_t i = 0; i < size; ++i)
            if (probe[i] >= 128) isText_ = false;
        if (isText_) {
            std::fclose(file_);
            file_ = std::fopen(name.c_str(), "r");
            if (file_ != nullptr && std::fgets(token_, 256, file_) == nullptr) token_[0] = '\0';
        } else {
            std::rewind(file_);
            (void)!std::fread(token_, 1, 84, file_);
        }
    }
    ~PlainStlReader() {
        if (file_ != nullptr) std::fclose(file_);
    }
    PlainStlReader(const PlainStlReader&) = delete;
    PlainStlReader& operator=(const PlainStlReader&) = delete;

    bool IsText() const { return isText_; }

    std::string ReadHeader() {
        char text[256] = {};
        if (file_ == nullptr) return text;
        std::rewind(file_);
        if (isText_) {
            if (std::fgets(text, 256, file_) == nullptr) text[0] = '\0';
        } else {
            (void)!std::fread(text, 1, 84, file_);
            for (char* c = text; *c != '\0'; ++c)
                if (static_cast<unsigned char>(*c) >= 128) *c = '\0', --c;
        }
        text[80] = '\0';
        return text;
    }

    bool Read(double* nine) {
        if (file_ == nullptr) return false;
        return isText_ ? ReadText(nine) : ReadBinary(nine);
    }

private:
    void UpperCase() {
        for (char* c = token_; *c != '\0'; ++c)
            if (*c >= 'a' && *c <= 'z') *c = static_cast<char>(*c - 'a' + 'A');
    }

    bool Ended() const { return std::feof(file_) != 0 || std::ferror(file_) != 0; }

    bool ReadBinary(double* nine) {
        char record[50];
        if (std::fread(record, 1, sizeof record, file_) != sizeof record) return false;
        for (int i = 0; i < 9; ++i) {
            float value;
            std::memcpy(&value, record + 12 + 4 * i, sizeof value);
            nine[i] = static_cast<double>(value);
        }
        return true;
    }

    bool ReadText(double* nine) {
        if (Ended()) return false;
        UpperCase();
        while (std::strcmp(token_, "VERTEX") != 0 && !Ended()) {
            (void)!std::fscanf(file_, "%999s", token_);
            UpperCase();
        }
        if (Ended()) return false;
        (void)!std::fscanf(file_, "%lf %lf %lf", nine, nine + 1, nine + 2);
        for (double* three = nine + 3; three != nine + 9; three += 3)
            (void)!std::fscanf(file_, "%999s %lf %lf %lf", token_, three, three + 1, three + 2);
        token_[0] = '\0';
        return true;
    }

    std::FILE* file_ = nullptr;
    bool isText_ = true;
    char token_[1000] = {};
};

using NineDoubles = std::array<double, 9>;

/// What a reader gives: its triangles, and behind them the nine doubles as the last, failing call left them. Each
/// triangle is read over the one before, so a number that was left as it was shows.
template <class Reader>
std::vector<NineDoubles> ReadAll(Reader& reader, std::size_t most = 1u << 20) {
    std::vector<NineDoubles> triangles;
    NineDoubles nine;
    nine.fill(-77.25);
    while (triangles.size() < most && reader.Read(nine.data())) triangles.push_back(nine);
    triangles.push_back(nine);
    return triangles;
}

/// Exact comparison of the stored bits: NaN equals itself, and 0.0 differs from -0.0.
inline bool SameBits(const std::vector<NineDoubles>& a, const std::vector<NineDoubles>& b) {
    return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(NineDoubles)) == 0;
}

}  // namespace KM::Test
