#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

#include "InjectedFailure.h"
#include "KmTools.h"

using KM::Host::FailsNow;

static_assert(offsetof(KmList, itemSize) == 4 && offsetof(KmList, count) == 8, "hosts read the second and the third word");

namespace {

constexpr int WrongItemSize = 2;

struct Releaser {
    void operator()(unsigned char* block) const { std::free(block); }
};
using Block = std::unique_ptr<unsigned char, Releaser>;

unsigned char* Slot(const KmList* list, int index) {
    return list->items + static_cast<size_t>(index) * static_cast<size_t>(list->itemSize);
}

/// Null when there is no memory, or when the bytes cannot be counted.
unsigned char* NewItems(int capacity, int itemSize) {
    if (static_cast<size_t>(capacity) > PTRDIFF_MAX / static_cast<size_t>(itemSize)) return nullptr;
    return static_cast<unsigned char*>(std::malloc(static_cast<size_t>(capacity) * static_cast<size_t>(itemSize)));
}

/// Makes room behind a full list and returns the old block, in which the item to be stored may lie; null on failure.
Block Grow(KmList* list) {
    constexpr int most = std::numeric_limits<int>::max();
    if (list->capacity == most) return nullptr;
    // Half as much again, whatever growth was asked for: a fixed step would copy a long list quadratically often.
    const int step = std::max({1, list->growth, list->capacity / 2});
    const int capacity = list->capacity > most - step ? most : list->capacity + step;
    unsigned char* items = NewItems(capacity, list->itemSize);
    if (items == nullptr) return nullptr;
    std::memcpy(items, list->items, static_cast<size_t>(list->count) * static_cast<size_t>(list->itemSize));
    Block old(list->items);
    list->items = items;
    list->capacity = capacity;
    return old;
}

}  // namespace

int KmListMk(int kind, int itemSize, int initial, int growth, int /*flag*/, KmList** result) {
    if (result == nullptr) return 1;
    *result = nullptr;
    if (FailsNow(KM_HOST_LIST_MK)) return KM_HOST_INJECTED_FAILURE;
    if (itemSize < 1 || initial < 0 || growth < 0) return 1;
    const int capacity = std::max(1, initial);
    Block items(NewItems(capacity, itemSize));
    if (items == nullptr) return 1;
    auto* list = static_cast<KmList*>(std::malloc(sizeof(KmList)));
    if (list == nullptr) return 1;
    *list = {kind, itemSize, 0, growth, capacity, items.release()};
    *result = list;
    return 0;
}

int KmListSet(KmList* list, int index, const void* item) {
    if (FailsNow(KM_HOST_LIST_SET)) return KM_HOST_INJECTED_FAILURE;
    if (list == nullptr || item == nullptr || index < 0 || index > list->count) return 1;
    Block old;
    if (index == list->capacity) {
        old = Grow(list);
        if (old == nullptr) return 1;
    }
    std::memmove(Slot(list, index), item, static_cast<size_t>(list->itemSize));
    if (index == list->count) ++list->count;
    return 0;
}

int KmListGetArray(KmList* list, void** items) {
    if (items == nullptr) return 1;
    *items = nullptr;
    if (FailsNow(KM_HOST_LIST_GET_ARRAY)) return KM_HOST_INJECTED_FAILURE;
    if (list == nullptr) return 1;
    *items = list->items;
    return 0;
}

int KmListSizeError() { return WrongItemSize; }

int KmListDel(KmList** list) {
    if (list == nullptr || *list == nullptr) return 0;
    if (FailsNow(KM_HOST_LIST_DEL)) return KM_HOST_INJECTED_FAILURE;
    std::free((*list)->items);
    std::free(*list);
    *list = nullptr;
    return 0;
}

int KmListReset(KmList* list) {
    if (FailsNow(KM_HOST_LIST_RESET)) return KM_HOST_INJECTED_FAILURE;
    if (list == nullptr) return 1;
    list->count = 0;
    return 0;
}

int KmListItrInit2(const KmList* list, int /*mode*/, KmListItr* iterator) {
    if (FailsNow(KM_HOST_LIST_ITR_INIT2)) return KM_HOST_INJECTED_FAILURE;
    if (list == nullptr || iterator == nullptr) return 1;
    *iterator = {list, 0};
    return 0;
}

int KmListItrPtr(KmListItr* iterator, void** item) {
    if (item == nullptr) return 1;
    *item = nullptr;
    if (FailsNow(KM_HOST_LIST_ITR_PTR)) return KM_HOST_INJECTED_FAILURE;
    if (iterator == nullptr || iterator->list == nullptr) return 1;
    if (iterator->next < iterator->list->count) *item = Slot(iterator->list, iterator->next++);
    return 0;
}
