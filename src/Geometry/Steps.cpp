#include "Geometry/Steps.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>

namespace KM::Steps {
namespace {

using Levels = std::vector<double>;

constexpr double Slack = 0.001;  // what a gap may be larger than a multiple of the step
constexpr std::size_t MostLevels = 100000000;

/// Both ends and the levels between them, descending; of those closer than `minGap` the upper one.
Levels Given(const Levels& levels, double minGap, double from, double to) {
    Levels all;
    for (const double level : levels)
        if (level > from && level < to) all.push_back(level);
    all.push_back(from);
    all.push_back(to);
    std::sort(all.begin(), all.end(), std::greater<>());
    Levels kept{all.front()};
    for (std::size_t i = 1; i < all.size(); ++i)
        if (kept.back() - all[i] >= minGap) kept.push_back(all[i]);
    return kept;
}

/// Appends the levels that lead from `upper` down to `lower`. False, with nothing appended, if they are too many.
bool Fill(Levels& filled, double upper, double lower, double step) {
    const double parts = (upper - lower - Slack) / step + 1.0;
    if (!(parts < static_cast<double>(MostLevels - filled.size()))) return false;
    const double n = std::trunc(parts);
    for (double k = 1.0; k < n; k += 1.0) filled.push_back(upper + k / n * (lower - upper));
    if (n >= 1.0) filled.push_back(lower);  // itself: the sum above can miss it by a rounding
    return true;
}

}  // namespace

void CreateLevels(Levels& levels, double step, double minGap, double from, double to) {
    if (std::isnan(from) || std::isnan(to)) return;
    const Levels given = Given(levels, minGap, from, to);
    Levels filled{given.front()};
    for (std::size_t i = 1; i < given.size(); ++i)
        if (!Fill(filled, given[i - 1], given[i], step)) return;
    if (filled.size() > 1) filled.erase(filled.begin());
    levels = std::move(filled);
}

}  // namespace KM::Steps
