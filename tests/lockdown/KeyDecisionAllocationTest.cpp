#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "lockdown/BlockedCombination.h"

namespace {

/// Counts the calling thread's allocations.
thread_local std::size_t allocations = 0;

}  // namespace

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

namespace vantrel {
namespace {

TEST(BlockedCombination, AllocatesNothing) {
    const auto before = allocations;
    for (int keyCode = 0; keyCode < 128; ++keyCode) {
        for (std::uint64_t modifiers = 0; modifiers < 16; ++modifiers) {
            const auto name = blockedCombination({KeyEventType::keyDown, keyCode, modifiers << 17});
            if (name.size() > 100) FAIL();
        }
    }
    EXPECT_EQ(allocations, before);
}

}  // namespace
}  // namespace vantrel
