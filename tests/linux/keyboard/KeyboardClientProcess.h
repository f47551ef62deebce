#pragma once

#include <sys/types.h>

#include <string>

#include "platform/linux/system/FileDescriptor.h"

namespace vantrel::linuxdesktop {

/// A running test client, which answers each byte on its standard input with a line. Ends with this object.
class KeyboardClientProcess {
  public:
    explicit KeyboardClientProcess(std::string executable = VANTREL_KEYBOARD_CLIENT, std::string argument = {});
    ~KeyboardClientProcess();
    KeyboardClientProcess(const KeyboardClientProcess&) = delete;
    KeyboardClientProcess& operator=(const KeyboardClientProcess&) = delete;

    /// The next line of its output, within ten seconds.
    std::string line();
    /// Whether its main thread still answers.
    bool isThere();
    /// Sends a byte. Does not wait for the answer.
    void tell(char byte);

    /// Its standard input ends.
    void closeInput() { input_.close(); }

    void signal(int number) const;
    /// Waits until it is gone. Returns its exit code, or minus the signal that ended it.
    int end();

    pid_t process() const { return process_; }

  private:
    pid_t process_ = 0;
    FileDescriptor input_;
    FileDescriptor output_;
};

}  // namespace vantrel::linuxdesktop
