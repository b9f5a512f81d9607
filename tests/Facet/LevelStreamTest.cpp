#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "Facet/HostileFacets.h"
#include "Facet/LevelsOfDetail.h"
#include "Facet/StreamReader.h"
#include "KmHost.h"
#include "Utils/U_Debug/Exceptions.h"

namespace KM {
namespace {

using namespace KM::Test;
using Words = std::vector<std::int32_t>;

KsLod Level(double tolerance, std::vector<StripFan> strips) {
    KsLod lod{std::move(strips), tolerance, 3};
    for (const StripFan& strip : lod.strips) lod.size += 1 + static_cast<int>(strip.nodes.size());
    return lod;
}

TEST(LodsToTRI, WritesHeadersAndStripsInReadingOrder) {
    const std::vector<KsLod> lods{Level(0.5, {{{7, 8, 9}, 1}, {{1, 2, 3, 4}, 2}, {{5, 6, 7}, 3}}),
                                  Level(2.25, {{{1, 2, 3}, 1}})};
    const OwnedStream stream(LodsToTRI(lods, 23));
    EXPECT_EQ(stream->lodCount, 2);
    EXPECT_EQ(stream->size, 23);
    EXPECT_EQ(stream.Words(), (Words{50000, 16, 3, 3, 7, 8, 9, 4, 4, 3, 2, 1, 3, 5, 6, 7, 225000, 7, 1, 3, 1, 2, 3}));
}

TEST(LodsToTRI, LeavesOutALevelOfTheSizeOfTheOneBefore) {
    // The third is compared with the second, although that was left out; the last is like the first only.
    const std::vector<KsLod> lods{Level(1, {{{1, 2, 3}, 1}}), Level(2, {{{4, 5, 6}, 1}}), Level(3, {{{7, 8, 9}, 1}}),
                                  Level(4, {}), Level(5, {{{1, 2, 3}, 1}})};
    const OwnedStream stream(LodsToTRI(lods, 31));
    EXPECT_EQ(stream->lodCount, 3);
    EXPECT_EQ(stream->size, 31);
    EXPECT_EQ(stream.Words(), (Words{100000, 7, 1, 3, 1, 2, 3, 400000, 3, 0, 500000, 7, 1, 3, 1, 2, 3}));
}

TEST(LodsToTRI, OfNoLevelsIsAnEmptyBlock) {
    const OwnedStream stream(LodsToTRI({}, 5));
    EXPECT_EQ(stream->lodCount, 0);
    EXPECT_EQ(stream->size, 5);
    EXPECT_NE(stream->data, nullptr);
    EXPECT_NE(OwnedStream(LodsToTRI({}, 0))->data, nullptr);
}

TEST(LodsToTRI, TruncatesTheToleranceTowardZero) {
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    const struct { double tolerance; std::int32_t word; } cases[] = {
        {0.0, 0},           {0.0000199, 1},          {-0.0000199, -1}, {21474.836465, most - 1}, {21474.836475, most},
        {-21474.83648, least}, {-21474.836475, least + 1}};
    for (const auto& c : cases) EXPECT_EQ(OwnedStream(LodsToTRI({Level(c.tolerance, {})}, 3)).Words()[0], c.word) << c.tolerance;
}

TEST(LodsToTRI, AToleranceThatFitsIntoNoWordIsTheLeastWord) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    for (const double tolerance : {21474.83648, 1e5, 1e20, -1e20, infinity, -infinity, noNumber})
        EXPECT_EQ(OwnedStream(LodsToTRI({Level(tolerance, {})}, 3)).Words()[0], least) << tolerance;
}

void ExpectThrowsAtTheKnownPlace(const std::vector<KsLod>& lods, int size) {
    try {
        const OwnedStream stream(LodsToTRI(lods, size));
        FAIL() << "nothing was thrown";
    } catch (const KmException& error) {
        EXPECT_EQ(error.File(), "tools/inc/KmTools");
        EXPECT_EQ(error.Line(), 2448u);
        EXPECT_EQ(std::string(error.what()).rfind("In LodsToTRI. ", 0), 0u);
    }
}

TEST(LodsToTRI, ThrowsWhenTheHostHasNoMemory) {
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    ExpectThrowsAtTheKnownPlace({Level(1.0, {})}, 3);
    EXPECT_EQ(KmHostFailNever(), 0);
}

TEST(LodsToTRI, ThrowsWhenTheLevelsDoNotFit) {
    ExpectThrowsAtTheKnownPlace({Level(1.0, {{{1, 2, 3}, 1}})}, 6);
    ExpectThrowsAtTheKnownPlace({}, -1);
}

}  // namespace
}  // namespace KM
