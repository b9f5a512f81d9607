#include "Utils/U_XMLReader/Path.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace KM::XML {
namespace {

using Parts = std::vector<std::string>;

Parts PartsOf(const std::string& path) {
    Parts result;
    PathParts parts(path);
    for (std::string_view part; parts.Next(part);) result.emplace_back(part);
    return result;
}

// The rule, character by character.
Parts PlainPartsOf(const std::string& path) {
    Parts result;
    for (const char c : path) {
        if (c == ' ') continue;
        if (c == '.') {
            result.emplace_back();
            continue;
        }
        if (result.empty()) result.emplace_back();
        result.back() += c;
    }
    return result;
}

TEST(Path, IsCutAtItsDots) {
    const struct {
        const char* path;
        Parts parts;
    } cases[] = {
        {"", {}},
        {"   ", {}},
        {"a", {"a"}},
        {"a.b", {"a", "b"}},
        {".b", {"b"}},
        {" . b", {"b"}},
        {".", {""}},
        {"..", {"", ""}},
        {"..b", {"", "b"}},
        {"a.", {"a", ""}},
        {"a..b", {"a", "", "b"}},
        {"a . b", {"a", "b"}},
        {" a b ", {"ab"}},
        {"a. ", {"a", ""}},
        {"a\tb", {"a\tb"}},
    };
    for (const auto& c : cases) EXPECT_EQ(PartsOf(c.path), c.parts) << '"' << c.path << '"';
}

TEST(Path, FollowsThePlainRuleOnRandomText) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        std::mt19937 random(seed);
        std::string path(random() % 12, ' ');
        for (char& c : path) c = " .a\0"[random() % 4];
        EXPECT_EQ(PartsOf(path), PlainPartsOf(path)) << "seed " << seed << " \"" << path << '"';
    }
}

}  // namespace
}  // namespace KM::XML
