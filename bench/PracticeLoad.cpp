// practice-load [HEARTBEATS [CLIENTS]]: sends a day of class to the practice server as fast as the server accepts it,
// over loopback. Ends after HEARTBEATS (by default 384,000: 200 participants, 8 hours, one every 15 seconds) or after
// two minutes.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t participants = 200;
constexpr std::size_t mostHeartbeats = 2000000;
constexpr std::size_t mostClients = 64;
constexpr std::chrono::seconds longest{120};
/// One heartbeat in this many reports a violation.
constexpr std::size_t violationEvery = 20;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// The server's program. It ends when its standard input closes, so also if this program crashes.
class Server {
  public:
    Server() {
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        if (pipe(in.data()) != 0 || pipe(out.data()) != 0) std::abort();
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
        for (const int end : {in[0], in[1], out[0], out[1]}) posix_spawn_file_actions_addclose(&actions, end);
        std::array<std::string, 6> words{VANTREL_PRACTICE_PROGRAM, "--port", "0", "--exit-with-stdin", "--for", "300"};
        std::vector<char*> arguments;
        for (std::string& word : words) arguments.push_back(word.data());
        arguments.push_back(nullptr);
        if (posix_spawn(&process_, VANTREL_PRACTICE_PROGRAM, &actions, nullptr, arguments.data(), environ) != 0) {
            std::abort();
        }
        posix_spawn_file_actions_destroy(&actions);
        close(in[0]);
        close(out[1]);
        input_ = in[1];
        output_ = out[0];
    }

    ~Server() {
        close(input_);
        close(output_);
        waitpid(process_, nullptr, 0);
    }

    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// From its first line. 0 if it does not start.
    int port() const {
        std::string line;
        for (char byte = 0; byte != '\n' && read(output_, &byte, 1) == 1;) line.push_back(byte);
        return static_cast<int>(
            std::strtol(line.c_str() + std::min(line.rfind(':'), line.size() - 1) + 1, nullptr, 10));
    }

    /// In KiB, by the kernel's name for it: VmRSS is current, VmHWM the maximum.
    long memory(const std::string& name) const {
        std::ifstream status("/proc/" + std::to_string(process_) + "/status");
        for (std::string line; std::getline(status, line);) {
            if (line.rfind(name + ":", 0) == 0) return std::strtol(line.c_str() + name.size() + 1, nullptr, 10);
        }
        return 0;
    }

    /// Seconds of processor time so far.
    double processorTime() const {
        std::ifstream stat("/proc/" + std::to_string(process_) + "/stat");
        std::string field;
        long ticks = 0;
        for (int number = 1; number <= 15 && stat >> field; ++number) {
            if (number >= 14) ticks += std::strtol(field.c_str(), nullptr, 10);
        }
        return static_cast<double>(ticks) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }

  private:
    pid_t process_ = 0;
    int input_ = -1;
    int output_ = -1;
};

/// One exchange on a connection of its own, like the client's. Empty if it failed.
std::string exchange(int port, const std::string& request) {
    const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    std::string reply;
    if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        send(connection, request.data(), request.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(request.size())) {
        std::array<char, 16384> bytes{};
        for (ssize_t count = 1; count > 0;) {
            count = recv(connection, bytes.data(), bytes.size(), 0);
            if (count > 0) reply.append(bytes.data(), static_cast<std::size_t>(count));
        }
    }
    close(connection);
    return reply;
}

std::string post(const std::string& path, const std::string& body) {
    return "POST " + path +
           " HTTP/1.1\r\nHost: 127.0.0.1\r\nUser-Agent: Vantrel/2.0\r\nAccept: */*\r\nAccept-Language: it-IT\r\n"
           "Accept-Encoding: gzip, deflate\r\nContent-Type: application/json\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string heartbeat(const std::string& token, bool withViolation) {
    const std::string violation = R"({"type":"KEY_BLOCKED","detail":"Cmd+Tab","at":"2026-03-02T08:00:11Z"})";
    return post("/api/heartbeat",
                R"({"clientVersion":"2.0-macOS","disconnecting":false,"lockdownActive":true,"meetConnected":true,)"
                R"("platform":"darwin","sessionCode":"prova","timestamp":"2026-03-02T08:00:11Z","userToken":")" +
                    token + R"(","violations":[)" + (withViolation ? violation : "") + "]}");
}

/// The tokens of all who joined.
std::vector<std::string> join(int port) {
    std::vector<std::string> tokens;
    for (std::size_t number = 1; number <= participants; ++number) {
        const std::string name = "Partecipante " + std::to_string(number);
        const std::string body = R"({"clientVersion":"2.0-macOS","email":"p)" + std::to_string(number) +
                                 R"(@example.org","fullName":")" + name + R"(","platform":"darwin"})";
        const std::string reply = exchange(port, post("/api/sessions/PROVA/join", body));
        const std::string key = R"("userToken":")";
        const std::size_t start = reply.find(key);
        if (start == std::string::npos) return {};
        const std::size_t first = start + key.size();
        tokens.push_back(reply.substr(first, reply.find('"', first) - first));
    }
    return tokens;
}

struct Outcome {
    std::size_t failures = 0;
    double seconds = 0;
    /// Microseconds, ascending.
    std::vector<std::uint32_t> times;
    /// Milliseconds of the trainer's page's slowest request.
    double slowestLook = 0;
};

/// Requests the trainer's page's state once a second until it is over. Returns the slowest request in milliseconds.
double slowestLookUntil(const std::atomic<bool>& isOver, int port, std::atomic<std::size_t>& failures) {
    double slowest = 0;
    while (!isOver) {
        const auto begin = Clock::now();
        const std::string state = exchange(port, "GET /trainer/state HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
        if (state.find(R"("sessions":)") == std::string::npos) ++failures;
        slowest = std::max(slowest, secondsSince(begin) * 1000);
        for (int tenth = 0; tenth < 10 && !isOver; ++tenth) std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return slowest;
}

Outcome send(int port, const std::vector<std::string>& tokens, std::size_t heartbeats, std::size_t clients) {
    Outcome outcome;
    std::atomic<std::size_t> next{0};
    std::atomic<std::size_t> failures{0};
    std::atomic<bool> isOver{false};
    std::vector<std::vector<std::uint32_t>> times(clients);
    std::vector<std::thread> threads;
    const auto start = Clock::now();
    for (std::size_t client = 0; client < clients; ++client) {
        threads.emplace_back([&, client] {
            for (std::size_t number = next++; number < heartbeats && Clock::now() - start < longest; number = next++) {
                const std::string request = heartbeat(tokens[number % tokens.size()], number % violationEvery == 0);
                const auto begin = Clock::now();
                const bool isRight = exchange(port, request).find(R"({"sessionEnded":false})") != std::string::npos;
                times[client].push_back(static_cast<std::uint32_t>(secondsSince(begin) * 1e6));
                if (!isRight) ++failures;
            }
        });
    }
    std::thread trainer([&] { outcome.slowestLook = slowestLookUntil(isOver, port, failures); });
    for (std::thread& thread : threads) thread.join();
    outcome.seconds = secondsSince(start);
    isOver = true;
    trainer.join();
    outcome.failures = failures;
    for (const auto& some : times) outcome.times.insert(outcome.times.end(), some.begin(), some.end());
    std::sort(outcome.times.begin(), outcome.times.end());
    return outcome;
}

void report(const Outcome& outcome, double serverTime, double ownTime) {
    const auto at = [&](double share) {
        const auto index = static_cast<std::size_t>(share * static_cast<double>(outcome.times.size() - 1));
        return outcome.times[index];
    };
    const auto count = static_cast<double>(outcome.times.size());
    std::cout << outcome.times.size() << " heartbeats of " << participants << " participants in " << outcome.seconds
              << " s: " << static_cast<long>(count / outcome.seconds) << " a second, " << outcome.failures
              << " failures\n"
              << "a reply after " << at(0.5) << " us (median), " << at(0.99) << " us (99 of 100), " << at(1)
              << " us (slowest); the trainer's slowest look " << outcome.slowestLook << " ms\n"
              << "processor time a heartbeat: server " << serverTime / count * 1e6 << " us, this program "
              << ownTime / count * 1e6 << " us\n";
}

double ownProcessorTime() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

}  // namespace

int main(int argc, char** argv) {
    const auto argument = [&](int index, std::size_t otherwise, std::size_t most) {
        const std::size_t value = argc > index ? std::strtoul(argv[index], nullptr, 10) : otherwise;
        return std::clamp<std::size_t>(value, 1, most);
    };
    const std::size_t heartbeats = argument(1, 384000, mostHeartbeats);
    const std::size_t clients = argument(2, 16, mostClients);

    const Server server;
    const int port = server.port();
    const std::vector<std::string> tokens = port > 0 ? join(port) : std::vector<std::string>();
    if (tokens.empty()) {
        std::cerr << "practice-load: the practice server does not answer\n";
        return EXIT_FAILURE;
    }
    const long before = server.memory("VmRSS");
    const double serverBefore = server.processorTime();
    const double ownBefore = ownProcessorTime();
    const Outcome outcome = send(port, tokens, heartbeats, clients);
    report(outcome, server.processorTime() - serverBefore, ownProcessorTime() - ownBefore);
    std::cout << "the server's memory: " << before / 1024 << " MiB before, " << server.memory("VmRSS") / 1024
              << " MiB after, " << server.memory("VmHWM") / 1024 << " MiB at most\n";
    return outcome.failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
