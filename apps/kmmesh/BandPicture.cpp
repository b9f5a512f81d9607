#include "BandPicture.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "LongTask.h"
#include "Output.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

// In the units of the picture.
constexpr double Size = 2000.0;  // of the longer side of the part
constexpr double Margin = 60.0;
constexpr double LegendWidth = 620.0;
constexpr double LineHeight = 46.0;
constexpr double LongestEdge = Size / 25.0;

// Brightness by the angle of a triangle to the look; the last is that of backs.
constexpr std::array<double, 5> Shades = {0.78, 0.86, 0.93, 1.0, 0.6};
constexpr std::size_t BackShade = Shades.size() - 1;

/// The look at the part: X runs to the right, Y down, Z towards the one who looks, in units of the picture.
class Camera {
public:
    Camera(const ValuedTriangles& triangles, const Point& view) : front_(view) {
        const Point up = std::fabs(view.Z) > 0.99 ? Point(0.0, 1.0, 0.0) : Point(0.0, 0.0, 1.0);
        right_ = SafeUnit(Cross(up, front_));
        down_ = Cross(right_, front_);
        low_ = high_ = Turned(triangles.front().corners[0]);
        for (const ValuedTriangle& triangle : triangles)
            for (const Point& corner : triangle.corners) Grow(Turned(corner));
        const double longer = std::max(high_.X - low_.X, high_.Y - low_.Y);
        scale_ = longer > 1e-100 ? Size / longer : 1.0;
    }

    Point Seen(const Point& p) const { return (Turned(p) - low_) * scale_ + Point(Margin, Margin, 0.0); }
    double Width() const { return (high_.X - low_.X) * scale_ + 2.0 * Margin; }
    double Height() const { return (high_.Y - low_.Y) * scale_ + 2.0 * Margin; }

private:
    Point Turned(const Point& p) const { return {Dot(p, right_), Dot(p, down_), Dot(p, front_)}; }

    void Grow(const Point& p) {
        low_ = {std::min(low_.X, p.X), std::min(low_.Y, p.Y), std::min(low_.Z, p.Z)};
        high_ = {std::max(high_.X, p.X), std::max(high_.Y, p.Y), std::max(high_.Z, p.Z)};
    }

    Point front_, right_, down_;
    Point low_, high_;
    double scale_ = 1.0;
};

/// A polygon of one colour, and where it comes in the order of painting.
struct Patch {
    double depth = 0.0;
    std::uint32_t color = 0;  ///< band times number of shades, plus the shade
    std::uint32_t count = 0;
    std::array<std::array<std::int16_t, 2>, 5> corners{};
};

std::int16_t Rounded(double x) { return static_cast<std::int16_t>(std::lround(x)); }

/// All patches of the part.
class Painting {
public:
    Painting(const ValuedTriangles& triangles, const Bands& bands, const Camera& camera, bool isClosed)
        : bands_(bands), isClosed_(isClosed) {
        LongTask task("Painting", static_cast<double>(triangles.size()));
        for (const ValuedTriangle& triangle : triangles) {
            task.Step();
            ValuedTriangle seen = triangle;
            for (Point& corner : seen.corners) corner = camera.Seen(corner);
            AddTriangle(seen);
        }
        std::stable_sort(patches_.begin(), patches_.end(),
                         [](const Patch& a, const Patch& b) { return a.depth < b.depth; });
        task.At(1.0);
    }

    const std::vector<Patch>& Patches() const { return patches_; }

private:
    void AddTriangle(const ValuedTriangle& seen) {
        const auto& [a, b, c] = seen.corners;
        const Point normal = Cross(c - a, b - a);  // Y runs down, so the winding is turned round
        const double length = Length(normal);
        if (!(length > 0.0) || (isClosed_ && normal.Z <= 0.0)) return;
        constexpr double steps = BackShade;
        const auto shade =
            normal.Z < 0.0 ? BackShade : static_cast<std::size_t>(std::min(steps - 1.0, normal.Z / length * steps));
        AddParts(seen, shade);
    }

    /// Halves what is too long, at its longest edge.
    void AddParts(const ValuedTriangle& seen, std::size_t shade) {
        std::size_t longest = 0;
        std::array<double, 3> lengths{};
        for (std::size_t i = 0; i < 3; ++i) {
            lengths[i] = LengthSquared(seen.corners[(i + 1) % 3] - seen.corners[i]);
            if (lengths[i] > lengths[longest]) longest = i;
        }
        if (lengths[longest] <= LongestEdge * LongestEdge) return AddPieces(seen, shade);
        const std::size_t next = (longest + 1) % 3;
        ValuedTriangle first = seen;
        ValuedTriangle second = seen;
        first.corners[next] = second.corners[longest] = (seen.corners[longest] + seen.corners[next]) / 2.0;
        first.values[next] = second.values[longest] = (seen.values[longest] + seen.values[next]) / 2.0;
        AddParts(first, shade);
        AddParts(second, shade);
    }

    void AddPieces(const ValuedTriangle& seen, std::size_t shade) {
        CutByBands(seen, bands_, pieces_);
        for (const BandPiece& piece : pieces_) {
            Patch patch;
            patch.color = static_cast<std::uint32_t>(piece.band * Shades.size() + shade);
            patch.count = static_cast<std::uint32_t>(piece.count);
            for (std::size_t i = 0; i < piece.count; ++i) {
                patch.depth += piece.corners[i].Z / static_cast<double>(piece.count);
                patch.corners[i] = {Rounded(piece.corners[i].X), Rounded(piece.corners[i].Y)};
            }
            patches_.push_back(patch);
        }
    }

    const Bands& bands_;
    bool isClosed_;
    std::vector<Patch> patches_;
    std::vector<BandPiece> pieces_;
};

std::string ColorOf(const Bands& bands, std::size_t band, double shade) {
    std::array<double, 3> color = {190.0, 190.0, 190.0};  // of what has no value
    if (band < bands.Count()) {
        const double share =
            bands.Count() == 1 ? 0.0 : static_cast<double>(band) / static_cast<double>(bands.Count() - 1);
        const double at = share * static_cast<double>(bands.ramp.size() - 1);
        const std::size_t from = std::min(static_cast<std::size_t>(at), bands.ramp.size() - 2);
        const double t = at - static_cast<double>(from);
        for (std::size_t i = 0; i < 3; ++i) color[i] = bands.ramp[from][i] * (1.0 - t) + bands.ramp[from + 1][i] * t;
    }
    return Format("#%02x%02x%02x", static_cast<unsigned>(color[0] * shade), static_cast<unsigned>(color[1] * shade),
                  static_cast<unsigned>(color[2] * shade));
}

/// Only ASCII, so that a name of any bytes makes a sound file.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '&') escaped += "&amp;";
        else if (c == '<') escaped += "&lt;";
        else escaped += c >= 32 && c < 127 ? c : '?';
    }
    return escaped;
}

std::string StylesOf(const Bands& bands) {
    std::string text = "<style>path{stroke-width:2;stroke-linejoin:round}text{font:32px sans-serif}\n";
    for (std::size_t band = 0; band <= bands.Count(); ++band)
        for (std::size_t shade = 0; shade < Shades.size(); ++shade) {
            const std::string color = ColorOf(bands, band, Shades[shade]);
            text += Format(".c%zu{fill:%s;stroke:%s}\n", band * Shades.size() + shade, color.c_str(), color.c_str());
        }
    return text + "</style>\n";
}

/// Neighbours in the order that have one colour become one path; corners are steps from one to the next.
std::string PathsOf(const std::vector<Patch>& patches) {
    std::string text;
    for (std::size_t i = 0; i < patches.size(); ++i) {
        const Patch& patch = patches[i];
        if (i == 0 || patch.color != patches[i - 1].color)
            text += (i == 0 ? "<path class=\"c" : "\"/>\n<path class=\"c") + std::to_string(patch.color) + "\" d=\"";
        text += 'M' + std::to_string(patch.corners[0][0]) + ' ' + std::to_string(patch.corners[0][1]) + 'l';
        for (std::size_t k = 1; k < patch.count; ++k)
            for (std::size_t axis = 0; axis < 2; ++axis)
                text += std::to_string(patch.corners[k][axis] - patch.corners[k - 1][axis]) + ' ';
        text.back() = 'z';
    }
    return text + (patches.empty() ? "" : "\"/>\n");
}

std::string LegendOf(const Bands& bands, bool hasMissing, const std::string& title, double left) {
    double y = Margin;
    const auto line = [&](const std::string& words, double indent) {
        return Format("<text x=\"%.0f\" y=\"%.0f\">%s</text>\n", left + indent, y, Escaped(words).c_str());
    };
    std::string text = line(title, 0.0);
    y += LineHeight;
    text += line(bands.quantity, 0.0);
    // The highest is on top, as in the histogram of a height.
    for (std::size_t band = bands.Count() + (hasMissing ? 1 : 0); band-- != 0;) {
        y += LineHeight;
        text += Format("<rect x=\"%.0f\" y=\"%.0f\" width=\"60\" height=\"38\" fill=\"%s\"/>\n", left, y - 30.0,
                       ColorOf(bands, band, 1.0).c_str());
        text += line(bands.NameOf(band), 80.0);
    }
    return text;
}

}  // namespace

Option PictureFile() { return {"picture", Kind::Path, "", "for a picture: SVG file to write, or existing folder"}; }

Option ViewPoint() { return {"view", Kind::Direction, "2,-3,2", "where one looks from; or x, y, z, -x, -y, -z"}; }

std::string BandPicture(const ValuedTriangles& triangles, const Bands& bands, const std::string& title,
                        const Point& view, bool isClosed) {
    const Camera camera(triangles, view);
    const Painting painting(triangles, bands, camera, isClosed);
    const std::vector<Patch>& patches = painting.Patches();
    const bool hasMissing = std::any_of(patches.begin(), patches.end(), [&](const Patch& patch) {
        return patch.color / Shades.size() == bands.Count();
    });
    const double height = std::max(camera.Height(), 2.0 * Margin + LineHeight * static_cast<double>(bands.Count() + 3));
    std::string text = Format("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 %.0f %.0f\">\n",
                              camera.Width() + LegendWidth, height);
    text += "<title>" + Escaped(title) + "</title>\n" + StylesOf(bands);
    text += "<rect width=\"100%\" height=\"100%\" fill=\"#fff\"/>\n" + PathsOf(patches);
    return text + LegendOf(bands, hasMissing, title, camera.Width()) + "</svg>\n";
}

}  // namespace KM::Tool
