#include "practice/program/ClientConnection.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <system_error>
#include <vector>

#include "practice/program/StopSignal.h"

namespace vantrel::practice {

namespace {

#ifdef POLLRDHUP
constexpr short clientLeft = POLLRDHUP;
#else
constexpr short clientLeft = 0;  // POLLHUP is always told.
#endif

struct Connection {
    int descriptor = -1;
    in_addr_t clientAddress = 0;
    int clientPort = 0;
};

std::vector<Connection> connectionsTo(int localPort) {
    std::vector<Connection> connections;
    std::error_code error;
    std::filesystem::directory_iterator entry("/dev/fd", error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        Connection connection;
        const auto parsed = std::from_chars(name.data(), name.data() + name.size(), connection.descriptor);
        if (parsed.ec != std::errc()) continue;

        sockaddr_in here{};
        sockaddr_in client{};
        socklen_t length = sizeof here;
        if (getsockname(connection.descriptor, reinterpret_cast<sockaddr*>(&here), &length) != 0) continue;
        if (here.sin_family != AF_INET || ntohs(here.sin_port) != localPort) continue;
        length = sizeof client;
        if (getpeername(connection.descriptor, reinterpret_cast<sockaddr*>(&client), &length) != 0) continue;
        connection.clientAddress = client.sin_addr.s_addr;
        connection.clientPort = ntohs(client.sin_port);
        connections.push_back(connection);
    }
    return connections;
}

}  // namespace

std::optional<ClientConnection> ClientConnection::find(const std::string& address, int port, int localPort) {
    in_addr wanted{};
    if (inet_pton(AF_INET, address.c_str(), &wanted) != 1) return std::nullopt;
    for (const Connection& connection : connectionsTo(localPort)) {
        if (connection.clientAddress == wanted.s_addr && connection.clientPort == port) {
            return ClientConnection(connection.descriptor);
        }
    }
    return std::nullopt;
}

void ClientConnection::endAll(int localPort) {
    for (const Connection& connection : connectionsTo(localPort)) ClientConnection(connection.descriptor).end();
}

ClientConnection::Wait ClientConnection::wait(std::optional<double> seconds, const StopSignal& stop) const {
    using Clock = std::chrono::steady_clock;
    const auto deadline =
        Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds.value_or(0)));
    while (true) {
        int milliseconds = -1;
        if (seconds) {
            const double left = std::chrono::duration<double, std::milli>(deadline - Clock::now()).count();
            milliseconds = static_cast<int>(std::ceil(std::max(left, 0.0)));
        }
        std::array<pollfd, 2> entries{{{descriptor_, clientLeft, 0}, {stop.descriptor(), POLLIN, 0}}};
        const int ready = poll(entries.data(), entries.size(), milliseconds);
        if (entries[1].revents != 0) return Wait::stopped;
        if (entries[0].revents != 0) return Wait::clientGone;
        if (ready == 0 && Clock::now() >= deadline) return Wait::timePassed;
    }
}

void ClientConnection::end() const {
    shutdown(descriptor_, SHUT_RDWR);
}

}  // namespace vantrel::practice
