#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <vector>

#include "Facet/FlatMesh.h"
#include "Facet/ThrowingNew.h"
#include "KmTools.h"

// A host of its own: this program brings the memory and box services with it, so that it sees each call that the flat
// interface makes, and decides what comes of it.

namespace {

constexpr unsigned char Pattern = 0x5A;

struct HostState {
    int failWith = 0;
    std::vector<std::size_t> sizes;
    std::vector<std::vector<double>> grownBy;
    bool isGrownInPlace = true;
};

HostState& State() {
    static HostState state;
    return state;
}

}  // namespace

int KmMemAlloc(size_t size, void** result) {
    if (State().failWith != 0) return State().failWith;
    State().sizes.push_back(size);
    *result = std::malloc(size + 1);
    std::memset(*result, Pattern, size + 1);
    return 0;
}

int KmMemFree(void** block) {
    std::free(*block);
    *block = nullptr;
    return 0;
}

int KmBndBoxInit(int dimensions, double box[]) {
    for (int i = 0; i < 2 * dimensions; ++i) box[i] = 100.0 + i;
    return 0;
}

int KmBndBoxGrowPnt(int dimensions, const double box[], const double point[], double grown[]) {
    State().isGrownInPlace = State().isGrownInPlace && box == grown;
    State().grownBy.emplace_back(point, point + dimensions);
    grown[0] += 1.0;
    return 0;
}

namespace KM {
namespace {

class FlatMeshOnAHostOfItsOwn : public testing::Test {
protected:
    FlatMeshOnAHostOfItsOwn() { State() = HostState(); }
    ~FlatMeshOnAHostOfItsOwn() override { State() = HostState(); }

    PIN mesh = {{{1, 2, 3}, {0.1, 5, 6}, {7, 8, 9}}, {{1, -1, 0}, {2, -1, 1}, {0, -1, 2}}, {0, 1, 2}};
};

TEST_F(FlatMeshOnAHostOfItsOwn, LeavesTheRoomForPointsAsTheAllocatorGaveIt) {
    for (const int withPoints : {2, -1}) {
        SCOPED_TRACE(testing::Message() << "withPoints " << withPoints);
        int count = 0;
        float* array = nullptr;
        ASSERT_EQ(PINGetFloatArray(&mesh, withPoints, &count, &array), 0);
        ASSERT_EQ(count, 3 + 9 + 3 + 9);
        EXPECT_EQ(State().sizes.back(), static_cast<std::size_t>(count) * sizeof(float));
        const auto* const tail = reinterpret_cast<const unsigned char*>(array + 15);
        for (std::size_t i = 0; i < 9 * sizeof(float); ++i) EXPECT_EQ(tail[i], Pattern);
        Host::Free(&array);
    }
}

TEST_F(FlatMeshOnAHostOfItsOwn, GrowsTheBoxInPlaceByEachPointButTheFirst) {
    double box[6] = {};
    int count = 0;
    float* vertices = nullptr;
    ASSERT_EQ(PINMkVTRIVTXs(&mesh, -1, box, &count, &vertices), 0);
    Host::Free(&vertices);
    EXPECT_TRUE(State().isGrownInPlace);
    const std::vector<std::vector<double>> expected = {{0.1, 5, 6}, {7, 8, 9}};
    EXPECT_EQ(State().grownBy, expected);
    // What the host makes of the box is what comes out: the first point, and two steps of this host.
    EXPECT_EQ(box[0], 3.0);
    EXPECT_EQ(box[1], 1.0);
    EXPECT_EQ(box[5], 3.0);
}

TEST_F(FlatMeshOnAHostOfItsOwn, LeavesTheBoxOfNoPointsAsTheHostMadeIt) {
    PIN empty;
    double box[6] = {};
    int count = -1;
    float* vertices = nullptr;
    ASSERT_EQ(PINMkVTRIVTXs(&empty, 0, box, &count, &vertices), 0);
    Host::Free(&vertices);
    for (int i = 0; i < 6; ++i) EXPECT_EQ(box[i], 100.0 + i);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(State().sizes, std::vector<std::size_t>{0});
}

TEST_F(FlatMeshOnAHostOfItsOwn, PassesTheCodeOnExceptWhereOneIsPromised) {
    State().failWith = -5;
    SPIN single;
    single.points.resize(1);
    double box[6];
    int count = 0;
    float* array = nullptr;
    EXPECT_EQ(PINGetFloatArray(&mesh, 1, &count, &array), -5);
    EXPECT_EQ(PINMkVTRIVTXs(&mesh, 0, box, &count, &array), -5);
    EXPECT_EQ(PINExtractPoints(&single, &count, &array), 1);
}

TEST_F(FlatMeshOnAHostOfItsOwn, CreateGivesNullWhateverTheAllocatorThrows) {
    KM::Test::throwOnNew = true;
    PIN* const pin = PINCreate();
    SPIN* const spin = SPINCreate();
    KM::Test::throwOnNew = false;
    EXPECT_EQ(pin, nullptr);
    EXPECT_EQ(spin, nullptr);
}

}  // namespace
}  // namespace KM
