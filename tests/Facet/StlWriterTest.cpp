#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>

#include "Facet/PlainStlReader.h"
#include "Facet/StlFile.h"
#include "Support/CommaLocale.h"
#include "Support/TempFile.h"

namespace KM {
namespace {

using namespace Test;  // a test's own base has that name as well

using Point = TPoint<double>;

constexpr double Infinity = std::numeric_limits<double>::infinity();
const Point A(0, 0, 0), B(2, 0, 0), C(0, 2, 0);

std::string Written(const std::vector<Point>& corners, bool isText) {
    const TempFile file;
    std::FILE* writer = STLOpenWriter(file.Name().c_str(), isText);
    int triangles = 0;
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3, ++triangles)
        STLWriteFacet(writer, corners[i], corners[i + 1], corners[i + 2], isText);
    STLCloseWriter(writer, triangles, isText);
    return file.Bytes();
}

std::string Header(std::uint32_t count) {
    std::string bytes = "KM Mesh STL Output(c)" + std::string(59, ' ');
    return bytes.append(reinterpret_cast<const char*>(&count), 4);
}

// The line with the normal of a text file of one facet.
std::string NormalLine(const Point& a, const Point& b, const Point& c) {
    const std::string text = Written({a, b, c}, true);
    return text.substr(7, text.find('\n', 7) - 7);
}

// A facet as the format functions print it.
std::string Printed(const Point& n, const Point& a, const Point& b, const Point& c) {
    std::vector<char> text(5000);
    const int size = std::snprintf(text.data(), text.size(),
                                   "facet normal %f %f %f\n  outer loop\n    vertex %f %f %f\n    vertex %f %f %f\n"
                                   "    vertex %f %f %f\n  endloop\nendfacet\n\n",
                                   n.X, n.Y, n.Z, a.X, a.Y, a.Z, b.X, b.Y, b.Z, c.X, c.Y, c.Z);
    return std::string(text.data(), static_cast<std::size_t>(size));
}

Point PlainNormal(const Point& a, const Point& b, const Point& c) {
    Point n = Cross(b - a, c - a);
    const double length = std::sqrt(n.X * n.X + n.Y * n.Y + n.Z * n.Z);
    if (!(length < 5e-9))
        n = Point(n.X / length, n.Y / length, n.Z / length);
    else
        n.Z = 1.0;
    return n.X > 1.01 ? Point(0.0, 1.0, 1.0) : n;
}

// Each facet of a text file is what the format functions print.
void ExpectAsPrinted(const std::vector<Point>& corners) {
    const std::string text = Written(corners, true);
    std::size_t at = std::strlen("solid\n\n");
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3) {
        const Point &a = corners[i], &b = corners[i + 1], &c = corners[i + 2];
        const std::string facet = Printed(PlainNormal(a, b, c), a, b, c);
        ASSERT_EQ(text.substr(at, facet.size()), facet);
        at += facet.size();
    }
    EXPECT_EQ(text.substr(at), "endsolid\n");
}

TEST(STLWriter, WritesAText) {
    EXPECT_EQ(Written({A, B, C}, true),
              "solid\n"
              "\n"
              "facet normal 0.000000 0.000000 1.000000\n"
              "  outer loop\n"
              "    vertex 0.000000 0.000000 0.000000\n"
              "    vertex 2.000000 0.000000 0.000000\n"
              "    vertex 0.000000 2.000000 0.000000\n"
              "  endloop\n"
              "endfacet\n"
              "\n"
              "endsolid\n");
}

TEST(STLWriter, WritesATextWithoutFacets) { EXPECT_EQ(Written({}, true), "solid\n\nendsolid\n"); }

TEST(STLWriter, WritesABinaryFile) {
    // The normal is (0, 0, 1). Of the double 0.0 eight bytes, of the next four, all zero; then the floats; then two
    // zeros.
    std::string record(12, '\0');
    const float corners[9] = {0, 0, 0, 2, 0, 0, 0, 2, 0};
    record.append(reinterpret_cast<const char*>(corners), sizeof corners).append(2, '\0');
    EXPECT_EQ(Written({A, B, C, A, B, C}, false), Header(2) + record + record);
}

TEST(STLWriter, WritesABinaryFileWithoutFacets) { EXPECT_EQ(Written({}, false), Header(0)); }

TEST(STLWriter, WritesTheNormalOfARecordAsRawMemory) {
    // Plane x + 2y + 2z = 0 with normal (1, 2, 2) / 3, that is 0x3FD5555555555555 and 0x3FE5555555555555.
    const std::string bytes = Written({A, Point(2, -1, 0), Point(0, -1, 1)}, false);
    const Point n = PlainNormal(A, Point(2, -1, 0), Point(0, -1, 1));
    ASSERT_LT(n.X, 0.0);
    EXPECT_EQ(bytes.substr(84, 12), std::string("\x55\x55\x55\x55\x55\x55\xD5\xBF\x55\x55\x55\x55", 12));
}

TEST(STLWriter, HasCountZeroInTheFileUntilItIsClosed) {
    const TempFile file;
    std::FILE* writer = STLOpenWriter(file.Name().c_str(), false);
    std::fflush(writer);
    EXPECT_EQ(file.Bytes(), Header(0));
    STLCloseWriter(writer, 77, false);
    EXPECT_EQ(file.Bytes(), Header(77));
}

TEST(STLWriter, RoundsBinaryPointsToFloat) {
    const std::string bytes = Written({Point(0.1, 1e300, -1e-300), B, C}, false);
    const float expected[3] = {0.1f, std::numeric_limits<float>::infinity(), -0.0f};
    EXPECT_EQ(bytes.substr(96, 12), std::string(reinterpret_cast<const char*>(expected), sizeof expected));
}

TEST(STLWriter, GivesADegenerateFacetTheHeightOne) {
    EXPECT_EQ(NormalLine(A, A, A), "facet normal 0.000000 0.000000 1.000000");
    EXPECT_EQ(NormalLine(A, B, B), "facet normal 0.000000 0.000000 1.000000");
    // Vector product (0, -1e-9, 0): below the zero test, so y stays as small as it is.
    EXPECT_EQ(NormalLine(A, Point(1e-9, 0, 0), Point(0, 0, 1)), "facet normal 0.000000 -0.000000 1.000000");
    const std::string bytes = Written({A, Point(0, 2e-9, 0), Point(0, 0, 1)}, false);
    double x = 0.0;
    std::memcpy(&x, bytes.data() + 84, sizeof x);
    EXPECT_EQ(x, 2e-9);
}

TEST(STLWriter, NormalisesFromTheZeroTestUp) {
    EXPECT_EQ(NormalLine(A, Point(0, 5e-9, 0), Point(0, 0, 1)), "facet normal 1.000000 0.000000 0.000000");
    EXPECT_EQ(NormalLine(A, Point(0, 4.999e-9, 0), Point(0, 0, 1)), "facet normal 0.000000 0.000000 1.000000");
}

TEST(STLWriter, WritesAnyNumber) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const std::string text =
        Written({Point(Infinity, -Infinity, 1e22), Point(-0.0, 0.0000005, 0.0000015), Point(nan, -nan, 2.5)}, true);
    EXPECT_NE(text.find("    vertex inf -inf 10000000000000000000000.000000\n"
                        "    vertex -0.000000 0.000000 0.000002\n"
                        "    vertex nan -nan 2.500000\n"),
              std::string::npos);
}

TEST(STLWriter, WritesAPointInEveryLocale) {
    const CommaLocale comma;
    EXPECT_EQ(NormalLine(A, B, C), "facet normal 0.000000 0.000000 1.000000");
    EXPECT_NE(
        Written({A, Point(1.5, 1e22, 0), C}, true).find("vertex 1.500000 10000000000000000000000.000000 0.000000"),
        std::string::npos);
}

TEST(STLWriter, WritesTheLongestNumbers) {
    const double max = std::numeric_limits<double>::max();
    const Point low(-max, -max, -max);
    EXPECT_EQ(Written({low, low, low}, true), "solid\n\n" + Printed(Point(0, 0, 1), low, low, low) + "endsolid\n");
}

TEST(STLWriter, WritesWhatTheFormatFunctionsPrint) {
    std::mt19937_64 random(7);
    std::vector<Point> corners;
    for (int i = 0; i < 3000; ++i) {
        Point p[3];
        for (Point& q : p) {
            // Any finite double, or one of the size of a part.
            const auto number = [&] {
                double x;
                const std::uint64_t bits = random();
                std::memcpy(&x, &bits, sizeof x);
                return i % 2 == 0 && std::isfinite(x) ? x
                                                      : static_cast<double>(static_cast<std::int64_t>(bits)) * 1e-16;
            };
            q.X = number();
            q.Y = number();
            q.Z = number();
        }
        const Point n = PlainNormal(p[0], p[1], p[2]);
        if (std::isnan(n.X) || std::isnan(n.Y) || std::isnan(n.Z)) continue;  // the sign of a NaN is the machine's
        corners.insert(corners.end(), p, p + 3);
    }
    ExpectAsPrinted(corners);
}

TEST(STLWriter, RoundsToSixDecimalsAsTheFormatFunctionsDo) {
    std::mt19937_64 random(11);
    std::vector<Point> points;
    for (int i = 0; i < 5000; ++i) {
        // Halves of a millionth that a double can hold exactly lie at odd multiples of 1/128; the others lie beside
        // one.
        const double size = std::ldexp(1.0, static_cast<int>(random() % 50));
        const double tie = (static_cast<double>(random() % 100000) + 0.5) / 64.0;
        const double half = std::floor(static_cast<double>(random() % 1000000000) / size) * 1e-6 + 5e-7;
        const double corners[] = {tie,
                                  std::nextafter(tie, 0.0),
                                  std::nextafter(tie, 1e9),
                                  half,
                                  std::nextafter(half, 0.0),
                                  -half,
                                  size - 5e-7,
                                  size - 4e-7,
                                  1e15 - size};
        for (int k = 0; k < 9; k += 3) points.emplace_back(corners[k], corners[k + 1], corners[k + 2]);
    }
    ExpectAsPrinted(points);
}

TEST(STLWriter, IsReadBack) {
    const std::vector<Point> corners = {A, B, C, Point(-1.5, 0.25, 1e6), Point(3, 4, 5), Point(-6, 7, -8)};
    for (const bool isText : {true, false}) {
        const TempFile file(Written(corners, isText));
        STLReader reader(file.Name());
        const auto triangles = ReadAll(reader);
        ASSERT_EQ(triangles.size(), 3u);
        for (std::size_t i = 0; i < 18; ++i) {
            const Point& p = corners[i / 3];
            EXPECT_EQ(triangles[i / 9][i % 9], i % 3 == 0 ? p.X : i % 3 == 1 ? p.Y : p.Z);
        }
    }
}

TEST(STLWriter, RefusesWhatCannotBeOpened) {
    for (const bool isText : {true, false}) {
        EXPECT_EQ(STLOpenWriter(nullptr, isText), nullptr);
        EXPECT_EQ(STLOpenWriter("/nowhere/at/all.stl", isText), nullptr);
        STLWriteFacet(nullptr, A, B, C, isText);
        STLCloseWriter(nullptr, 1, isText);
    }
}

// A file that is open for reading only takes no byte, as a full disk does.
TEST(STLWriter, SurvivesAFileThatTakesNothing) {
    const TempFile file("full");
    for (const bool isText : {true, false}) {
        std::FILE* writer = std::fopen(file.Name().c_str(), "rb");
        ASSERT_NE(writer, nullptr);
        for (int i = 0; i < 1000; ++i) STLWriteFacet(writer, A, B, C, isText);
        EXPECT_NE(std::ferror(writer), 0);
        STLCloseWriter(writer, 1000, isText);
        EXPECT_EQ(file.Bytes(), "full");
    }
}

TEST(STLWriter, LeavesTheCountOfAPipeAtZero) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::FILE* writer = STLOpenWriter(("/dev/fd/" + std::to_string(ends[1])).c_str(), false);
    ASSERT_NE(writer, nullptr);
    STLWriteFacet(writer, A, B, C, false);
    STLCloseWriter(writer, 1, false);
    close(ends[1]);
    char bytes[1000];
    EXPECT_EQ(read(ends[0], bytes, sizeof bytes), 84 + 50) << "a second header would stand behind the triangles";
    close(ends[0]);
}

}  // namespace
}  // namespace KM
