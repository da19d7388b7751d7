#include "benchmarks/support/Allocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::uint64_t count = 0;

void* allocate(std::size_t size) {
    ++count;
    return std::malloc(size == 0 ? 1 : size);
}

} // namespace

std::uint64_t quorvane::allocationCount() {
    return count;
}

// The whole program's: what a shared library allocates counts as well.
void* operator new(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
