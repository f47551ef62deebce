#include <gtest/gtest.h>

#include "lockdown/BlockedCombination.h"
#include "tests/lockdown/CountedAllocations.h"

namespace vantrel {
namespace {

TEST(BlockedCombination, AllocatesNothing) {
    const auto before = countedAllocations();
    for (int keyCode = 0; keyCode < 128; ++keyCode) {
        for (std::uint64_t modifiers = 0; modifiers < 16; ++modifiers) {
            const auto name = blockedCombination({KeyEventType::keyDown, keyCode, modifiers << 17});
            if (name.size() > 100) FAIL();
        }
    }
    EXPECT_EQ(countedAllocations(), before);
}

}  // namespace
}  // namespace vantrel
