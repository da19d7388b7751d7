#include "benchmarks/support/Allocations.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

thread_local std::uint64_t count = 0;
thread_local bool isMeasuring = false;
/// Signed: what was held before may be given back.
thread_local std::int64_t held = 0;
thread_local std::int64_t most = 0;

void* allocate(std::size_t size) {
    ++count;
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (isMeasuring) {
        held += static_cast<std::int64_t>(malloc_usable_size(memory));
        most = std::max(most, held);
    }
    return memory;
}

void release(void* memory) {
    if (isMeasuring) {
        held -= static_cast<std::int64_t>(malloc_usable_size(memory));
    }
    std::free(memory);
}

} // namespace

std::uint64_t quorvane::allocationCount() {
    return count;
}

void quorvane::startPeak() {
    held = most = 0;
    isMeasuring = true;
}

std::uint64_t quorvane::endPeak() {
    isMeasuring = false;
    return static_cast<std::uint64_t>(most);
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
    release(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}
