#pragma once

namespace vantrel::standins {

/// The number of objects autoreleased on a thread without a pool, so that nothing says when they are released. Any
/// thread.
long autoreleasedWithoutPool();

}  // namespace vantrel::standins
