#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "Facet/StlFile.h"
#include "Facet/StlFormat.h"
#include "Facet/StlRecord.h"

namespace KM {

namespace {

constexpr int Decimals = 6;
constexpr std::uint32_t Millions = 1000000;  // 10 to the power of `Decimals`
constexpr std::size_t LongestNumber = std::numeric_limits<double>::max_exponent10 + Decimals + 3;

// Millionths of a fraction below 1, to the nearest, and to the even one of two: what the decimals of "%f" are.
std::uint32_t RoundToMillionths(double fraction) {
    const double scaled = fraction * Millions;
    const double lost = std::fma(fraction, Millions, -scaled);
    const auto down = static_cast<std::uint32_t>(scaled);
    // `scaled` can hold each half, so what was lost in it decides only where it is one.
    const double beyondHalf = scaled - down - 0.5;
    if (beyondHalf != 0.0) return down + (beyondHalf > 0.0 ? 1 : 0);
    if (lost != 0.0) return down + (lost > 0.0 ? 1 : 0);
    return down + down % 2;
}

// As "%f" prints it in the C locale. Coordinates of parts are taken apart by hand, which is several times as fast as
// the general way.
char* PrintNumber(char* to, double x) {
    const double magnitude = std::fabs(x);
    if (!(magnitude < 1e15)) return std::to_chars(to, to + LongestNumber, x, std::chars_format::fixed, Decimals).ptr;
    auto whole = static_cast<std::uint64_t>(magnitude);
    std::uint32_t millionths = RoundToMillionths(magnitude - static_cast<double>(whole));
    if (millionths == Millions) {
        ++whole;
        millionths = 0;
    }
    if (std::signbit(x)) *to++ = '-';
    to = std::to_chars(to, to + LongestNumber, whole).ptr;
    *to = '.';
    for (int i = Decimals; i > 0; --i, millionths /= 10) to[i] = static_cast<char>('0' + millionths % 10);
    return to + 1 + Decimals;
}

// The text of one facet, put together in memory, since one call into the C library costs as much as a number.
class FacetText {
public:
    void Add(std::string_view text) {
        std::memcpy(end_, text.data(), text.size());
        end_ += text.size();
    }

    void Add(const TPoint<double>& p) {
        Add(p.X);
        *end_++ = ' ';
        Add(p.Y);
        *end_++ = ' ';
        Add(p.Z);
    }

    void WriteTo(std::FILE* file) const { std::fwrite(text_, 1, static_cast<std::size_t>(end_ - text_), file); }

private:
    static constexpr std::size_t AllWords = 200;

    void Add(double x) { end_ = PrintNumber(end_, x); }

    char text_[12 * LongestNumber + AllWords];
    char* end_ = text_;
};

void WriteTextFacet(std::FILE* file, const TPoint<double>& n, const TPoint<double>* points) {
    FacetText text;
    text.Add("facet normal ");
    text.Add(n);
    text.Add("\n  outer loop\n");
    for (int i = 0; i < 3; ++i) {
        text.Add("    vertex ");
        text.Add(points[i]);
        text.Add("\n");
    }
    text.Add("  endloop\nendfacet\n\n");
    text.WriteTo(file);
}

void WriteBinaryHeader(std::FILE* file, std::uint32_t triangles) {
    static constexpr std::string_view Title = "KM Mesh STL Output(c)";
    char header[StlFirstRecord];
    std::memset(header, ' ', StlHeaderSize);
    std::memcpy(header, Title.data(), Title.size());
    std::memcpy(header + StlHeaderSize, &triangles, sizeof triangles);
    std::fwrite(header, 1, sizeof header, file);
}

}  // namespace

std::FILE* STLOpenWriter(const char* name, bool isText) {
    if (name == nullptr) return nullptr;
    std::FILE* file = std::fopen(name, isText ? "w" : "wb");
    if (file == nullptr) return nullptr;
    if (isText)
        std::fputs("solid\n\n", file);
    else
        WriteBinaryHeader(file, 0);
    return file;
}

void STLWriteFacet(std::FILE* file, const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c,
                   bool isText) {
    if (file == nullptr) return;
    const TPoint<double> points[] = {a, b, c};
    if (isText) return WriteTextFacet(file, StlNormal(points), points);
    char record[StlRecordSize];
    PutStlRecord(record, points);
    std::fwrite(record, 1, sizeof record, file);
}

void STLCloseWriter(std::FILE* file, int triangles, bool isText) {
    if (file == nullptr) return;
    if (isText) {
        std::fputs("endsolid\n", file);
    } else if (std::fseek(file, 0, SEEK_SET) == 0) {  // in a pipe the header would follow the triangles
        WriteBinaryHeader(file, static_cast<std::uint32_t>(triangles));
    }
    std::fclose(file);
}

}  // namespace KM
