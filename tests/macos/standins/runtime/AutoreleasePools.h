#pragma once

namespace vantrel::standins {

/// Objects that were autoreleased on a thread without a pool, where nothing says when they go. Any thread.
long autoreleasedWithoutPool();

}  // namespace vantrel::standins
