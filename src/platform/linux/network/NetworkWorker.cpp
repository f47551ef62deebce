#include "platform/linux/network/NetworkWorker.h"

#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <new>
#include <optional>
#include <utility>

#include "platform/linux/network/NetworkErrorText.h"
#include "platform/linux/network/URLExchange.h"
#include "platform/linux/threads/SerialQueue.h"
#include "platform/portable/URLComponents.h"
#include "platform/portable/URLGrammar.h"

namespace vantrel::linuxdesktop {

namespace {

using namespace std::chrono_literals;

CurlMulti makeMulti() {
    // Never undone: other sessions may follow.
    static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
    CurlMulti made(started == CURLE_OK ? curl_multi_init() : nullptr);
    if (!made) throw std::bad_alloc();
    return made;
}

// The library sends no request whose head is longer than a mebibyte.
constexpr std::size_t longestAddress = 1'000'000;

bool canBeSent(const URL& url) {
    if (url.absoluteString.size() > longestAddress || !isURIReference(url.absoluteString)) return false;
    const auto authority = URLComponents::split(url.absoluteString).authority;
    return authority && !authority->empty() && !authority->ends_with('@');
}

}  // namespace

NetworkWorker::NetworkWorker(SerialQueue& completions)
    : completions_(completions), multi_(makeMulti()), thread_([this] { run(); }) {
    pthread_setname_np(thread_.native_handle(), "vantrel-network");
}

NetworkWorker::~NetworkWorker() {
    {
        const std::lock_guard guard(mutex_);
        stopping_ = true;
    }
    curl_multi_wakeup(multi_.get());
    thread_.join();
}

void NetworkWorker::start(URLRequest request, URLSession::Completion completion) {
    if (!hasSupportedScheme(request.url)) return deliver(completion, failure(unsupportedURLText));
    if (!canBeSent(request.url)) return deliver(completion, failure(badURLText));
    {
        const std::lock_guard guard(mutex_);
        starts_.push_back({std::move(request), std::move(completion)});
    }
    curl_multi_wakeup(multi_.get());
}

void NetworkWorker::run() {
    while (takeStarts()) {
        int running = 0;
        curl_multi_perform(multi_.get(), &running);
        takeEnds();
        giveUpIdle();
        wait();
    }
    for (const auto& exchange : exchanges_) deliver(exchange->completion(), failure(cancelledText));
    exchanges_.clear();
}

bool NetworkWorker::takeStarts() {
    std::vector<Start> starts;
    bool stopping = false;
    {
        const std::lock_guard guard(mutex_);
        starts.swap(starts_);
        stopping = stopping_;
    }
    for (Start& start : starts) {
        exchanges_.push_back(
            std::make_unique<URLExchange>(multi_.get(), std::move(start.request), std::move(start.completion)));
    }
    return !stopping;
}

void NetworkWorker::takeEnds() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
        if (message->msg != CURLMSG_DONE) continue;
        const CURL* const handle = message->easy_handle;
        // The message is gone with its transfer.
        const CURLcode code = message->data.result;
        const auto found = std::find_if(exchanges_.begin(), exchanges_.end(),
                                        [handle](const auto& exchange) { return exchange->uses(handle); });
        if (found == exchanges_.end()) continue;
        std::optional<URLReply> reply = (*found)->transferEnded(code);
        if (!reply) continue;
        deliver((*found)->completion(), *std::move(reply));
        exchanges_.erase(found);
    }
}

void NetworkWorker::giveUpIdle() {
    const auto now = URLExchange::Clock::now();
    std::erase_if(exchanges_, [&](const auto& exchange) {
        const auto deadline = exchange->deadline();
        if (!deadline || *deadline > now) return false;
        deliver(exchange->completion(), failure(timeOutText));
        return true;
    });
}

void NetworkWorker::wait() {
    std::chrono::nanoseconds most = 1h;
    const auto now = URLExchange::Clock::now();
    for (const auto& exchange : exchanges_) {
        if (const auto deadline = exchange->deadline())
            most = std::clamp<std::chrono::nanoseconds>(*deadline - now, 0ns, most);
    }
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(most);
    // Shorter if the library has something to do, and until the next call of start().
    curl_multi_poll(multi_.get(), nullptr, 0, static_cast<int>(milliseconds.count()), nullptr);
}

void NetworkWorker::deliver(const URLSession::Completion& completion, URLReply reply) {
    completions_.async([completion, reply = std::move(reply)]() mutable { completion(std::move(reply)); });
}

}  // namespace vantrel::linuxdesktop
