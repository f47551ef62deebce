#pragma once

#include <functional>

namespace vantrel {

/// Work for a queue, a timer or an observer. A block captures its owner as a std::weak_ptr and does nothing once the
/// owner is gone, unless the rules ask for a strong reference.
using Block = std::function<void()>;

}  // namespace vantrel
