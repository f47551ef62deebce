#include "tests/simulation/program/Crew.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <utility>

#include "tests/simulation/program/Message.h"

namespace vantrel::simulation {
namespace {

using RealTime = std::chrono::steady_clock;

/// In the child: writes all of it, or ends the process, for nobody reads any more.
void tell(int pipe, const std::string& text) {
    for (std::size_t written = 0; written < text.size();) {
        const auto more = write(pipe, text.data() + written, text.size() - written);
        if (more < 0 && errno == EINTR) continue;
        if (more <= 0) _exit(1);
        written += static_cast<std::size_t>(more);
    }
}

std::string resultText(const TrialResult& result) {
    std::string text;
    for (const auto& [rule, line, why] : result.broken) text += message({"broken", rule, std::to_string(line), why});
    for (const auto& [situation, count] : result.counts) {
        text += message({"count", situation, std::to_string(count.times), std::to_string(count.inLockdown),
                         std::to_string(count.classes)});
    }
    return text + message({"done"});
}

std::string howItEnded(int status) {
    if (WIFSIGNALED(status)) return "the process was ended by signal " + std::to_string(WTERMSIG(status));
    return "the process ended with status " + std::to_string(WEXITSTATUS(status));
}

}  // namespace

/// A process that plays numbers one after the other, as seen from its parent.
class Crew::Child {
  public:
    Child(const Crew& crew, std::uint64_t first, std::uint64_t last) : crew_(crew), number_(first), last_(last) {
        start();
    }
    ~Child() {
        if (pipe_ >= 0) close(pipe_);
        if (process_ <= 0) return;
        kill(process_, SIGKILL);
        reap();
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    int pipe() const { return pipe_; }
    bool isDone() const { return number_ > last_; }

    /// Reads what has come.
    void read(const Receive& receive) {
        std::array<char, 65536> bytes;
        const auto count = ::read(pipe_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) return;
        if (count <= 0) return finish(howItEnded(reap()), receive);
        text_.append(bytes.data(), static_cast<std::size_t>(count));
        std::size_t start = 0;
        for (auto end = text_.find('\n'); end != std::string::npos; end = text_.find('\n', start)) {
            take(fieldsOf(text_.substr(start, end - start)), receive);
            start = end + 1;
        }
        text_.erase(0, start);
    }

    void checkTime(const Receive& receive) {
        if (std::chrono::duration<double>(RealTime::now() - began_).count() < crew_.limitSeconds_) return;
        kill(process_, SIGKILL);
        reap();
        finish("it still runs after " + std::to_string(static_cast<int>(crew_.limitSeconds_)) + " s of real time",
               receive);
    }

  private:
    void start() {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error(std::strerror(errno));
        process_ = fork();
        if (process_ < 0) throw std::runtime_error(std::strerror(errno));
        if (process_ == 0) {
            close(ends[0]);
            work(ends[1]);
        }
        close(ends[1]);
        pipe_ = ends[0];
        began_ = RealTime::now();
        text_.clear();
        result_ = {};
    }

    /// In the child. Threads of a Mac whose client has ended its process may still stand, so no destructor runs.
    [[noreturn]] void work(int pipe) const {
        for (auto number = number_; number <= last_; ++number) {
            tell(pipe, resultText(crew_.trial_(number)));
            if (crew_.isSpent_ && crew_.isSpent_()) break;
        }
        std::_Exit(0);
    }

    void take(const std::vector<std::string>& fields, const Receive& receive) {
        if (fields.front() == "broken" && fields.size() == 4) {
            result_.broken.push_back({fields[1], static_cast<std::size_t>(std::stoull(fields[2])), fields[3]});
        } else if (fields.front() == "count" && fields.size() == 5) {
            result_.counts[fields[1]] = {std::stoll(fields[2]), std::stoll(fields[3]), std::stoll(fields[4])};
        } else if (fields.front() == "done") {
            hasResult_ = true;
            began_ = RealTime::now();
            receive(number_++, std::exchange(result_, {}));
        }
    }

    /// The process has ended: by its own will after a number, or in the middle of one.
    void finish(const std::string& how, const Receive& receive) {
        close(pipe_);
        pipe_ = -1;
        const bool between = std::exchange(hasResult_, false) && how.ends_with("status 0");
        if (isDone()) return;
        if (!between) {
            receive(number_++, {{{"A class is played to its end", 0, how}}, {}});
            if (isDone()) return;
        }
        start();
    }

    int reap() {
        int status = 0;
        while (waitpid(process_, &status, 0) < 0 && errno == EINTR) continue;
        process_ = 0;
        return status;
    }

    const Crew& crew_;
    std::uint64_t number_;
    const std::uint64_t last_;
    pid_t process_ = 0;
    int pipe_ = -1;
    RealTime::time_point began_;
    std::string text_;
    TrialResult result_;
    bool hasResult_ = false;
};

void Crew::run(std::uint64_t first, std::uint64_t last, int jobs, const Receive& receive) const {
    constexpr std::uint64_t batch = 50;
    constexpr int lookEvery = 1'000;
    std::vector<std::unique_ptr<Child>> children;
    auto next = first;
    for (;;) {
        while (next <= last && children.size() < static_cast<std::size_t>(jobs)) {
            const auto end = std::min(last, next + batch - 1);
            children.push_back(std::make_unique<Child>(*this, next, end));
            next = end + 1;
        }
        if (children.empty()) return;
        std::vector<pollfd> waits;
        for (const auto& child : children) waits.push_back({child->pipe(), POLLIN, 0});
        poll(waits.data(), waits.size(), lookEvery);
        for (std::size_t place = 0; place < children.size(); ++place) {
            if (waits[place].revents != 0) {
                children[place]->read(receive);
            } else {
                children[place]->checkTime(receive);
            }
        }
        std::erase_if(children, [](const auto& child) { return child->isDone() && child->pipe() < 0; });
    }
}

TrialResult Crew::run(std::uint64_t number) const {
    TrialResult result;
    run(number, number, 1, [&result](std::uint64_t, const TrialResult& received) { result = received; });
    return result;
}

}  // namespace vantrel::simulation
