#pragma once

namespace vantrel::standins {

/// Forgets all observers, because the Mac that would call them is ending.
void forgetObservers();

}  // namespace vantrel::standins
