#include "OneAnswerServer.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <utility>

namespace vantrel::linuxdesktop {

OneAnswerServer::OneAnswerServer(std::string answer)
    : answer_(std::move(answer)), listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
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
    shutdown(listener_, SHUT_RDWR);
    thread_.join();
    close(listener_);
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
        if (!request.empty()) ++requests_;
        send(connection, answer_.data(), answer_.size(), MSG_NOSIGNAL);
        shutdown(connection, SHUT_WR);
        // Until the client has hung up too: a reset would take the answer along.
        while (recv(connection, buffer.data(), buffer.size(), 0) > 0) {
        }
        close(connection);
    }
}

}  // namespace vantrel::linuxdesktop
