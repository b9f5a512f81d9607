#pragma once

#include <string>

namespace KM::Parsing {

/// The number at the start of a text: as decimal, in base 16 behind "0x", "inf" or "nan"; 0.0 if there is none.
double NumberOf(const std::string& text);

/// As "%*.*f" writes it, with both counts bounded by 4096.
std::string FixedText(int width, int precision, double value);

/// Without the digits behind the point. What fits in no int (NaN too) gives the least int, as processors do.
int TruncateToInt(double value);

}  // namespace KM::Parsing
