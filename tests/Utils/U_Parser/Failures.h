#pragma once

#include <functional>
#include <string>

#include "Utils/U_Parser/ParsingException.h"

namespace KM::Test {

struct ParsingFailure {
    std::string message = "no failure";
    std::string file{};
    std::size_t position = Parsing::ParsingException::NoPosition;
};

inline ParsingFailure FailureOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const Parsing::ParsingException& failure) {
        return {failure.what(), failure.File(), failure.Position()};
    }
    return {};
}

inline std::string MessageOf(const std::function<void()>& work) { return FailureOf(work).message; }

/// `count` times `open`, then `core`, then `count` times `close`.
inline std::string Nested(int count, const std::string& open, const std::string& core, const std::string& close) {
    std::string text;
    for (int i = 0; i < count; ++i) text += open;
    text += core;
    for (int i = 0; i < count; ++i) text += close;
    return text;
}

}  // namespace KM::Test
