#include "Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <sstream>

#include "Failure.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

std::string Quoted(const std::string& text) { return '"' + text + '"'; }

template <class T>
bool IsRead(const std::string& word, T& value) {
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, value);
    return error == std::errc() && stop == end;
}

double NumberOf(const std::string& word) {
    double value = 0.0;
    if (!IsRead(word, value) || !std::isfinite(value)) throw Failure(Quoted(word), "is no number");
    return value;
}

std::vector<std::string> WordsOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) words.push_back(word);
    return words;
}

/// Divided by its largest coordinate first, so that neither a tiny vector nor a huge one loses its direction.
Point Unit(const Point& v) { return SafeUnit(v / std::max({std::fabs(v.X), std::fabs(v.Y), std::fabs(v.Z)})); }

Place PlaceOf(const std::string& word) {
    Place place;
    if (word.find(',') != std::string::npos) place.point = PointOf(word);
    else if (!IsRead(word, place.node) || place.node < 0)
        throw Failure(Quoted(word), "is neither the number of a node, such as 12, nor a point, such as 10,0,2.5");
    return place;
}

}  // namespace

std::vector<double> NumbersOf(const std::string& text) {
    std::string spaced = text;
    std::replace(spaced.begin(), spaced.end(), ',', ' ');
    std::vector<double> numbers;
    for (const std::string& word : WordsOf(spaced)) numbers.push_back(NumberOf(word));
    if (numbers.empty()) throw Failure(Quoted(text), "holds no number");
    return numbers;
}

Point PointOf(const std::string& text) {
    const std::vector<double> numbers = NumbersOf(text);
    if (numbers.size() != 3) throw Failure(Quoted(text), "has to be three numbers, such as 10,0,2.5");
    return {numbers[0], numbers[1], numbers[2]};
}

Point DirectionOf(const std::string& text) {
    const bool isBackward = text.starts_with('-');
    const std::string axis = text.substr(isBackward ? 1 : 0);
    const double length = isBackward ? -1.0 : 1.0;
    if (axis == "x") return {length, 0.0, 0.0};
    if (axis == "y") return {0.0, length, 0.0};
    if (axis == "z") return {0.0, 0.0, length};
    const Point direction = PointOf(text);
    if (direction == Point()) throw Failure(Quoted(text), "is no direction");
    return Unit(direction);
}

int AxesOf(const std::string& text) {
    int axes = 0;
    for (const char letter : text) {
        const std::size_t k = std::string("xyzXYZ").find(letter);
        if (k == std::string::npos) throw Failure(Quoted(text), "is not made of the letters x, y and z");
        axes |= 1 << k % 3;
    }
    if (axes == 0) throw Failure(Quoted(text), "names none of x, y and z");
    return axes;
}

std::vector<Place> PlacesOf(const std::string& text) {
    std::vector<Place> places;
    for (const std::string& word : WordsOf(text)) places.push_back(PlaceOf(word));
    if (places.empty()) throw Failure(Quoted(text), "names no place");
    return places;
}

}  // namespace KM::Tool
