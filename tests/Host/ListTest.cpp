#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <vector>

#include "KmHost.h"

namespace {

constexpr int MaxInt = std::numeric_limits<int>::max();

struct Triple {
    double x, y, z;
};

class List : public testing::Test {
protected:
    KmList* list = nullptr;

    void Make(int initial, int growth, int itemSize = 4) {
        ASSERT_EQ(KmListMk(2, itemSize, initial, growth, 0, &list), 0);
    }
    std::vector<int> Items() const {
        void* items = nullptr;
        EXPECT_EQ(KmListGetArray(list, &items), 0);
        const int* first = static_cast<const int*>(items);
        return {first, first + list->count};
    }
    ~List() override {
        KmHostFailNever();
        KmListDel(&list);
    }
};

TEST_F(List, BeginsEmptyWithItsSizeInTheSecondWordAndItsCountInTheThird) {
    Make(100, 100);
    std::int32_t words[3];
    std::memcpy(words, list, sizeof words);
    EXPECT_EQ(words[0], 2);
    EXPECT_EQ(words[1], 4);
    EXPECT_EQ(words[2], 0);
    const int item = 5;
    KmListSet(list, 0, &item);
    std::memcpy(words, list, sizeof words);
    EXPECT_EQ(words[2], 1);
}

TEST_F(List, GrowsByAppendingWhateverRoomItBeganWith) {
    for (const int initial : {0, 1, 3, 100})
        for (const int growth : {0, 1, 3, 100}) {
            SCOPED_TRACE(testing::Message() << "initial " << initial << " growth " << growth);
            Make(initial, growth);
            std::vector<int> expected;
            for (int i = 0; i < 1000; ++i) {
                expected.push_back(7 * i);
                ASSERT_EQ(KmListSet(list, list->count, &expected.back()), 0);
            }
            EXPECT_EQ(Items(), expected);
            KmListDel(&list);
        }
}

TEST_F(List, ReplacesItemsBelowTheCount) {
    Make(2, 2);
    for (const int item : {1, 2, 3}) KmListSet(list, list->count, &item);
    const int replacement = 20;
    EXPECT_EQ(KmListSet(list, 1, &replacement), 0);
    EXPECT_EQ(Items(), (std::vector<int>{1, 20, 3}));
}

TEST_F(List, RefusesPlacesThatDoNotExist) {
    Make(10, 10);
    const int item = 1;
    EXPECT_NE(KmListSet(list, 1, &item), 0);
    EXPECT_NE(KmListSet(list, -1, &item), 0);
    EXPECT_NE(KmListSet(list, MaxInt, &item), 0);
    EXPECT_NE(KmListSet(list, 0, nullptr), 0);
    EXPECT_NE(KmListSet(nullptr, 0, &item), 0);
    EXPECT_EQ(list->count, 0);
}

TEST_F(List, TakesAnItemOutOfItself) {
    Make(1, 1);
    int item = 42;
    KmListSet(list, 0, &item);
    for (int i = 1; i < 50; ++i) {  // many of these have to move the very items that they read
        void* items = nullptr;
        KmListGetArray(list, &items);
        ASSERT_EQ(KmListSet(list, list->count, items), 0);
    }
    EXPECT_EQ(Items(), std::vector<int>(50, 42));
}

TEST_F(List, HoldsItemsOfAnySize) {
    Make(1, 3, sizeof(Triple));
    for (int i = 0; i < 20; ++i) {
        const Triple item{1.0 * i, 2.0 * i, 3.0 * i};
        ASSERT_EQ(KmListSet(list, i, &item), 0);
    }
    void* items = nullptr;
    ASSERT_EQ(KmListGetArray(list, &items), 0);
    EXPECT_EQ(static_cast<Triple*>(items)[19].z, 57.0);
}

TEST_F(List, ThatIsEmptyHasAnArrayToo) {
    Make(0, 0);
    void* items = nullptr;
    EXPECT_EQ(KmListGetArray(list, &items), 0);
    EXPECT_NE(items, nullptr);
}

TEST_F(List, IsEmptyAfterReset) {
    Make(2, 2);
    for (const int item : {1, 2, 3}) KmListSet(list, list->count, &item);
    EXPECT_EQ(KmListReset(list), 0);
    EXPECT_EQ(list->count, 0);
    const int item = 9;
    EXPECT_EQ(KmListSet(list, 0, &item), 0);
    EXPECT_EQ(Items(), std::vector<int>{9});
}

TEST_F(List, IsNotMadeFromSizesThatMakeNoSense) {
    int marker = 0;
    const struct { int itemSize, initial, growth; } refused[] = {{0, 1, 1}, {-4, 1, 1}, {4, -1, 1}, {4, 1, -1}};
    for (const auto& r : refused) {
        list = reinterpret_cast<KmList*>(&marker);
        EXPECT_NE(KmListMk(2, r.itemSize, r.initial, r.growth, 0, &list), 0);
        EXPECT_EQ(list, nullptr);
    }
    EXPECT_NE(KmListMk(2, 4, 1, 1, 0, nullptr), 0);
}

TEST_F(List, DeletionClearsThePointerAndIgnoresNull) {
    Make(1, 1);
    EXPECT_EQ(KmListDel(&list), 0);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(KmListDel(&list), 0);
    EXPECT_EQ(KmListDel(nullptr), 0);
}

TEST_F(List, RefusesNull) {
    void* items = &items;
    EXPECT_NE(KmListGetArray(nullptr, &items), 0);
    EXPECT_EQ(items, nullptr);
    EXPECT_NE(KmListReset(nullptr), 0);
    Make(1, 1);
    EXPECT_NE(KmListGetArray(list, nullptr), 0);
}

TEST_F(List, SizeErrorIsAFailureOfItsOwn) {
    EXPECT_NE(KmListSizeError(), 0);
    EXPECT_NE(KmListSizeError(), KM_HOST_INJECTED_FAILURE);
}

TEST_F(List, IteratesInOrderAndStaysAtTheEnd) {
    Make(1, 1);
    for (const int item : {4, 5, 6}) KmListSet(list, list->count, &item);
    KmListItr iterator;
    ASSERT_EQ(KmListItrInit2(list, 1, &iterator), 0);
    std::vector<int> met;
    void* item = nullptr;
    for (KmListItrPtr(&iterator, &item); item != nullptr; KmListItrPtr(&iterator, &item))
        met.push_back(*static_cast<int*>(item));
    EXPECT_EQ(met, (std::vector<int>{4, 5, 6}));
    EXPECT_EQ(KmListItrPtr(&iterator, &item), 0);
    EXPECT_EQ(item, nullptr);
}

TEST_F(List, IterationMeetsItemsAppendedMeanwhile) {
    Make(1, 1);
    const int first = 1;
    KmListSet(list, 0, &first);
    KmListItr iterator;
    KmListItrInit2(list, 1, &iterator);
    int met = 0;
    void* item = nullptr;
    for (KmListItrPtr(&iterator, &item); item != nullptr; KmListItrPtr(&iterator, &item))
        if (++met < 30) KmListSet(list, list->count, item);
    EXPECT_EQ(met, 30);
}

TEST_F(List, IterationRefusesNull) {
    KmListItr iterator{};
    void* item = &iterator;
    EXPECT_NE(KmListItrInit2(nullptr, 1, &iterator), 0);
    EXPECT_NE(KmListItrPtr(&iterator, &item), 0);
    EXPECT_EQ(item, nullptr);
    EXPECT_NE(KmListItrPtr(nullptr, &item), 0);
    EXPECT_NE(KmListItrPtr(&iterator, nullptr), 0);
    Make(1, 1);
    EXPECT_NE(KmListItrInit2(list, 1, nullptr), 0);
}

TEST_F(List, FailsOnDemandAndStaysAsItWas) {
    KmHostFailAfter(KM_HOST_LIST_MK, 0);
    EXPECT_EQ(KmListMk(2, 4, 1, 1, 0, &list), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(list, nullptr);
    Make(1, 1);
    const int item = 3;
    KmListSet(list, 0, &item);
    KmListItr iterator{};
    void* pointer = nullptr;
    for (int s = KM_HOST_LIST_SET; s <= KM_HOST_LIST_ITR_PTR; ++s) KmHostFailAfter(static_cast<KmHostService>(s), 0);
    EXPECT_EQ(KmListSet(list, 1, &item), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(KmListGetArray(list, &pointer), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(KmListDel(&list), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(KmListReset(list), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(KmListItrInit2(list, 1, &iterator), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(KmListItrInit2(list, 1, &iterator), 0);
    EXPECT_EQ(KmListItrPtr(&iterator, &pointer), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(Items(), std::vector<int>{3});
}

}  // namespace
