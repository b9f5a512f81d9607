#include "Facet/ThrowingNew.h"

#include <cstdlib>
#include <new>

bool KM::Test::throwOnNew = false;

// In a file of their own: where GCC sees the body of one of a pair only, it takes the two for mismatched.

void* operator new(std::size_t size) {
    if (KM::Test::throwOnNew) throw 1;
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return std::malloc(size != 0 ? size : 1); }

void operator delete(void* block) noexcept { std::free(block); }

void operator delete(void* block, std::size_t) noexcept { std::free(block); }

void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
