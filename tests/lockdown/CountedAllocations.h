#pragma once

#include <cstddef>

namespace vantrel {

/// How often the calling thread has allocated so far. An executable that links this has its allocator replaced.
std::size_t countedAllocations();

}  // namespace vantrel
