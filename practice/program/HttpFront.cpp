#include "practice/program/HttpFront.h"

#include <httplib.h>
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <thread>
#include <utility>

#include "practice/program/ClientConnection.h"
#include "practice/program/StopSignal.h"

namespace vantrel::practice {

namespace {

constexpr std::size_t exchangesAtOnce = 32;
constexpr int waitingClients = 128;
constexpr const char* anyPath = R"([\s\S]*)";

/// What the library adds to the headers by itself.
bool isAddedByLibrary(const std::string& name) {
    return name == "REMOTE_ADDR" || name == "REMOTE_PORT" || name == "LOCAL_ADDR" || name == "LOCAL_PORT";
}

}  // namespace

class HttpFront::Library {
  public:
    Library(PracticeServer& practice, const StopSignal& stop) : practice_(practice), stop_(stop) {
        server_.new_task_queue = [] { return std::make_unique<httplib::ThreadPool>(exchangesAtOnce).release(); };
        // The default also sets SO_REUSEPORT, with which a second server would take the same port without a word.
        server_.set_socket_options([this](socket_t socket) {
            socket_ = socket;
            const int yes = 1;
            setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        });
        // One exchange a connection: no idle connection holds a thread, and a client that finds its connection dropped
        // can tell that from an old one that had been closed.
        server_.set_keep_alive_max_count(1);
        server_.set_read_timeout(30);
        server_.set_write_timeout(60);

        // A request that announces no body has none; the library would wait for one after a POST.
        server_.set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
            if (request.has_header("Content-Length") || request.has_header("Transfer-Encoding")) {
                return httplib::Server::HandlerResponse::Unhandled;
            }
            answer(request, {}, response);
            return httplib::Server::HandlerResponse::Handled;
        });
        const auto withBody = [this](const httplib::Request& request, httplib::Response& response,
                                     const httplib::ContentReader& read) {
            std::string body;
            const bool whole = read([&](const char* data, std::size_t length) {
                body.append(data, length);
                return true;
            });
            if (whole) {
                answer(request, std::move(body), response);
            } else {
                response.status = 400;
            }
        };
        const auto withoutBody = [this](const httplib::Request& request, httplib::Response& response) {
            answer(request, {}, response);
        };
        server_.Get(anyPath, withoutBody);
        server_.Options(anyPath, withoutBody);
        server_.Post(anyPath, withBody);
        server_.Put(anyPath, withBody);
        server_.Patch(anyPath, withBody);
        server_.Delete(anyPath, withBody);
    }

    std::optional<int> listen(int port) {
        constexpr const char* host = "127.0.0.1";
        port_ = port == 0 ? server_.bind_to_any_port(host) : (server_.bind_to_port(host, port) ? port : -1);
        if (port_ <= 0) return std::nullopt;
        // The library listens with room for five; a sixth client at the same moment would try again a second later.
        ::listen(socket_, waitingClients);
        thread_ = std::thread([this] { server_.listen_after_bind(); });
        // The library forgets a stop that comes before this.
        while (!server_.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return port_;
    }

    void end() {
        if (!thread_.joinable()) return;
        server_.stop();
        ClientConnection::endAll(port_);
        thread_.join();
    }

  private:
    void answer(const httplib::Request& received, std::string body, httplib::Response& response) {
        PracticeRequest request{received.method, received.target, {}, std::move(body)};
        for (const auto& [name, value] : received.headers) {
            if (!isAddedByLibrary(name)) request.headers.emplace_back(name, value);
        }
        PracticeReply reply = practice_.handle(request);
        if (reply.delaySeconds <= 0 && !reply.dropConnection && !reply.stallAfterHeaders) {
            write(std::move(reply), response);
            return;
        }

        const auto client = ClientConnection::find(received.remote_addr, received.remote_port, port_);
        if (!client) {
            response.status = 500;
            return;
        }
        if (reply.delaySeconds > 0 && client->wait(reply.delaySeconds, stop_) != ClientConnection::Wait::timePassed) {
            client->end();
            return;
        }
        if (reply.dropConnection) {
            client->end();
            return;
        }
        if (reply.stallAfterHeaders) {
            writeHeaders(reply, response);
            response.set_content_provider(std::max<std::size_t>(reply.body.size(), 1), reply.contentType,
                                          [this, client = *client](std::size_t, std::size_t, httplib::DataSink&) {
                                              client.wait(std::nullopt, stop_);
                                              return false;
                                          });
            return;
        }
        // Before the bytes: whoever has read the reply and then asks must find it delivered.
        practice_.noteDelivery(reply.exchange, true);
        write(std::move(reply), response);
    }

    static void writeHeaders(const PracticeReply& reply, httplib::Response& response) {
        response.status = reply.status;
        for (const auto& [name, value] : reply.headers) response.set_header(name, value);
    }

    void write(PracticeReply reply, httplib::Response& response) {
        writeHeaders(reply, response);
        if (reply.body.empty()) {
            response.set_header("Content-Type", reply.contentType);
            return;
        }
        // A provider and not a plain body: the library would compress that where the client allows it.
        const auto body = std::make_shared<const std::string>(std::move(reply.body));
        const auto noteFailure = [this, exchange = reply.exchange](bool written) {
            if (!written) practice_.noteDelivery(exchange, false);
        };
        response.set_content_provider(
            body->size(), reply.contentType,
            [body](std::size_t offset, std::size_t length, httplib::DataSink& sink) {
                constexpr std::size_t portion = std::size_t{256} * 1024;
                return sink.write(body->data() + offset, std::min(length, portion));
            },
            noteFailure);
    }

    PracticeServer& practice_;
    const StopSignal& stop_;
    httplib::Server server_;
    std::thread thread_;
    socket_t socket_ = -1;
    int port_ = -1;
};

HttpFront::HttpFront(PracticeServer& practice, const StopSignal& stop)
    : library_(std::make_unique<Library>(practice, stop)) {}

HttpFront::~HttpFront() {
    end();
}

std::optional<int> HttpFront::listen(int port) {
    return library_->listen(port);
}

void HttpFront::end() {
    library_->end();
}

}  // namespace vantrel::practice
