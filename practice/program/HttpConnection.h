#pragma once

#include <array>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/serializer.hpp>
#include <boost/beast/http/string_body.hpp>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "practice/PracticeServer.h"
#include "practice/program/ConnectionPlaces.h"
#include "practice/program/HttpLimits.h"
#include "practice/program/HttpMessages.h"

namespace vantrel::practice {

/// One connection with one exchange: reads the request, answers it, and sends the reply as it says. It keeps itself
/// alive through its pending operations and closes when there are none. Its handlers run one after another, on its
/// socket's executor.
class HttpConnection : public std::enable_shared_from_this<HttpConnection> {
  public:
    /// What the connection shares with the others. Must outlive it.
    struct Dependencies {
        PracticeServer& practice;
        const HttpLimits limits;
        ConnectionPlaces places;
        /// Called when a place has become free and somebody waits for one. Any thread.
        std::function<void()> placeIsFree;
    };

    HttpConnection(boost::asio::ip::tcp::socket socket, Dependencies& dependencies);
    ~HttpConnection();
    HttpConnection(const HttpConnection&) = delete;
    HttpConnection& operator=(const HttpConnection&) = delete;

    void start();

  private:
    using Error = boost::beast::error_code;

    void readHeader();
    void headerCame(Error error);
    void readBody();
    void bodyCame(Error error);
    /// Answers a request that the HTTP library rejected.
    void refuse(Error error);
    void answer(const PracticeRequest& request);
    void deliver();
    void sendHeaderAndStall();
    void send(HttpResponse response, bool withBody);
    void sent(Error error);
    /// Reads and drops what the client still sends, so that closing does not destroy a reply on its way.
    void readAway();
    /// Calls back once the client has gone, or has sent too much after its request.
    void watchClient(std::function<void()> clientHasGone);

    Dependencies& dependencies_;
    boost::beast::tcp_stream stream_;
    boost::asio::steady_timer delay_;
    boost::beast::flat_buffer buffer_;
    boost::beast::http::request_parser<boost::beast::http::string_body> parser_;
    std::uint64_t place_ = 0;
    bool isHead_ = false;
    bool isLeftUnread_ = false;
    PracticeReply reply_;
    HttpResponse response_;
    std::optional<boost::beast::http::response_serializer<boost::beast::http::string_body>> serializer_;
    std::array<char, 4096> surplus_{};
    std::size_t surplusBytes_ = 0;
};

}  // namespace vantrel::practice
