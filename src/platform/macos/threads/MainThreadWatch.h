#pragma once

namespace vantrel::macos {

/// A process beside the client that ends it when its main thread hangs, so that covers, tap and status item go. It does
/// nothing else, is no application, bears no bundle identifier and goes with the client. It watches as long as a
/// TimelyActivity lives, which is as long as a lockdown stands. Any thread, but for start().
class MainThreadWatch {
  public:
    /// How long the main thread may be silent: longer than the longest wait of the rules (docs/macos.md).
    static constexpr int patienceSeconds = 30;
    static constexpr double answersEvery = 5;

    /// Call it first of all in main(), while the process has one thread and nothing of AppKit. Without a process to
    /// watch (false) the client does without.
    static bool start();

    /// The main thread is expected to answer from now on, until end() was called as often.
    static void begin();
    static void end();

    /// This thread comes back from a call that may take long. Only the main one counts.
    static void noteReturn();
};

}  // namespace vantrel::macos
