#include "tests/contracts/ContractServer.h"

#include <httplib.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>
#include <utility>

namespace vantrel::contracts {

namespace {

constexpr auto step = std::chrono::milliseconds(5);
// A type that the server does not compress: compression would hold pieces of the body back.
constexpr auto contentType = "application/octet-stream";

std::string lowerCased(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return text;
}

}  // namespace

class ContractServer::Listener {
  public:
    explicit Listener(Server server);
    ~Listener();

    int port() const { return port_; }

  private:
    void answer(const httplib::Request& request, httplib::Response& response);
    void wait(double seconds) const;

    const Server server_;
    httplib::Server http_;
    int port_ = 0;
    std::atomic<bool> stopping_ = false;
    std::thread thread_;
};

ContractServer::Listener::Listener(Server server) : server_(std::move(server)) {
    http_.set_keep_alive_timeout(1);
    http_.set_tcp_nodelay(true);
    const auto handler = [this](const httplib::Request& request, httplib::Response& response) {
        answer(request, response);
    };
    http_.Get(".*", handler);
    http_.Post(".*", handler);
    port_ = http_.bind_to_any_port("127.0.0.1");
    thread_ = std::thread([this] { http_.listen_after_bind(); });
    while (!http_.is_running()) std::this_thread::sleep_for(step);
}

ContractServer::Listener::~Listener() {
    stopping_ = true;
    http_.stop();
    thread_.join();
}

void ContractServer::Listener::wait(double seconds) const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    while (!stopping_ && std::chrono::steady_clock::now() < end) std::this_thread::sleep_for(step);
}

void ContractServer::Listener::answer(const httplib::Request& request, httplib::Response& response) {
    ServedRequest asked;
    asked.method = request.method;
    asked.target = request.target;
    for (const auto& [name, value] : request.headers) asked.headers[lowerCased(name)] = value;
    asked.body = request.body;
    const ServedAnswer given = server_(asked);

    wait(given.delay);
    response.status = given.status;
    for (const auto& [name, value] : given.headers) response.set_header(name, value);
    if (given.stalls) {
        response.set_content_provider(100, contentType, [this](std::size_t, std::size_t, httplib::DataSink&) {
            constexpr double untilStopped = 3600;
            wait(untilStopped);
            return false;
        });
    } else if (!given.body.empty()) {
        response.set_chunked_content_provider(contentType, [this, given](std::size_t, httplib::DataSink& sink) {
            for (const auto& [pause, bytes] : given.body) {
                wait(pause);
                if (!sink.write(bytes.data(), bytes.size())) return false;
            }
            sink.done();
            return true;
        });
    }
}

ContractServer::ContractServer(Server server) : listener_(std::make_unique<Listener>(std::move(server))) {}

ContractServer::~ContractServer() = default;

std::string ContractServer::address() const {
    return "http://127.0.0.1:" + std::to_string(listener_->port());
}

}  // namespace vantrel::contracts
