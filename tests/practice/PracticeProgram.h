#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

namespace vantrel::practice::test {

/// The program, started for one test. It ends with this object, and also if the tests crash, because its standard input
/// is then closed.
class PracticeProgram {
  public:
    explicit PracticeProgram(const std::vector<std::string>& arguments);
    ~PracticeProgram();
    PracticeProgram(const PracticeProgram&) = delete;
    PracticeProgram& operator=(const PracticeProgram&) = delete;

    /// The next line of its standard output. Empty if there are no more.
    std::optional<std::string> line();
    /// The rest of its standard error.
    std::string errors();
    /// The port in its first line. 0 if that line is wrong.
    int port();

    void signal(int number) const;
    void closeStandardInput();
    /// Waits for its end. Returns the exit status, or -1 if it did not exit by itself.
    int exitStatus();

  private:
    pid_t process_ = -1;
    int input_ = -1;
    int output_ = -1;
    int errors_ = -1;
    std::string unread_;
};

}  // namespace vantrel::practice::test
