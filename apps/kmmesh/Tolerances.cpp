#include "Tolerances.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>

#include "Failure.h"

namespace KM::Tool {
namespace {

double ToleranceOf(const std::string& word, double diagonal) {
    const bool isShare = word.ends_with('%');
    const char* const end = word.data() + word.size() - (isShare ? 1 : 0);
    double value = 0.0;
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end || !(value >= 0.0) || !std::isfinite(value))
        throw Failure("tolerance \"" + word + "\"",
                      "is no distance, such as 0.05, and no share of the diagonal, such as 0.1%");
    return isShare ? value / 100.0 * diagonal : value;
}

}  // namespace

std::vector<double> TolerancesOf(const std::string& text, double diagonal) {
    std::string spaced = text;
    std::replace(spaced.begin(), spaced.end(), ',', ' ');
    std::istringstream words(spaced);
    std::vector<double> tolerances;
    for (std::string word; words >> word;) tolerances.push_back(ToleranceOf(word, diagonal));
    if (tolerances.empty()) throw Failure("tolerances \"" + text + "\"", "there is no number");
    std::sort(tolerances.begin(), tolerances.end());
    return tolerances;
}

}  // namespace KM::Tool
