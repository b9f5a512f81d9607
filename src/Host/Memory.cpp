#include <cstdlib>

#include "KmTools.h"

int KmMemAlloc(size_t size, void** result) {
    if (result == nullptr) return 1;
    *result = std::malloc(size != 0 ? size : 1);
    return *result != nullptr ? 0 : 1;
}

int KmMemFree(void** block) {
    if (block == nullptr) return 0;
    std::free(*block);
    *block = nullptr;
    return 0;
}
