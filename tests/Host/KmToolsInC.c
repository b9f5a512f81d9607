#include "KmHost.h"
#include "KmTools.h"

/* The headers have to be good C, and the list's fields have to mean the same there. */
int ItemCountOfAListMadeInC(void);

int ItemCountOfAListMadeInC(void) {
    KmList* list = NULL;
    KmListItr iterator;
    void* item = NULL;
    int count = -1;
    const int32_t value = 3;
    if (KmListMk(2, 4, 1, 1, 0, &list) != 0) return -1;
    if (KmListSet(list, list->count, &value) == 0 && KmListItrInit2(list, 1, &iterator) == 0 &&
        KmListItrPtr(&iterator, &item) == 0 && *(int32_t*)item == value)
        count = list->count;
    KmListDel(&list);
    return count;
}
