#pragma once

#include <string>

namespace KM::XML {

/// A setting's text as an integer:
///
///   empty                      1: a setting that was never given counts as on
///   on, true, y...             1      off, false, n...   0
///   b0111                      base 2
///   0x1234, 0x12345678...      base 16; of eight digits and more the first eight are the 32 bits
///   anything else              the decimal number at the start, 0 if there is none
///
/// Case does not count. A number beyond 32 bits gives the nearest end of the range.
int ToInteger(const std::string& text);

/// The decimal number at the start of the text, behind whitespace: nearest double, infinity beyond the range, 0 if
/// there is none. Infinities and "nan" are understood. The point is "." in every locale.
double ToReal(const std::string& text);

}  // namespace KM::XML
