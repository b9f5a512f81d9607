#include "KmTools.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "KmHost.h"

extern "C" int ItemCountOfAListMadeInC(void);

namespace KM::Host {
namespace {

TEST(Allocate, GivesRoomForSomeValuesAndForNone) {
    double* values = nullptr;
    ASSERT_EQ(Allocate(3, &values), 0);
    values[2] = 1.0;
    EXPECT_EQ(Free(&values), 0);
    EXPECT_EQ(values, nullptr);
    ASSERT_EQ(Allocate(0, &values), 0);
    EXPECT_NE(values, nullptr);
    EXPECT_EQ(Free(&values), 0);
}

TEST(Allocate, RefusesACountWhoseBytesOverflow) {
    double* values = nullptr;
    EXPECT_NE(Allocate(std::numeric_limits<std::size_t>::max() / sizeof(double) + 2, &values), 0);
    EXPECT_EQ(values, nullptr);
}

TEST(Allocate, PassesTheCodeOfTheServiceOn) {
    double* values = nullptr;
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    EXPECT_EQ(Allocate(3, &values), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(values, nullptr);
}

TEST(Free, ThatFailsKeepsTheBlock) {
    double* values = nullptr;
    ASSERT_EQ(Allocate(3, &values), 0);
    KmHostFailAfter(KM_HOST_MEM_FREE, 0);
    EXPECT_EQ(Free(&values), KM_HOST_INJECTED_FAILURE);
    EXPECT_NE(values, nullptr);
    EXPECT_EQ(Free(&values), 0);
}

TEST(Append, ExtendsAListOfWords) {
    KmList* list = nullptr;
    ASSERT_EQ(KmListMk(2, 4, 1, 1, 0, &list), 0);
    for (int i = 0; i < 10; ++i) EXPECT_EQ(Append(list, i * i), 0);
    const std::int32_t* items = nullptr;
    ASSERT_EQ(Items(list, &items), 0);
    EXPECT_EQ(list->count, 10);
    EXPECT_EQ(items[9], 81);
    KmHostFailAfter(KM_HOST_LIST_SET, 0);
    EXPECT_EQ(Append(list, 1), KM_HOST_INJECTED_FAILURE);
    KmHostFailAfter(KM_HOST_LIST_GET_ARRAY, 0);
    EXPECT_EQ(Items(list, &items), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(items, nullptr);
    KmListDel(&list);
}

TEST(Append, AsksTheHostAboutAListOfOtherItems) {
    KmList* list = nullptr;
    ASSERT_EQ(KmListMk(2, 24, 1, 1, 0, &list), 0);
    const std::int32_t* items = nullptr;
    EXPECT_EQ(Append(list, 1), KmListSizeError());
    EXPECT_EQ(Items(list, &items), KmListSizeError());
    EXPECT_EQ(list->count, 0);
    KmListDel(&list);
}

TEST(Append, LeavesItToTheHostToRefuseNull) {
    const std::int32_t* items = nullptr;
    EXPECT_EQ(Append(nullptr, 1), 1);
    EXPECT_EQ(Items(nullptr, &items), 1);
}

TEST(KmTools, ServesCToo) { EXPECT_EQ(ItemCountOfAListMadeInC(), 1); }

}  // namespace
}  // namespace KM::Host
