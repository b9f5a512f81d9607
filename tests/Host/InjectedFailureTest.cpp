#include <gtest/gtest.h>

#include <thread>

#include "KmHost.h"

namespace {

/// The code of one more allocation.
int Allocate() {
    void* block = nullptr;
    const int code = KmMemAlloc(4, &block);
    KmMemFree(&block);
    return code;
}

TEST(KmHostFailAfter, FailsOneCallAfterTheGivenNumber) {
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 2);
    EXPECT_EQ(Allocate(), 0);
    EXPECT_EQ(Allocate(), 0);
    EXPECT_EQ(Allocate(), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(Allocate(), 0);
    EXPECT_EQ(KmHostFailNever(), 0);
}

TEST(KmHostFailAfter, CountsEachServiceByItself) {
    KmHostFailAfter(KM_HOST_MEM_CPY, 0);
    EXPECT_EQ(Allocate(), 0);
    char byte = 0;
    EXPECT_EQ(KmMemCpy(&byte, 1, "x", 1), KM_HOST_INJECTED_FAILURE);
}

TEST(KmHostFailAfter, CountsTheCallingThreadOnly) {
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    int other = -1;
    std::thread([&] { other = Allocate(); }).join();
    EXPECT_EQ(other, 0);
    EXPECT_EQ(Allocate(), KM_HOST_INJECTED_FAILURE);
}

TEST(KmHostFailAfter, OfANegativeNumberTakesTheOrderBack) {
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    KmHostFailAfter(KM_HOST_MEM_ALLOC, -7);
    EXPECT_EQ(Allocate(), 0);
}

TEST(KmHostFailAfter, IgnoresServicesThatDoNotExist) {
    KmHostFailAfter(KM_HOST_SERVICE_COUNT, 0);
    EXPECT_EQ(KmHostFailNever(), 0);
}

TEST(KmHostFailNever, TellsHowManyFailuresWereStillWaiting) {
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    KmHostFailAfter(KM_HOST_LIST_MK, 5);
    EXPECT_EQ(KmHostFailNever(), 2);
    EXPECT_EQ(Allocate(), 0);
}

}  // namespace
