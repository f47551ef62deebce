#include "RawConnection.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

namespace vantrel::practice::test {

RawConnection::RawConnection(int port) : socket_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) close();
}

RawConnection::~RawConnection() {
    close();
}

RawConnection::RawConnection(RawConnection&& other) noexcept : socket_(std::exchange(other.socket_, -1)) {}

bool RawConnection::send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::string RawConnection::readAll() const {
    std::string all;
    std::array<char, 4096> bytes{};
    for (ssize_t count = 1; count > 0;) {
        count = recv(socket_, bytes.data(), bytes.size(), 0);
        if (count > 0) all.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return all;
}

bool RawConnection::isOpen() const {
    char byte = 0;
    const ssize_t count = recv(socket_, &byte, 1, MSG_PEEK | MSG_DONTWAIT);
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK));
}

void RawConnection::close() {
    if (socket_ >= 0) ::close(socket_);
    socket_ = -1;
}

}  // namespace vantrel::practice::test
