#include "practice/program/HttpConnection.h"

#include <algorithm>
#include <boost/asio/post.hpp>
#include <boost/beast/core/bind_handler.hpp>
#include <boost/beast/core/error.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/rfc7230.hpp>
#include <boost/beast/http/write.hpp>
#include <chrono>
#include <utility>

#include "practice/messages/JsonReply.h"

namespace vantrel::practice {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

/// How long the client's data is read and dropped after a refusal.
constexpr std::chrono::seconds readingAway{5};
/// How much a client may send after its request before it counts as gone.
constexpr std::size_t surplusAllowed = std::size_t{64} * 1024;

bool expectsContinue(const HttpRequest& request) {
    return beast::iequals(request[http::field::expect], "100-continue");
}

}  // namespace

HttpConnection::HttpConnection(asio::ip::tcp::socket socket, Dependencies& dependencies)
    : dependencies_(dependencies), stream_(std::move(socket)), delay_(stream_.get_executor()) {
    parser_.header_limit(static_cast<std::uint32_t>(dependencies.limits.headerBytes));
    parser_.body_limit(PracticeRequest::largestBody);
}

HttpConnection::~HttpConnection() {
    if (place_ != 0 && dependencies_.places.over(place_)) dependencies_.placeIsFree();
}

void HttpConnection::start() {
    place_ = dependencies_.places.begin([weak = weak_from_this()] {
        const auto self = weak.lock();
        if (!self) return;
        asio::post(self->stream_.get_executor(), [self] { self->stream_.close(); });
    });
    // The stream is used on its own executor only; this is the one of whoever accepts.
    asio::post(stream_.get_executor(), [self = shared_from_this()] { self->readHeader(); });
}

void HttpConnection::readHeader() {
    // One deadline for the whole request: a client gains nothing by sending a byte now and then.
    stream_.expires_after(dependencies_.limits.requestTime);
    http::async_read_header(stream_, buffer_, parser_,
                            [self = shared_from_this()](Error error, std::size_t) { self->headerCame(error); });
}

void HttpConnection::headerCame(Error error) {
    if (error) return refuse(error);
    if (!expectsContinue(parser_.get())) return readBody();
    response_.version(11);
    response_.result(http::status::continue_);
    serializer_.emplace(response_);
    http::async_write_header(stream_, *serializer_, [self = shared_from_this()](Error failure, std::size_t) {
        if (!failure) self->readBody();
    });
}

void HttpConnection::readBody() {
    http::async_read(stream_, buffer_, parser_,
                     [self = shared_from_this()](Error error, std::size_t) { self->bodyCame(error); });
}

void HttpConnection::bodyCame(Error error) {
    if (error) return refuse(error);
    dependencies_.places.requestHasCome(place_);
    answer(practiceRequest(parser_.release()));
}

void HttpConnection::refuse(Error error) {
    static const auto& httpErrors = http::make_error_code(http::error::bad_method).category();
    const bool hasEnded = error == http::error::end_of_stream || error == http::error::partial_message;
    if (error.category() != httpErrors || hasEnded) return;

    dependencies_.places.requestHasCome(place_);
    isLeftUnread_ = true;
    if (error == http::error::body_limit) {
        PracticeRequest request = practiceRequest(parser_.release());
        request.body.clear();
        request.bodyIsTooLarge = true;
        return answer(request);
    }
    const bool isTooLong = error == http::error::header_limit;
    send(httpResponse(isTooLong ? errorReply(431, "headers_too_large") : errorReply(400, "not_http")), true);
}

void HttpConnection::answer(const PracticeRequest& request) {
    isHead_ = request.method == "HEAD";
    reply_ = dependencies_.practice.handle(request);
    if (reply_.delaySeconds <= 0) return deliver();

    delay_.expires_after(std::chrono::duration_cast<std::chrono::steady_clock::duration>(
        std::chrono::duration<double>(reply_.delaySeconds)));
    delay_.async_wait([self = shared_from_this()](Error error) {
        if (error) return;
        Error ignored;
        (void)self->stream_.socket().cancel(ignored);
        self->deliver();
    });
    watchClient([this] { delay_.cancel(); });
}

void HttpConnection::deliver() {
    if (reply_.dropConnection) return;
    if (reply_.stallAfterHeaders) return sendHeaderAndStall();
    // Before the bytes are sent: a client that has read the reply and then asks must find it delivered.
    if (reply_.delaySeconds > 0) dependencies_.practice.noteDelivery(reply_.exchange, true);
    send(httpResponse(std::move(reply_)), !isHead_);
}

void HttpConnection::sendHeaderAndStall() {
    if (reply_.body.empty()) reply_.body = " ";
    response_ = httpResponse(std::move(reply_));
    serializer_.emplace(response_);
    stream_.expires_after(dependencies_.limits.replyTime);
    http::async_write_header(stream_, *serializer_, [self = shared_from_this()](Error error, std::size_t) {
        if (!error) self->watchClient([] {});
    });
}

void HttpConnection::send(HttpResponse response, bool withBody) {
    response_ = std::move(response);
    auto& serializer = serializer_.emplace(response_);
    stream_.expires_after(dependencies_.limits.replyTime);
    const auto done = [self = shared_from_this()](Error error, std::size_t) { self->sent(error); };
    if (withBody) {
        http::async_write(stream_, serializer, done);
    } else {
        http::async_write_header(stream_, serializer, done);
    }
}

void HttpConnection::sent(Error error) {
    if (error) return dependencies_.practice.noteDelivery(reply_.exchange, false);
    if (!isLeftUnread_) return;
    Error ignored;
    (void)stream_.socket().shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
    stream_.expires_after(readingAway);
    readAway();
}

void HttpConnection::readAway() {
    stream_.async_read_some(asio::buffer(surplus_), [self = shared_from_this()](Error error, std::size_t) {
        if (!error) self->readAway();
    });
}

void HttpConnection::watchClient(std::function<void()> clientHasGone) {
    stream_.socket().async_read_some(
        asio::buffer(surplus_),
        [self = shared_from_this(), clientHasGone = std::move(clientHasGone)](Error error, std::size_t count) {
            if (error == asio::error::operation_aborted) return;
            self->surplusBytes_ += count;
            if (error || self->surplusBytes_ > surplusAllowed) return clientHasGone();
            self->watchClient(clientHasGone);
        });
}

}  // namespace vantrel::practice
