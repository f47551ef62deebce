#include "practice/program/HttpFront.h"

#include <algorithm>
#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>
#include <boost/beast/core/error.hpp>
#include <chrono>
#include <thread>
#include <utility>
#include <vector>

#include "practice/program/HttpConnection.h"

namespace vantrel::practice {

namespace {

namespace asio = boost::asio;
using Tcp = asio::ip::tcp;
using Error = boost::beast::error_code;

/// Several even on one processor, so that short replies do not wait for a long one.
constexpr unsigned int fewestThreads = 4;
/// The delay before the next try if the system has no descriptor left.
constexpr std::chrono::milliseconds untilNextTry{50};

}  // namespace

class HttpFront::Listener {
  public:
    Listener(PracticeServer& practice, HttpLimits limits)
        : dependencies_{practice, limits, ConnectionPlaces(limits.connections), [this] { acceptAgain(); }} {}

    ~Listener() {
        isEnding_ = true;
        io_.stop();
        for (std::thread& thread : threads_) thread.join();
    }

    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::optional<int> listen(const std::string& address, int port) {
        Error error;
        const Tcp::endpoint endpoint(asio::ip::make_address(address, error), static_cast<unsigned short>(port));
        if (error) return std::nullopt;
        (void)acceptor_.open(endpoint.protocol(), error);
        if (!error) (void)acceptor_.set_option(asio::socket_base::reuse_address(true), error);
        if (!error) (void)acceptor_.bind(endpoint, error);
        if (!error) (void)acceptor_.listen(asio::socket_base::max_listen_connections, error);
        if (error) return std::nullopt;
        accept();
        const unsigned int count = std::max(fewestThreads, std::thread::hardware_concurrency());
        for (unsigned int number = 0; number < count; ++number) threads_.emplace_back([this] { io_.run(); });
        return acceptor_.local_endpoint().port();
    }

  private:
    void accept() {
        // Each connection has its own strand, and so has the acceptor: none of them needs a lock.
        acceptor_.async_accept(asio::make_strand(io_), [this](Error error, Tcp::socket socket) {
            if (error) return tryAgainLater();
            std::make_shared<HttpConnection>(std::move(socket), dependencies_)->start();
            if (dependencies_.places.mayAccept()) accept();
        });
    }

    void tryAgainLater() {
        dependencies_.places.makePlace();
        pause_.expires_after(untilNextTry);
        pause_.async_wait([this](Error error) {
            if (!error) accept();
        });
    }

    void acceptAgain() {
        if (isEnding_) return;
        asio::post(acceptor_.get_executor(), [this] { accept(); });
    }

    // Used by the connections, which are destroyed with the context.
    HttpConnection::Dependencies dependencies_;
    std::atomic<bool> isEnding_{false};
    asio::io_context io_;
    Tcp::acceptor acceptor_{asio::make_strand(io_)};
    asio::steady_timer pause_{acceptor_.get_executor()};
    std::vector<std::thread> threads_;
};

HttpFront::HttpFront(PracticeServer& practice, HttpLimits limits)
    : listener_(std::make_unique<Listener>(practice, limits)) {}

HttpFront::~HttpFront() = default;

std::optional<int> HttpFront::listen(const std::string& address, int port) {
    return listener_->listen(address, port);
}

}  // namespace vantrel::practice
