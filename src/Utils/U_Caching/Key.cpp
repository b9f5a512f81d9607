#include "Utils/U_Caching/Key.h"

#include <cmath>
#include <cstdint>

#include "Utils/U_Caching/RadixText.h"

namespace KM::Caching {
namespace {

/// What a number counts as. Rounded, so that noise behind the fourth decimal makes no new result; and far enough above
/// 1 for its logarithm to be a divisor.
double MixedValue(double value) {
    constexpr double limit = 1e10;
    constexpr double decimals = 10000.0;
    double v = value;
    if (value > limit) v = 101.23456;
    if (value < -limit) v = 102.234567;
    if (std::isnan(value)) v = 103.2345678;  // it would make all keys alike that come after it
    v = std::trunc(v * decimals) / decimals;
    return v < 1.1 ? 2.3456789 - v : v;
}

struct Step {
    double divisor;
    double sign;
};

Step NextStep(Key<6>& key) {
    key.count += 1.0;
    // The remainder tells even from odd also where no integer type could hold the count.
    const bool isEven = std::fmod(std::trunc(key.count), 2.0) == 0.0;
    return {std::log(key.count), isEven ? -1.0 : 1.0};
}

std::uint32_t LowBits(double size) {
    if (!std::isfinite(size)) return 0;
    return static_cast<std::uint32_t>(std::fmod(std::trunc(size), 4294967296.0));
}

std::string Digits(double number, double scale, std::size_t most) {
    return RadixText(LowBits(std::fabs(number) * scale), 36).substr(0, most);
}

struct Decoration {
    std::string prefix;
    std::string postfix;
    std::string separator = "-";
};

Decoration& State() {
    // Never destroyed: results that are static objects ask for their files after `main`.
    static Decoration& state = *new Decoration;
    return state;
}

}  // namespace

void Mix(Key<6>& key, double value) {
    const double logarithm = std::log(MixedValue(value));
    const auto [divisor, sign] = NextStep(key);
    for (int j = 0; j < 6; ++j) key.k[j] += (j + 1) / logarithm / divisor * sign;
}

void Mix(Key<6>& key, std::string_view bytes) {
    for (const char byte : bytes) Mix(key, static_cast<double>(static_cast<signed char>(byte)));
}

void Mix(Key<6>& key, const Key<6>& other) {
    const auto [divisor, sign] = NextStep(key);
    for (int j = 0; j < 6; ++j) key.k[j] += other.k[j] / divisor * sign;
}

std::string KeyText(const Key<6>& key) {
    std::string text = AskPrefixStr() + Digits(key.k[0], 5000000.0, 3);
    for (int j = 1; j < 6; ++j) text += Digits(key.k[j], 1000000000000.0, 7);
    return text + AskPostfixStr();
}

const std::string& AskPrefixStr() { return State().prefix; }
void SetPrefixStr(const std::string& prefix) { State().prefix = prefix; }
const std::string& AskPostfixStr() { return State().postfix; }
void SetPostfixStr(const std::string& postfix) { State().postfix = postfix; }
const std::string& AskSeparatorStr() { return State().separator; }
void SetSeparatorStr(const std::string& separator) { State().separator = separator; }

}  // namespace KM::Caching
