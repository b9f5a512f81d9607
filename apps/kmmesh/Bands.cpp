#include "Bands.h"

#include <algorithm>
#include <cmath>

#include "LongTask.h"
#include "Output.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

/// A convex polygon with a value at each corner, while it is cut.
struct Outline {
    std::size_t count = 0;
    std::array<Point, 5> corners;
    std::array<double, 5> values;

    void Add(const Point& corner, double value) {
        corners[count] = corner;
        values[count++] = value;
    }
};

/// The part of the outline with values of `limit` and above, or of those up to it.
Outline Cut(const Outline& outline, double limit, bool isUpper) {
    Outline part;
    const auto isIn = [&](double value) { return isUpper ? value >= limit : value <= limit; };
    for (std::size_t i = 0; i < outline.count; ++i) {
        const std::size_t next = i + 1 == outline.count ? 0 : i + 1;
        const double v = outline.values[i];
        const double w = outline.values[next];
        if (isIn(v)) part.Add(outline.corners[i], v);
        if (v == limit || w == limit || isIn(v) == isIn(w)) continue;
        // From the lower end, so that neighbours cut their common edge at the same point.
        const std::size_t low = v < w ? i : next;
        const std::size_t high = v < w ? next : i;
        const double t = (limit - outline.values[low]) / (outline.values[high] - outline.values[low]);
        part.Add(outline.corners[low] + (outline.corners[high] - outline.corners[low]) * t, limit);
    }
    return part;
}

double AreaOf(const BandPiece& piece) {
    double area = 0.0;
    for (std::size_t i = 2; i < piece.count; ++i)
        area += Length(Cross(piece.corners[i - 1] - piece.corners[0], piece.corners[i] - piece.corners[0])) / 2.0;
    return area;
}

/// 0 where areas are zero, or beyond all numbers.
double ShareOf(double area, double all) {
    const double share = area / all;
    return std::isfinite(share) ? share : 0.0;
}

bool HasValue(const ValuedTriangle& triangle) {
    return std::all_of(triangle.values.begin(), triangle.values.end(), [](double v) { return std::isfinite(v); });
}

}  // namespace

std::size_t Bands::BandOf(double value) const {
    const auto above = std::upper_bound(limits.begin() + 1, limits.end() - 1, value);
    return static_cast<std::size_t>(above - limits.begin()) - 1;
}

std::string Bands::NameOf(std::size_t band) const {
    return band == Count() ? missing : Format("%g .. %g", limits[band], limits[band + 1]);
}

std::vector<double> RoundLimits(double highest, int count) {
    if (!(highest > 0.0)) return {0.0, 1.0};
    const double least = highest / count;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    double width = power;
    for (const double round : {2.0, 2.5, 5.0, 10.0})
        if (width < least * (1.0 - 1e-9)) width = power * round;
    std::vector<double> limits{0.0};
    while (limits.back() < highest) limits.push_back(width * static_cast<double>(limits.size()));
    return limits;
}

void CutByBands(const ValuedTriangle& triangle, const Bands& bands, std::vector<BandPiece>& pieces) {
    pieces.clear();
    const auto add = [&](std::size_t band, const Outline& outline) {
        if (outline.count > 2) pieces.push_back({band, outline.count, outline.corners});
    };
    Outline whole;
    for (std::size_t i = 0; i < 3; ++i) whole.Add(triangle.corners[i], triangle.values[i]);
    if (!HasValue(triangle)) return add(bands.Count(), whole);
    const auto [lowest, highest] = std::minmax_element(triangle.values.begin(), triangle.values.end());
    const std::size_t first = bands.BandOf(*lowest);
    const std::size_t last = bands.BandOf(*highest);
    for (std::size_t band = first; band <= last; ++band) {
        Outline part = whole;
        if (band != first) part = Cut(part, bands.limits[band], true);
        if (band != last) part = Cut(part, bands.limits[band + 1], false);
        add(band, part);
    }
}

std::vector<double> AreasOf(const ValuedTriangles& triangles, const Bands& bands) {
    std::vector<double> areas(bands.Count() + 1, 0.0);
    std::vector<BandPiece> pieces;
    LongTask task("Adding up", static_cast<double>(triangles.size()));
    for (const ValuedTriangle& triangle : triangles) {
        task.Step();
        CutByBands(triangle, bands, pieces);
        for (const BandPiece& piece : pieces) areas[piece.band] += AreaOf(piece);
    }
    return areas;
}

std::string Histogram(const std::vector<double>& areas, const Bands& bands) {
    constexpr double barLength = 32.0;  // of the longest, so that a line fits 80 columns
    double sum = 0.0;
    for (const double area : areas) sum += area;
    const double largest = *std::max_element(areas.begin(), areas.end());
    std::string text = Format("  %-20s  %10s   share\n", bands.quantity.c_str(), "area");
    for (std::size_t band = 0; band < areas.size(); ++band) {
        if (band == bands.Count() && areas[band] == 0.0) continue;
        const std::string bar(static_cast<std::size_t>(std::ceil(ShareOf(areas[band], largest) * barLength)), '#');
        const std::string line = Format("  %-20s  %10.6g  %5.1f %%  %s", bands.NameOf(band).c_str(), areas[band],
                                        100.0 * ShareOf(areas[band], sum), bar.c_str());
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    return text;
}

}  // namespace KM::Tool
