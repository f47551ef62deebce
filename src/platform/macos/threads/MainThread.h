#pragma once

namespace vantrel::macos {

/// Ends the process if the caller is not on the main thread. Otherwise AppKit would fail later and elsewhere. Any
/// thread.
void requireMainThread(const char* operation);

}  // namespace vantrel::macos
