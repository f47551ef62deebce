#pragma once

namespace vantrel::practice {

/// Raised once, when the program must end. Then everything that waits on its descriptor wakes. It is a pipe, so that a
/// signal handler can raise it and poll() can wait for it together with sockets. Any thread.
class StopSignal {
  public:
    StopSignal();
    ~StopSignal();
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;

    /// False if the system could not create a pipe.
    bool isValid() const { return readEnd_ >= 0; }

    /// Stays readable once the signal is raised; nobody reads from it.
    int descriptor() const { return readEnd_; }
    /// A byte written here raises the signal.
    int raisingDescriptor() const { return writeEnd_; }

  private:
    int readEnd_ = -1;
    int writeEnd_ = -1;
};

}  // namespace vantrel::practice
