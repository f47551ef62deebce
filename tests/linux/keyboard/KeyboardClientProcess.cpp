#include "tests/linux/keyboard/KeyboardClientProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

namespace vantrel::linuxdesktop {

KeyboardClientProcess::KeyboardClientProcess(std::string executable, std::string argument) {
    std::array<int, 2> in{};
    std::array<int, 2> out{};
    if (pipe2(in.data(), O_CLOEXEC) != 0 || pipe2(out.data(), O_CLOEXEC) != 0) return;
    const FileDescriptor theirInput(in[0]);
    const FileDescriptor theirOutput(out[1]);
    input_ = FileDescriptor(in[1]);
    output_ = FileDescriptor(out[0]);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, theirInput.get(), STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, theirOutput.get(), STDOUT_FILENO);
    const std::array<char*, 3> arguments{executable.data(), argument.empty() ? nullptr : argument.data(), nullptr};
    if (posix_spawn(&process_, executable.c_str(), &files, nullptr, arguments.data(), environ) != 0) process_ = 0;
    posix_spawn_file_actions_destroy(&files);
}

KeyboardClientProcess::~KeyboardClientProcess() {
    if (process_ == 0) return;
    signal(SIGKILL);
    end();
}

std::string KeyboardClientProcess::line() {
    constexpr int milliseconds = 10000;
    std::string text;
    for (char character = 0;; text += character) {
        pollfd source{output_.get(), POLLIN, 0};
        if (poll(&source, 1, milliseconds) != 1) return text + " (nothing more)";
        if (read(output_.get(), &character, 1) != 1) return text + " (the end)";
        if (character == '\n') return text;
    }
}

bool KeyboardClientProcess::isThere() {
    return write(input_.get(), "?", 1) == 1 && line() == "here";
}

void KeyboardClientProcess::tell(char byte) {
    if (write(input_.get(), &byte, 1) != 1) input_.close();
}

void KeyboardClientProcess::signal(int number) const {
    kill(process_, number);
}

int KeyboardClientProcess::end() {
    input_.close();
    int status = 0;
    waitpid(std::exchange(process_, 0), &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace vantrel::linuxdesktop
