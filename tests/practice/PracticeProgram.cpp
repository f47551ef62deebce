#include "PracticeProgram.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace vantrel::practice::test {

namespace {

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{-1, -1};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) std::abort();
        read = ends[0];
        write = ends[1];
    }
    int read;
    int write;
};

void closeOnce(int& descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

}  // namespace

PracticeProgram::PracticeProgram(const std::vector<std::string>& arguments) {
    const Pipe in;
    const Pipe out;
    const Pipe err;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in.read, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out.write, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.write, STDERR_FILENO);

    std::vector<std::string> texts{VANTREL_PRACTICE_PROGRAM, "--exit-with-stdin"};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    if (posix_spawn(&process_, VANTREL_PRACTICE_PROGRAM, &actions, nullptr, pointers.data(), environ) != 0) {
        process_ = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    close(in.read);
    close(out.write);
    close(err.write);
    input_ = in.write;
    output_ = out.read;
    errors_ = err.read;
}

PracticeProgram::~PracticeProgram() {
    closeStandardInput();
    exitStatus();
    closeOnce(output_);
    closeOnce(errors_);
}

std::optional<std::string> PracticeProgram::line() {
    while (true) {
        const std::size_t end = unread_.find('\n');
        if (end != std::string::npos) {
            std::string line = unread_.substr(0, end);
            unread_.erase(0, end + 1);
            return line;
        }
        std::array<char, 1024> bytes{};
        const ssize_t count = ::read(output_, bytes.data(), bytes.size());
        if (count <= 0) return std::nullopt;
        unread_.append(bytes.data(), static_cast<std::size_t>(count));
    }
}

std::string PracticeProgram::errors() {
    std::string text;
    std::array<char, 1024> bytes{};
    for (ssize_t count = 1; count > 0;) {
        count = ::read(errors_, bytes.data(), bytes.size());
        if (count > 0) text.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return text;
}

int PracticeProgram::port() {
    const std::string beginning = "Practice server on http://127.0.0.1:";
    const std::string first = line().value_or("");
    return first.rfind(beginning, 0) == 0 ? static_cast<int>(std::strtol(first.c_str() + beginning.size(), nullptr, 10))
                                          : 0;
}

void PracticeProgram::signal(int number) const {
    if (process_ > 0) kill(process_, number);
}

void PracticeProgram::closeStandardInput() {
    closeOnce(input_);
}

int PracticeProgram::exitStatus() {
    if (process_ <= 0) return -1;
    int status = 0;
    const pid_t ended = waitpid(process_, &status, 0);
    process_ = -1;
    return ended > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace vantrel::practice::test
