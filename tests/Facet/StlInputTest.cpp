// Words and numbers of text files: the very results of the format functions, whatever stands in the file.

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

#include "Facet/PlainStlReader.h"
#include "Facet/StlFile.h"
#include "Facet/StlSamples.h"
#include "Support/CommaLocale.h"
#include "Support/TempFile.h"

namespace KM {
namespace {

using namespace Test;  // a test's own base has that name as well

constexpr double Before = -77.25;  // what stands in the doubles that `ReadAll` hands to a reader

std::vector<NineDoubles> Read(const std::string& bytes) {
    const TempFile file(bytes);
    STLReader reader(file.Name());
    return ReadAll(reader);
}

void ExpectAsPlain(const TempFile& file) {
    STLReader reader(file.Name());
    PlainStlReader plain(file.Name());
    EXPECT_EQ(reader.ReadHeader(), plain.ReadHeader());
    EXPECT_TRUE(SameBits(ReadAll(reader), ReadAll(plain)));
}

// The first number of a file whose first vertex begins with this text.
double FirstNumber(const std::string& text) {
    return Read("solid\nvertex " + text + " 2 3 vertex 4 5 6 vertex 7 8 9\n").at(0)[0];
}

TEST(StlNumber, IsReadWithTheNearestDouble) {
    EXPECT_EQ(FirstNumber("0.1"), 0.1);
    EXPECT_EQ(FirstNumber("-1.5e-3"), -1.5e-3);
    EXPECT_EQ(FirstNumber("+2E+01"), 20.0);
    EXPECT_EQ(FirstNumber(".5"), 0.5);
    EXPECT_EQ(FirstNumber("5."), 5.0);
    EXPECT_EQ(FirstNumber("9007199254740993"), 9007199254740992.0);
    EXPECT_TRUE(std::signbit(FirstNumber("-0")));
}

TEST(StlNumber, BeyondTheRangeIsInfiniteOrZero) {
    EXPECT_EQ(FirstNumber("1e400"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(FirstNumber("-1e400"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(FirstNumber("1e-400"), 0.0);
    EXPECT_EQ(FirstNumber("4.9e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(FirstNumber(std::string(400, '9')), std::numeric_limits<double>::infinity());
    EXPECT_EQ(FirstNumber("0." + std::string(400, '0') + "1"), 0.0);
}

TEST(StlNumber, CanBeHexadecimalOrAName) {
    EXPECT_EQ(FirstNumber("0x1.8p3"), 12.0);
    EXPECT_EQ(FirstNumber("-0XA"), -10.0);
    EXPECT_EQ(FirstNumber("inf"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(FirstNumber("-Infinity"), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(FirstNumber("nan")));
    EXPECT_TRUE(std::signbit(FirstNumber("-NAN")));
}

TEST(StlNumber, WithAnEmptyExponentIsWhatStandsBeforeIt) {
    EXPECT_EQ(FirstNumber("1e"), 1.0);
    EXPECT_EQ(FirstNumber("2.5e+"), 2.5);
    EXPECT_EQ(FirstNumber("0x1p"), 1.0);
}

TEST(StlNumber, EndsWhereItCannotGoOn) {
    const auto triangles = Read("solid\nvertex 1.5.5 2 vertex 4 5 6 vertex 7 8 9 \n");
    EXPECT_EQ(triangles.at(0), (NineDoubles{1.5, 0.5, 2.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0}));
}

TEST(StlNumber, ThatIsNoneLeavesTheRestOfItsVertex) {
    // "abc" is taken for the word in front of the second vertex, and each word that follows is late by one.
    const auto triangles = Read("solid\nvertex 1 abc 4 5 6 vertex 7 8 9 \n");
    EXPECT_EQ(triangles.at(0), (NineDoubles{1.0, Before, Before, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0}));
}

TEST(StlNumber, ThatIsNoneLosesItsSign) {
    const auto triangles = Read("solid\nvertex 1 +-4 5 6 vertex 7 8 9 \n");
    EXPECT_EQ(triangles.at(0), (NineDoubles{1.0, Before, Before, 5.0, 6.0, Before, 7.0, 8.0, 9.0}));
}

TEST(StlNumber, ThatIsABrokenNameLosesItsFirstLetters) {
    const auto triangles = Read("solid\nvertex 1 ivertex 4 5 6 vertex 7 8 9 \n");
    EXPECT_EQ(triangles.at(0), (NineDoubles{1.0, Before, Before, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0}));
}

TEST(StlNumber, EachOddWordReadsAsTheFormatFunctionsReadIt) {
    const TempFile file;
    for (const std::string& first : OddWords())
        for (const std::string behind :
             {"", " ", "\n2 vertex 3 4 5 vertex 6 7 8\n", "2 3", "vertex 1 2 3 vertex 4 5 6 "}) {
            SCOPED_TRACE(first + behind);
            file.Write("solid\nvertex " + first + behind);
            ExpectAsPlain(file);
        }
}

TEST(StlNumber, HasAPointInEveryLocale) {
    const CommaLocale comma;
#ifdef __GLIBC__
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
#endif
    EXPECT_EQ(FirstNumber("1.5"), 1.5);
    EXPECT_EQ(FirstNumber("+1.5"), 1.5);
    EXPECT_EQ(FirstNumber("0x1.8"), 1.5);
    EXPECT_EQ(FirstNumber("1,5"), 1.0);
}

TEST(StlWord, IsKnownInAnyCase) {
    EXPECT_EQ(Read("solid\nvErTeX 1 2 3 what 4 5 6 ever 7 8 9\n").at(0), (NineDoubles{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(StlWord, OtherThanVertexIsSkippedInFrontOfTheFirstVertexOnly) {
    const auto triangles = Read("solid\nfacet normal 9 9 9 vertices xvertex vertex 1 2 3 4 5 6 7 8 9 10 11\n");
    EXPECT_EQ(triangles.at(0), (NineDoubles{1, 2, 3, 5, 6, 7, 9, 10, 11}));
}

TEST(StlWord, EndsAtAZeroWhenItIsCompared) {
    EXPECT_EQ(Read(std::string("solid\nvertex\0x 1 2 3 a 4 5 6 b 7 8 9\n", 38)).size(), 2u);
    EXPECT_EQ(Read(std::string("solid\nverte\0x 1 2 3 a 4 5 6 b 7 8 9\n", 37)).size(), 1u);
}

TEST(StlWord, InTheFirstLineCountsOnlyIfItFillsTheLine) {
    EXPECT_EQ(Read("vertex 1 2 3 a 4 5 6 b 7 8 9 \n").size(), 1u);
    EXPECT_EQ(Read("vertex\n1 2 3 a 4 5 6 b 7 8 9 \n").size(), 1u) << "the line feed belongs to the line";
    EXPECT_EQ(Read(std::string("vertex\0\n1 2 3 a 4 5 6 b 7 8 9 \n", 32)).size(), 2u) << "a zero hides the line feed";
}

TEST(StlWord, LongerThan999BytesGoesOnAsTheNext) {
    const std::string numbers = " 1 2 3 a 4 5 6 b 7 8 9 \n";
    EXPECT_EQ(Read("solid\n" + std::string(999, 'x') + "vertex" + numbers).size(), 2u);
    EXPECT_EQ(Read("solid\n" + std::string(1998, 'x') + "vertex" + numbers).size(), 2u);
    EXPECT_EQ(Read("solid\n" + std::string(998, 'x') + "vertex" + numbers).size(), 1u);
    EXPECT_EQ(Read("solid\n" + std::string(1000, 'x') + "vertex" + numbers).size(), 1u);
}

TEST(StlInput, ReadsHostileTextAsTheFormatFunctionsDo) {
    const TempFile file;
    for (unsigned seed = 0; seed < 2500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        file.Write(HostileText(random, 5 + static_cast<int>(random() % 60)));
        ExpectAsPlain(file);
        if (testing::Test::HasFailure()) break;
    }
}

TEST(StlInput, ReadsMutatedFilesAsTheFormatFunctionsDo) {
    const TempFile file;
    const std::string text = StlText(4);
    const std::string record = StlRecord({1, 2, 3, 4, 5, 6, 7, 8, 9});
    const std::string binary = StlBinary("part", 3, {record, record, record});
    for (unsigned seed = 0; seed < 1500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        file.Write(Mutated(seed % 4 == 0 ? binary : text, random));
        ExpectAsPlain(file);
        if (testing::Test::HasFailure()) break;
    }
}

// The block in memory, which begins behind the first line.
constexpr std::size_t BlockSize = std::size_t{1} << 18;

// Whatever stands across its end, nothing may change.
TEST(StlInput, ReadsTheSameAcrossTheEndOfABlock) {
    const TempFile file;
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        std::string tail = seed % 3 == 0 ? "vertex 123.456 -7e-3 0x1.8p3 vertex inf infinity nan vertex 1e 2 -3"
                                         : HostileText(random, 60);
        if (seed % 3 != 0) tail = StlText(1) + tail;
        const std::size_t ahead = seed % 3 == 0 ? seed / 3 + 10 : random() % 1200;
        // Long words fill the block faster than white space would.
        std::string filler;
        while (filler.size() + 1000 < BlockSize - ahead) filler += std::string(900, 'x') + " ";
        filler.resize(BlockSize - ahead, ' ');
        file.Write("solid\n" + filler + tail);
        ExpectAsPlain(file);
    }
}

TEST(StlInput, ReadsOnBehindALongestWordThatEndsWithTheBlock) {
    const std::string filler(BlockSize - 999, ' ');
    const std::string triangle = " vertex 1 2 3 a 4 5 6 b 7 8 9\n";
    EXPECT_EQ(Read("solid\n" + filler + std::string(999, 'x') + triangle).size(), 2u);
}

TEST(StlInput, ReadsALargeFileAsTheFormatFunctionsDo) {
    const TempFile file(StlText(4000));
    ExpectAsPlain(file);
}

TEST(StlInput, ReadsAWordOfHalfAMillionDigits) {
    const std::string digits = "1." + std::string(500000, '3');
    EXPECT_EQ(FirstNumber(digits), 4.0 / 3.0);
    EXPECT_EQ(FirstNumber(digits + "e400"), std::numeric_limits<double>::infinity());
}

}  // namespace
}  // namespace KM
