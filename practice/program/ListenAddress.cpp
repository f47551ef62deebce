#include "practice/program/ListenAddress.h"

#include <arpa/inet.h>
#include <netinet/in.h>

namespace vantrel::practice {

std::optional<ListenAddress> ListenAddress::parse(const std::string& text) {
    ListenAddress address;
    address.text_ = text;
    in_addr four{};
    in6_addr six{};
    if (inet_pton(AF_INET, text.c_str(), &four) == 1) {
        address.isLoopback_ = ntohl(four.s_addr) >> 24U == 127;
        return address;
    }
    if (inet_pton(AF_INET6, text.c_str(), &six) != 1) return std::nullopt;
    address.isLoopback_ = IN6_IS_ADDR_LOOPBACK(&six);
    return address;
}

std::string ListenAddress::url(int port) const {
    const bool isSix = text_.find(':') != std::string::npos;
    return "http://" + (isSix ? "[" + text_ + "]" : text_) + ":" + std::to_string(port);
}

}  // namespace vantrel::practice
