#include "Utils/U_XMLReader/Entities.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace KM::XML {
namespace {

std::string Decoded(std::string text) {
    DecodeEntities(text);
    return text;
}

TEST(Entities, Decode) {
    EXPECT_EQ(Decoded("&lt;&gt;&amp;&apos;&quot;"), "<>&'\"");
    EXPECT_EQ(Decoded("a&lt;b&gt;c"), "a<b>c");
    EXPECT_EQ(Decoded(""), "");
    EXPECT_EQ(Decoded("plain"), "plain");
    EXPECT_EQ(Decoded("&amp;lt;"), "&lt;") << "what comes out is not looked at again";
}

TEST(Entities, UnknownOnesStay) {
    for (const char* text : {"&", "&&", "&;", "&lt", "&LT;", "&nbsp;", "&#60;", "&#x3C;", "& lt;", "a&", "&am&p;"})
        EXPECT_EQ(Decoded(text), text);
    EXPECT_EQ(Decoded("&&lt;&l&gt;"), "&<&l>");
}

TEST(Entities, Write) {
    EXPECT_EQ(WithEntities("<>&'\""), "&lt;&gt;&amp;&apos;&quot;");
    EXPECT_EQ(WithEntities("a<b"), "a&lt;b");
    EXPECT_EQ(WithEntities("&lt;"), "&amp;lt;");
    EXPECT_EQ(WithEntities(""), "");
    EXPECT_EQ(WithEntities("plain\n"), "plain\n");
}

TEST(Entities, AnyTextComesBack) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        std::mt19937 random(seed);
        std::string text;
        for (auto count = random() % 20; count > 0; --count) text += "<>&'\"lt;gamp"[random() % 12];
        ASSERT_EQ(Decoded(WithEntities(text)), text) << "seed " << seed;
    }
}

}  // namespace
}  // namespace KM::XML
