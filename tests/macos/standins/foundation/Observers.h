#pragma once

namespace vantrel::standins {

/// Whoever observes is forgotten: the Mac that would tell is going.
void forgetObservers();

}  // namespace vantrel::standins
