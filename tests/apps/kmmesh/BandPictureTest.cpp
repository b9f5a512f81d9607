#include "BandPicture.h"

#include <gtest/gtest.h>

#include "ToolRun.h"
#include "Utils/U_XMLReader/Reader.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

const Bands Heights{{0, 0.5, 1}, "height", "none", {{0, 0, 255}, {255, 0, 0}}};

ValuedTriangles ByHeight(const KM::Test::Soup& soup) {
    ValuedTriangles triangles;
    for (std::size_t i = 0; i < soup.size(); i += 3)
        triangles.push_back({{soup[i], soup[i + 1], soup[i + 2]}, {soup[i].Z, soup[i + 1].Z, soup[i + 2].Z}});
    return triangles;
}

std::size_t CountOf(const std::string& text, const std::string& what) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size())) ++count;
    return count;
}

const ValuedTriangles Cube = ByHeight(KM::Test::CubeFacets().AsSoup());

TEST(BandPicture, IsASoundDocumentOfPathsAndALegend) {
    const std::string picture = BandPicture(Cube, Heights, "a<b>&\n\xff.stl", Point(0, -1, 0), true);
    XML::Element root("");
    EXPECT_NO_THROW(XML::ReadElementFromString(picture, root, true));
    EXPECT_TRUE(picture.starts_with("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 2740 2120\">\n"));
    EXPECT_NE(picture.find("<title>a&lt;b>&amp;??.stl</title>"), std::string::npos);
    for (const char* text : {">height</text>", ">0 .. 0.5</text>", ">0.5 .. 1</text>"})
        EXPECT_EQ(CountOf(picture, text), 1u) << text;
    EXPECT_EQ(picture.find(">none</text>"), std::string::npos);
}

/// A class is five times the band, and a shade: 3 faces those who look.
TEST(BandPicture, ShowsTheFrontOfAClosedPart) {
    const std::string picture = BandPicture(Cube, Heights, "cube", Point(0, -1, 0), true);
    EXPECT_GE(CountOf(picture, "<path class=\"c3\""), 1u);
    EXPECT_GE(CountOf(picture, "<path class=\"c8\""), 1u);
    EXPECT_EQ(CountOf(picture, "<path class=\"c4\"") + CountOf(picture, "<path class=\"c9\""), 0u);
    EXPECT_GE(CountOf(BandPicture(Cube, Heights, "cube", Point(0, -1, 0), false), "<path class=\"c9\""), 1u);
}

TEST(BandPicture, PaintsFromTheBack) {
    const Point a(0, 0, 0), b(1, 0, 0), c(0, 1, 0), up(0, 0, 5);
    const ValuedTriangles two = {{{a + up, b + up, c + up}, {1, 1, 1}}, {{a, b, c}, {0, 0, 0}}};
    const std::string picture = BandPicture(two, Heights, "two", Point(0, 0, 1), false);
    EXPECT_LT(picture.rfind("<path class=\"c3\""), picture.find("<path class=\"c8\""));
    const std::string fromBelow = BandPicture(two, Heights, "two", Point(0, 0, -1), false);
    EXPECT_LT(fromBelow.rfind("<path class=\"c9\""), fromBelow.find("<path class=\"c4\""));
}

TEST(BandPicture, HoldsWhateverThePart) {
    for (const double size : {0.0, 1e-310, 1e-40, 1e40, 1e150}) {
        SCOPED_TRACE(size);
        ValuedTriangles triangles = Cube;
        for (ValuedTriangle& triangle : triangles)
            for (Point& corner : triangle.corners) corner *= size;
        triangles.front().values[0] = NAN;
        const std::string picture = BandPicture(triangles, Heights, "", Point(0.6, -0.8, 0), false);
        EXPECT_EQ(picture.find("nan"), std::string::npos);
        EXPECT_EQ(picture.find("inf"), std::string::npos);
    }
}

}  // namespace
}  // namespace KM::Tool
