#include "Facet/HostRecords.h"

#include <gtest/gtest.h>

#include <cstring>
#include <type_traits>

#include "Facet/LevelsOfDetail.h"
#include "Geometry/Point.h"

namespace KM {
namespace {

// The bytes as a host writes them, that knows nothing of the declarations: this is what must not move.
template <class Record, class Value>
Value FieldAt(const unsigned char* bytes, Value Record::*field) {
    Record record;
    std::memcpy(&record, bytes, sizeof record);
    return record.*field;
}

template <class Value>
void Put(unsigned char* bytes, int offset, Value value) {
    std::memcpy(bytes + offset, &value, sizeof value);
}

TEST(HostRecords, ArePlainBytes) {
    EXPECT_TRUE(std::is_trivially_copyable_v<KsLim1> && std::is_standard_layout_v<KsLim1>);
    EXPECT_TRUE(std::is_trivially_copyable_v<KsPoint> && std::is_standard_layout_v<KsPoint>);
    EXPECT_TRUE(std::is_trivially_copyable_v<KsEvent> && std::is_standard_layout_v<KsEvent>);
    EXPECT_TRUE(std::is_trivially_copyable_v<KsShadingfacet> && std::is_standard_layout_v<KsShadingfacet>);
    EXPECT_TRUE(std::is_trivially_copyable_v<KsLodsTRI> && std::is_standard_layout_v<KsLodsTRI>);
}

TEST(KsLim1, ThreeInARowAreABoxOfSixDoubles) {
    const double six[6] = {1, 2, 3, 4, 5, 6};
    KsLim1 box[3];
    static_assert(sizeof box == sizeof six);
    std::memcpy(box, six, sizeof six);
    EXPECT_EQ(box[0].min, 1.0);
    EXPECT_EQ(box[0].max, 2.0);
    EXPECT_EQ(box[2].min, 5.0);
    EXPECT_EQ(box[2].max, 6.0);
}

TEST(KsPoint, HasTheLayoutOfAPoint) {
    static_assert(sizeof(KsPoint) == sizeof(TPoint<double>));
    const TPoint<double> point(1, 2, 3);
    KsPoint record;
    std::memcpy(&record, &point, sizeof record);
    EXPECT_EQ(record.x, 1.0);
    EXPECT_EQ(record.y, 2.0);
    EXPECT_EQ(record.z, 3.0);
}

TEST(KsEvent, HasItsCoordinatesBehind24BytesOf104) {
    static_assert(sizeof(KsEvent) == 104);
    static_assert(sizeof(KsEvent[2]) == 208);
    unsigned char bytes[104] = {};
    Put(bytes, 24, 1.5);
    Put(bytes, 32, 2.5);
    Put(bytes, 40, 3.5);
    EXPECT_EQ(FieldAt(bytes, &KsEvent::x), 1.5);
    EXPECT_EQ(FieldAt(bytes, &KsEvent::y), 2.5);
    EXPECT_EQ(FieldAt(bytes, &KsEvent::z), 3.5);
}

TEST(KsShadingfacet, HasThreeIndicesAtTheFrontOf16Bytes) {
    static_assert(sizeof(KsShadingfacet) == 16);
    static_assert(sizeof(KsShadingfacet[2]) == 32);
    const std::int32_t words[4] = {7, 8, 9, -1};
    KsShadingfacet facet;
    std::memcpy(&facet, words, sizeof facet);
    EXPECT_EQ(facet.node[0], 7);
    EXPECT_EQ(facet.node[1], 8);
    EXPECT_EQ(facet.node[2], 9);
    EXPECT_EQ(facet.hostWord, -1);
}

TEST(KsLodsTRI, HasTwoWordsAndThePointer) {
    std::int32_t stream = 0;
    std::int32_t* const address = &stream;
    unsigned char bytes[sizeof(KsLodsTRI)] = {};
    Put(bytes, 0, std::int32_t{3});
    Put(bytes, 4, std::int32_t{99});
    Put(bytes, 8, address);
    EXPECT_EQ(FieldAt(bytes, &KsLodsTRI::lodCount), 3);
    EXPECT_EQ(FieldAt(bytes, &KsLodsTRI::size), 99);
    EXPECT_EQ(FieldAt(bytes, &KsLodsTRI::data), address);
}

TEST(KsLod, BeginsWithTheWordsOfItsHeader) {
    const KsLod lod;
    EXPECT_TRUE(lod.strips.empty());
    EXPECT_EQ(lod.tolerance, 0.0);
    EXPECT_EQ(lod.size, 3);
}

}  // namespace
}  // namespace KM
