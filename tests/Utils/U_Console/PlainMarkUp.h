#pragma once

#include <cctype>
#include <cstdlib>
#include <string>

namespace KM::Test {

/// What a `RecordingDevice` keeps of a line, by the plain form of the rules: one walk over the bytes, with the flags of
/// the five toggles.
inline std::string PlainMarkUp(const std::string& text) {
    std::string calls = "{OnBegin}";
    bool bold = false, italic = false, underline = false, hyperlink = false, accolade = false;
    const auto name = [](char c) { return c == 'C' ? "FgColor" : c == 'c' ? "BkColor" : "Size"; };
    const auto toggle = [&](const char* what, bool& flag) {
        calls += std::string("{") + what + (flag ? "E}" : "B}");
        flag = !flag;
    };
    const auto choose = [&](const char* what, bool flag) { calls += std::string("{") + what + (flag ? "E}" : "B}"); };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '`' || i + 1 == text.size()) {
            calls += text[i];
            continue;
        }
        const char code = text[i + 1];
        if (code == 'B') toggle("Bold", bold);
        if (code == 'I') toggle("Italic", italic);
        if (code == 'U') toggle("Underline", underline);
        if (code == 'H') toggle("Hyperlink", hyperlink);
        if (code == 'A') toggle("Accolade", accolade);
        if (code == 'T') choose("Strike", italic);
        if (code == 'S') choose("Super", underline);
        if (code == 's') choose("Sub", hyperlink);
        if (std::string("BIUHATSs").find(code) != std::string::npos) i += 2;
        if (code != 'C' && code != 'c' && code != 'Z') continue;
        i += 2;
        if (i >= text.size()) continue;
        if (text[i] == '`') {
            calls += std::string("{") + name(code) + "E}";
            continue;
        }
        std::string number(1, text[i++]);
        if (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])) != 0) number += text[i++];
        calls += std::string("{") + name(code) + "B " + std::to_string(std::atoi(number.c_str())) + "}";
    }
    return calls + "{OnEnd}";
}

}  // namespace KM::Test
