#include "tests/linux/program/ProgramRun.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>

#include "platform/linux/system/FileDescriptor.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr int patienceMilliseconds = 20000;
constexpr int wentOn = -1000;

struct Pipe {
    Pipe() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) return;
        reading = FileDescriptor(ends[0]);
        writing = FileDescriptor(ends[1]);
    }
    FileDescriptor reading;
    FileDescriptor writing;
};

// False if nothing has come for a long time but the streams are still open.
bool readBoth(int first, std::string& toFirst, int second, std::string& toSecond) {
    std::array<pollfd, 2> sources{pollfd{first, POLLIN, 0}, pollfd{second, POLLIN, 0}};
    const std::array<std::string*, 2> texts{&toFirst, &toSecond};
    while (sources[0].fd >= 0 || sources[1].fd >= 0) {
        if (poll(sources.data(), sources.size(), patienceMilliseconds) < 1) return false;
        for (std::size_t index = 0; index < sources.size(); ++index) {
            if (sources[index].revents == 0) continue;
            std::array<char, 4096> bytes{};
            const ssize_t count = read(sources[index].fd, bytes.data(), bytes.size());
            if (count > 0) {
                texts[index]->append(bytes.data(), static_cast<std::size_t>(count));
            } else {
                // poll() skips negative descriptors.
                sources[index].fd = -1;
            }
        }
    }
    return true;
}

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> found;
    for (std::string& text : texts) found.push_back(text.data());
    found.push_back(nullptr);
    return found;
}

}  // namespace

ProgramRun ProgramRun::of(const std::string& executable, const std::vector<std::string>& environment,
                          const std::vector<std::string>& arguments) {
    ProgramRun run;
    Pipe output;
    Pipe error;
    std::vector<std::string> words{executable};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> variables = environment;
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, output.writing.get(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&files, error.writing.get(), STDERR_FILENO);
    pid_t process = 0;
    const int failure =
        posix_spawn(&process, executable.c_str(), &files, nullptr, pointers(words).data(), pointers(variables).data());
    posix_spawn_file_actions_destroy(&files);
    output.writing.close();
    error.writing.close();
    if (failure != 0) return {wentOn, {}, "it cannot be started"};
    const bool ended = readBoth(output.reading.get(), run.standardOutput, error.reading.get(), run.standardError);
    if (!ended) kill(process, SIGKILL);
    int status = 0;
    waitpid(process, &status, 0);
    run.end = !ended ? wentOn : WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
    return run;
}

}  // namespace vantrel::linuxdesktop
