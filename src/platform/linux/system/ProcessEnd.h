#pragma once

namespace vantrel::linuxdesktop {

/// Ends a program of the client's with success, once its log is out. On macOS the process is gone as soon as it may
/// terminate, including everything that sleeps in the background. Destructors would wait for that, so none runs.
[[noreturn]] void endProcess();

}  // namespace vantrel::linuxdesktop
