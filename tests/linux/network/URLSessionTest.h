#pragma once

#include <gtest/gtest.h>
#include <httplib.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "platform/linux/network/LinuxURLSession.h"

namespace vantrel::linuxdesktop {

/// A URL session and a real server on the loopback address.
class URLSessionTest : public testing::Test {
  protected:
    void SetUp() override {
        server.set_keep_alive_timeout(1);
        port = server.bind_to_any_port("127.0.0.1");
        thread = std::thread([this] { server.listen_after_bind(); });
    }

    void TearDown() override {
        while (!server.is_running()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
        server.stop();
        thread.join();
    }

    std::string address(const std::string& path) const { return "http://127.0.0.1:" + std::to_string(port) + path; }

    static URLRequest request(const std::string& address, const std::string& method = "GET") {
        URLRequest made;
        made.url = URL{address};
        made.method = method;
        made.timeoutInterval = 5;
        return made;
    }

    std::future<URLReply> send(const URLRequest& request) {
        auto promise = std::make_shared<std::promise<URLReply>>();
        // A second completion would end the process: a promise accepts one value only.
        session.dataTask(request, [promise](URLReply reply) { promise->set_value(std::move(reply)); });
        return promise->get_future();
    }

    URLReply reply(const URLRequest& request) { return send(request).get(); }

    static std::string errorOf(const URLReply& reply) {
        EXPECT_EQ(reply.statusCode, std::nullopt);
        EXPECT_EQ(reply.data, std::nullopt);
        return reply.error ? reply.error->localizedDescription : "(none)";
    }

    httplib::Server server;
    int port = 0;
    std::thread thread;
    LinuxURLSession session;
};

}  // namespace vantrel::linuxdesktop
