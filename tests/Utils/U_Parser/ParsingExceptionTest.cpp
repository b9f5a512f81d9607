#include "Utils/U_Parser/ParsingException.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace KM::Parsing {
namespace {

static_assert(std::is_nothrow_copy_constructible_v<ParsingException>);

TEST(ParsingException, IsAKmExceptionOfTheParser) {
    try {
        throw ParsingException("In Here. Wrong!", 12, 3);
    } catch (const KmException& failure) {
        EXPECT_STREQ(failure.what(), "In Here. Wrong!");
        EXPECT_EQ(failure.File(), "src/Utils/U_Parser");
        EXPECT_EQ(failure.Line(), 12u);
    }
}

TEST(ParsingException, MayKnowThePosition) {
    EXPECT_EQ(ParsingException("", 1, 3).Position(), 3u);
    EXPECT_EQ(ParsingException("", 1).Position(), ParsingException::NoPosition);
}

}  // namespace
}  // namespace KM::Parsing
