#include "tests/linux/network/OneAnswerServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace vantrel::linuxdesktop {

OneAnswerServer::OneAnswerServer(std::string answer, std::string endless)
    : OneAnswerServer(std::move(answer), std::move(endless), Afterwards::hangsUp) {}

OneAnswerServer::OneAnswerServer(std::string answer, Afterwards afterwards)
    : OneAnswerServer(std::move(answer), {}, afterwards) {}

OneAnswerServer::OneAnswerServer(std::string answer, std::string endless, Afterwards afterwards)
    : answer_(std::move(answer)),
      endless_(std::move(endless)),
      afterwards_(afterwards),
      listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    auto* address = reinterpret_cast<sockaddr*>(&place);
    socklen_t size = sizeof place;
    bind(listener_, address, size);
    listen(listener_, 16);
    getsockname(listener_, address, &size);
    port_ = ntohs(place.sin_port);
    thread_ = std::thread([this] { serve(); });
}

OneAnswerServer::~OneAnswerServer() {
    stopping_ = true;
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
}

std::string OneAnswerServer::newestRequest() const {
    const std::lock_guard lock(mutex_);
    return newest_;
}

void OneAnswerServer::serve() {
    for (;;) {
        const int connection = accept(listener_, nullptr, nullptr);
        if (connection < 0) return;
        std::string request;
        std::array<char, 4096> buffer;
        ssize_t count = 0;
        while (request.find("\r\n\r\n") == std::string::npos &&
               (count = recv(connection, buffer.data(), buffer.size(), 0)) > 0) {
            request.append(buffer.data(), static_cast<std::size_t>(count));
        }
        if (!request.empty()) {
            ++requests_;
            const std::lock_guard lock(mutex_);
            newest_ = request;
        }
        send(connection, answer_.data(), answer_.size(), MSG_NOSIGNAL);
        if (!endless_.empty()) sendEndless(connection);
        if (afterwards_ == Afterwards::hangsUp) shutdown(connection, SHUT_WR);
        // Until the client has hung up too: a reset would also discard the answer.
        while (!stopping_ && recv(connection, buffer.data(), buffer.size(), 0) > 0) {
        }
        close(connection);
    }
}

void OneAnswerServer::sendEndless(int connection) {
    // So that the server can stop even if the client reads nothing.
    const timeval patience{0, 100'000};
    setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof patience);
    while (!stopping_) {
        const ssize_t count = send(connection, endless_.data(), endless_.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK) return;
    }
}

}  // namespace vantrel::linuxdesktop
