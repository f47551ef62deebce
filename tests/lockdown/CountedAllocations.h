#pragma once

#include <cstddef>

namespace vantrel {

/// How often the calling thread has allocated so far. Linking this replaces the executable's allocator.
std::size_t countedAllocations();

}  // namespace vantrel
