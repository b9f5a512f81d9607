#include "Facet/FloatBlock.h"

#include <gtest/gtest.h>

#include <climits>

#include "KmHost.h"

namespace KM {
namespace {

TEST(AllocateFloats, GivesABlockThatCanBeWritten) {
    float* block = nullptr;
    ASSERT_EQ(AllocateFloats(3, &block), 0);
    for (int i = 0; i < 3; ++i) block[i] = 1.0F;
    EXPECT_EQ(Host::Free(&block), 0);
}

TEST(AllocateFloats, GivesABlockForNoFloatsToo) {
    float* block = nullptr;
    ASSERT_EQ(AllocateFloats(0, &block), 0);
    EXPECT_NE(block, nullptr);
    EXPECT_EQ(Host::Free(&block), 0);
}

TEST(AllocateFloats, PassesTheCodeOfTheAllocatorOn) {
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    float value = 0.0F;
    float* block = &value;
    EXPECT_EQ(AllocateFloats(3, &block), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(block, nullptr);
}

TEST(AllocateFloats, RefusesWhatAnIntCannotCountWithoutAskingTheAllocator) {
    for (const std::uint64_t count : {std::uint64_t{INT_MAX} + 1, std::uint64_t{UINT_MAX} + 1, UINT64_MAX}) {
        SCOPED_TRACE(testing::Message() << count << " floats");
        KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
        float value = 0.0F;
        float* block = &value;
        EXPECT_EQ(AllocateFloats(count, &block), 1);
        EXPECT_EQ(block, nullptr);
        EXPECT_EQ(KmHostFailNever(), 1) << "the allocator was asked";
    }
}

TEST(AllocateFloats, AsksForTheLargestCountOfAnInt) {
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    float* block = nullptr;
    EXPECT_EQ(AllocateFloats(INT_MAX, &block), KM_HOST_INJECTED_FAILURE);
}

}  // namespace
}  // namespace KM
