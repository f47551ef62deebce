#pragma once

namespace vantrel::macos {

/// Ends the process when the caller is not on the main thread: AppKit would go wrong later and elsewhere. Any thread.
void requireMainThread(const char* operation);

}  // namespace vantrel::macos
