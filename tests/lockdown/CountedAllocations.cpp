#include "tests/lockdown/CountedAllocations.h"

#include <cstdlib>
#include <new>

namespace {

thread_local std::size_t allocations = 0;

}  // namespace

// Both are seen by the callers' compiler as declarations only: inlined, a pair of malloc and free behind new and delete
// is taken for a mistake.
void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

std::size_t vantrel::countedAllocations() {
    return allocations;
}
