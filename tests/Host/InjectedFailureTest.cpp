#include <gtest/gtest.h>

#include <cstdint>
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

TEST(KmHostFailAfter, DoesNotCountCallsThatAreRefusedOrFreeNull) {
    const int orders = KM_HOST_SERVICE_COUNT;
    for (int s = 0; s < orders; ++s) KmHostFailAfter(static_cast<KmHostService>(s), 0);
    void* block = nullptr;
    KmList* list = nullptr;
    KmListItr iterator{};
    EXPECT_EQ(KmMemAlloc(SIZE_MAX, &block), 1);
    EXPECT_EQ(KmMemFree(&block), 0);
    EXPECT_EQ(KmMemCpy(nullptr, 1, "x", 1), 1);
    EXPECT_EQ(KmListMk(2, 0, 1, 1, 0, &list), 1);
    EXPECT_EQ(KmListSet(nullptr, 0, "x"), 1);
    EXPECT_EQ(KmListGetArray(nullptr, &block), 1);
    EXPECT_EQ(KmListDel(&list), 0);
    EXPECT_EQ(KmListReset(nullptr), 1);
    EXPECT_EQ(KmListItrInit2(nullptr, 1, &iterator), 1);
    EXPECT_EQ(KmListItrPtr(&iterator, &block), 1);
    EXPECT_EQ(KmHostFailNever(), orders);
}

TEST(KmHostFailNever, TellsHowManyFailuresWereStillWaiting) {
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    KmHostFailAfter(KM_HOST_LIST_MK, 5);
    EXPECT_EQ(KmHostFailNever(), 2);
    EXPECT_EQ(Allocate(), 0);
}

}  // namespace
