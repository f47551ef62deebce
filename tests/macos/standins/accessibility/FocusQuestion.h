#pragma once

#include <atomic>

namespace vantrel::standins {

/// Whether the system-wide element passes the question for the application with the focus on to that application, and
/// so waits for one that does not answer. Apple's pages do not say. Initially not.
inline std::atomic<bool>& focusIsAskedOfTheFront() {
    static std::atomic<bool> asked = false;
    return asked;
}

}  // namespace vantrel::standins
