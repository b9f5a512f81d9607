#include <cstdlib>
#include <cstring>

#include "InjectedFailure.h"
#include "KmTools.h"

using KM::Host::FailsNow;

int KmMemAlloc(size_t size, void** result) {
    if (result == nullptr) return 1;
    *result = nullptr;
    if (FailsNow(KM_HOST_MEM_ALLOC)) return KM_HOST_INJECTED_FAILURE;
    if (size > PTRDIFF_MAX) return 1;
    *result = std::malloc(size != 0 ? size : 1);
    return *result != nullptr ? 0 : 1;
}

int KmMemFree(void** block) {
    if (block == nullptr) return 0;
    if (FailsNow(KM_HOST_MEM_FREE)) return KM_HOST_INJECTED_FAILURE;
    std::free(*block);
    *block = nullptr;
    return 0;
}

int KmMemCpy(void* to, int toSize, const void* from, int fromSize) {
    if (FailsNow(KM_HOST_MEM_CPY)) return KM_HOST_INJECTED_FAILURE;
    if (to == nullptr || from == nullptr || fromSize < 0 || fromSize > toSize) return 1;
    std::memmove(to, from, static_cast<size_t>(fromSize));
    return 0;
}
