#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "KmHost.h"

namespace {

TEST(KmMemAlloc, GivesABlockThatCanBeWritten) {
    void* block = nullptr;
    ASSERT_EQ(KmMemAlloc(1000, &block), 0);
    ASSERT_NE(block, nullptr);
    std::memset(block, 7, 1000);
    EXPECT_EQ(KmMemFree(&block), 0);
    EXPECT_EQ(block, nullptr);
}

TEST(KmMemAlloc, OfNoBytesIsABlockOfItsOwn) {
    void* one = nullptr;
    void* other = nullptr;
    ASSERT_EQ(KmMemAlloc(0, &one), 0);
    ASSERT_EQ(KmMemAlloc(0, &other), 0);
    EXPECT_NE(one, nullptr);
    EXPECT_NE(one, other);
    KmMemFree(&one);
    KmMemFree(&other);
}

TEST(KmMemAlloc, RefusesMoreThanMemoryCanHold) {
    int marker = 0;
    void* block = &marker;
    EXPECT_NE(KmMemAlloc(SIZE_MAX, &block), 0);
    EXPECT_EQ(block, nullptr);
    EXPECT_NE(KmMemAlloc(8, nullptr), 0);
}

TEST(KmMemAlloc, FailsOnDemandWithANullBlock) {
    int marker = 0;
    void* block = &marker;
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    EXPECT_EQ(KmMemAlloc(8, &block), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(block, nullptr);
}

TEST(KmMemFree, IgnoresNull) {
    void* block = nullptr;
    EXPECT_EQ(KmMemFree(&block), 0);
    EXPECT_EQ(KmMemFree(nullptr), 0);
}

TEST(KmMemFree, ThatFailsOnDemandLeavesTheBlock) {
    void* block = nullptr;
    ASSERT_EQ(KmMemAlloc(8, &block), 0);
    KmHostFailAfter(KM_HOST_MEM_FREE, 0);
    EXPECT_EQ(KmMemFree(&block), KM_HOST_INJECTED_FAILURE);
    EXPECT_NE(block, nullptr);
    EXPECT_EQ(KmMemFree(&block), 0);
}

TEST(KmMemCpy, CopiesAsMuchAsItIsGiven) {
    std::array<char, 4> to{'a', 'b', 'c', 'd'};
    EXPECT_EQ(KmMemCpy(to.data(), 4, "xy", 2), 0);
    EXPECT_EQ(to, (std::array<char, 4>{'x', 'y', 'c', 'd'}));
    EXPECT_EQ(KmMemCpy(to.data() + 1, 3, to.data(), 3), 0);
    EXPECT_EQ(to, (std::array<char, 4>{'x', 'x', 'y', 'c'}));
    EXPECT_EQ(KmMemCpy(to.data(), 0, "xy", 0), 0);
}

TEST(KmMemCpy, RefusalCopiesNothing) {
    std::array<char, 2> to{'a', 'b'};
    const std::array<char, 2> before = to;
    EXPECT_NE(KmMemCpy(to.data(), 2, "xyz", 3), 0);
    EXPECT_NE(KmMemCpy(to.data(), 2, "xyz", -1), 0);
    EXPECT_NE(KmMemCpy(to.data(), -1, "xyz", -2), 0);
    EXPECT_NE(KmMemCpy(to.data(), 2, nullptr, 2), 0);
    EXPECT_NE(KmMemCpy(nullptr, 2, "xyz", 2), 0);
    KmHostFailAfter(KM_HOST_MEM_CPY, 0);
    EXPECT_EQ(KmMemCpy(to.data(), 2, "xy", 2), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(to, before);
}

}  // namespace
