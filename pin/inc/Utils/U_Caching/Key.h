#pragma once

#include <array>
#include <string>
#include <string_view>

#include "KmApi.h"

namespace KM::Caching {

/// The fingerprint of a result: numbers that are mixed from all that went into it, in order. Same inputs in the same
/// order give the same bits on each machine that has the same logarithm. Not unique: nothing tells two results with
/// the same text apart.
template <int Count>
struct Key {
    double count = 10.0;  ///< how many items have been mixed in, plus 10
    std::array<double, Count> k{};
};

// Early items weigh more than late ones, and the sign alternates. What a caller puts into the fields is taken as it is.

/// Mixes a number in, by its first four decimals. All above 1e10 count as one number, all below -1e10 as another, and
/// what is not a number as a third.
KM_API void Mix(Key<6>& key, double value);
/// Mixes bytes in, each as a number from -128 to 127.
KM_API void Mix(Key<6>& key, std::string_view bytes);
/// Mixes another key in; `other` may be the same object.
KM_API void Mix(Key<6>& key, const Key<6>& other);

/// The key as it stands in file names: `AskPrefixStr`, up to 38 digits and small letters, `AskPostfixStr`.
///
/// Each number counts by its size, without sign: times 5e6 for the first and 1e12 for the others, cut off to whole
/// numbers, of which the low 32 bits are written. So numbers that are 2^32 apart look alike. One that is infinite or
/// not a number is written as 0.
KM_API std::string KeyText(const Key<6>& key);

/// What stands before the digits of each key text; empty at start. Like what stands behind them it becomes a part of
/// file names: a program sets both before it asks for the first one.
KM_API const std::string& AskPrefixStr();
KM_API void SetPrefixStr(const std::string& prefix);
/// What stands behind the digits; empty at start.
KM_API const std::string& AskPostfixStr();
KM_API void SetPostfixStr(const std::string& postfix);
/// For callers that put texts of several keys together; "-" at start. The text of one key does not use it.
KM_API const std::string& AskSeparatorStr();
KM_API void SetSeparatorStr(const std::string& separator);

}  // namespace KM::Caching
