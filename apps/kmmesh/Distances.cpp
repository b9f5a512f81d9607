#include "Distances.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>

#include "Failure.h"

namespace KM::Tool {
namespace {

double DistanceOf(const std::string& word, double diagonal) {
    const bool isShare = word.ends_with('%');
    const char* const end = word.data() + word.size() - (isShare ? 1 : 0);
    double value = 0.0;
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    if (error != std::errc() || stop != end || !(value >= 0.0) || !std::isfinite(value))
        throw Failure('"' + word + '"', "is neither a length, such as 0.05, nor a share of the diagonal, such as 0.1%");
    return isShare ? value / 100.0 * diagonal : value;
}

template <class Read>
std::string FaultOf(Read read) {
    try {
        read();
        return "";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

}  // namespace

std::vector<double> DistancesOf(const std::string& text, double diagonal) {
    std::string spaced = text;
    std::replace(spaced.begin(), spaced.end(), ',', ' ');
    std::istringstream words(spaced);
    std::vector<double> distances;
    for (std::string word; words >> word;) distances.push_back(DistanceOf(word, diagonal));
    if (distances.empty()) throw Failure('"' + text + '"', "holds no distance");
    std::sort(distances.begin(), distances.end());
    return distances;
}

double LengthOf(const std::string& text, double diagonal) {
    const std::vector<double> distances = DistancesOf(text, diagonal);
    if (distances.size() != 1) throw Failure('"' + text + '"', "is more than one length");
    // A share of a small part can round to 0, which is none of the user's doing.
    if (!(DistancesOf(text, 1.0).front() > 0.0)) throw Failure('"' + text + '"', "is not greater than 0");
    return distances.front();
}

std::string FaultOfLength(const std::string& text) {
    return FaultOf([&] { LengthOf(text, 1.0); });
}

std::string FaultOfDistances(const std::string& text) {
    return FaultOf([&] { DistancesOf(text, 1.0); });
}

}  // namespace KM::Tool
