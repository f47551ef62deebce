#include "platform/linux/network/HTTPTransfer.h"

#include <QNetworkProxy>
#include <QUrl>
#include <algorithm>
#include <new>
#include <string_view>
#include <utility>
#include <variant>

#include "platform/linux/network/ContentDecoding.h"
#include "platform/linux/network/NetworkErrorText.h"
#include "platform/linux/network/SystemProxies.h"
#include "platform/portable/URLComponents.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr std::size_t longestBody = std::size_t{64} << 20;
constexpr std::size_t longestHeaders = std::size_t{256} << 10;
// Lower values are interim replies, such as 103 Early Hints, or no valid status.
constexpr long firstFinalStatus = 200;
// What may be answered to a challenge, after it. No request is sent with a password that nobody has asked for.
constexpr long authentication = CURLAUTH_BASIC | CURLAUTH_DIGEST;

bool sameName(std::string_view left, std::string_view right) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [lower](char a, char b) { return lower(a) == lower(b); });
}

bool names(const URLRequest& request, std::string_view field) {
    return std::any_of(request.headers.begin(), request.headers.end(),
                       [field](const auto& header) { return sameName(header.first, field); });
}

CurlList fieldsOf(const URLRequest& request) {
    CurlList fields;
    for (const auto& [name, value] : request.headers)
        append(fields, std::string(name).append(value.empty() ? ";" : ": ").append(value));
    // Without a value, the library leaves out what it would add to a body.
    for (const char* own : {"Content-Type", "Expect"}) {
        if (!names(request, own)) append(fields, std::string(own) + ":");
    }
    return fields;
}

std::string withoutUser(const std::string& authority) {
    const auto at = authority.rfind('@');
    return at == std::string::npos ? authority : authority.substr(at + 1);
}

// A line of a hundred kilobytes.
bool saysLineTooLong(CURLcode code) {
    // CURLE_TOO_LARGE, which only newer versions of the library have.
    constexpr int tooLarge = 100;
    return code == CURLE_OUT_OF_MEMORY || static_cast<int>(code) == tooLarge;
}

QNetworkProxy proxyFor(const URL& url) {
    const QUrl address(QString::fromStdString(url.absoluteString), QUrl::StrictMode);
    return SystemProxies().queryProxy(QNetworkProxyQuery(address)).front();
}

}  // namespace

HTTPTransfer::HTTPTransfer(CURLM* multi, const URLRequest& request, std::function<void()> heard)
    : multi_(multi),
      heard_(std::move(heard)),
      sentBody_(request.body.value_or("")),
      fields_(fieldsOf(request)),
      easy_(curl_easy_init()) {
    if (!easy_) throw std::bad_alloc();
    set(CURLOPT_NOSIGNAL, 1L);
    // A name server that does not answer is not waited for at the end.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    // On a connection that has been used, the library sends again what got no answer. No exchange is repeated.
    set(CURLOPT_FRESH_CONNECT, 1L);
    set(CURLOPT_FORBID_REUSE, 1L);
    setAddress(request.url);
    setMessage(request);
    setCallbacks();
    curl_multi_add_handle(multi_, easy_.get());
}

HTTPTransfer::~HTTPTransfer() {
    curl_multi_remove_handle(multi_, easy_.get());
}

// The library learns no more of the address than where the server is: it would tidy up the rest.
void HTTPTransfer::setAddress(const URL& url) {
    const URLComponents parts = URLComponents::split(url.absoluteString);
    const std::string scheme = vantrel::scheme(url).value_or("");
    const std::string authority = parts.authority.value_or("");
    std::string target = requestTarget(url);
    set(CURLOPT_URL, (scheme + "://" + authority + "/").c_str());
    set(CURLOPT_HTTPAUTH, authentication);

    const QNetworkProxy proxy = proxyFor(url);
    const bool isSocks = proxy.type() == QNetworkProxy::Socks5Proxy;
    const bool isDirect = proxy.type() == QNetworkProxy::NoProxy;
    // An empty text keeps the library from looking for a proxy itself.
    set(CURLOPT_PROXY, isDirect ? "" : proxy.hostName().toStdString().c_str());
    set(CURLOPT_NOPROXY, "");
    if (!isDirect) {
        set(CURLOPT_PROXYTYPE, static_cast<long>(isSocks ? CURLPROXY_SOCKS5_HOSTNAME : CURLPROXY_HTTP));
        set(CURLOPT_PROXYPORT, static_cast<long>(proxy.port()));
        set(CURLOPT_PROXYAUTH, authentication);
        set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
        if (!proxy.user().isEmpty()) {
            set(CURLOPT_PROXYUSERNAME, proxy.user().toStdString().c_str());
            set(CURLOPT_PROXYPASSWORD, proxy.password().toStdString().c_str());
        }
        if (!isSocks && scheme == "http") target.insert(0, scheme + "://" + withoutUser(authority));
    }
    set(CURLOPT_REQUEST_TARGET, target.c_str());
}

void HTTPTransfer::setMessage(const URLRequest& request) {
    if (request.method == "HEAD") {
        set(CURLOPT_NOBODY, 1L);
    } else if (!sentBody_.empty() || request.method == "POST") {
        set(CURLOPT_POST, 1L);
        set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(sentBody_.size()));
        set(CURLOPT_POSTFIELDS, sentBody_.c_str());
    }
    set(CURLOPT_CUSTOMREQUEST, request.method.c_str());
    set(CURLOPT_HTTPHEADER, fields_.get());
    set(CURLOPT_ACCEPT_ENCODING, "gzip, deflate");
    // The library would take a compressed body without its end for a whole one.
    set(CURLOPT_HTTP_CONTENT_DECODING, 0L);
}

void HTTPTransfer::setCallbacks() {
    set(CURLOPT_HEADERFUNCTION, &HTTPTransfer::takeHeader);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_WRITEFUNCTION, &HTTPTransfer::takeBody);
    set(CURLOPT_WRITEDATA, this);
    set(CURLOPT_XFERINFOFUNCTION, &HTTPTransfer::takeProgress);
    set(CURLOPT_XFERINFODATA, this);
    set(CURLOPT_NOPROGRESS, 0L);
}

std::size_t HTTPTransfer::takeHeader(char*, std::size_t size, std::size_t count, void* transfer) {
    auto& own = *static_cast<HTTPTransfer*>(transfer);
    own.headerBytes_ += size * count;
    // Any other number than that of the bytes ends the transfer.
    if (own.headerBytes_ > longestHeaders) return 0;
    own.heard_();
    return size * count;
}

std::size_t HTTPTransfer::takeBody(char* bytes, std::size_t size, std::size_t count, void* transfer) {
    auto& own = *static_cast<HTTPTransfer*>(transfer);
    const std::size_t length = size * count;
    own.bodyIsTooLarge_ = length > longestBody - own.body_.size();
    if (own.bodyIsTooLarge_) return 0;
    own.heard_();
    own.body_.append(bytes, length);
    return length;
}

int HTTPTransfer::takeProgress(void* transfer, curl_off_t, curl_off_t, curl_off_t, curl_off_t sent) {
    auto& own = *static_cast<HTTPTransfer*>(transfer);
    if (std::exchange(own.bytesSent_, sent) != sent) own.heard_();
    return 0;
}

HTTPTransfer::Result HTTPTransfer::result(CURLcode code) {
    long status = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    Result made;
    if (code != CURLE_OK) {
        made.reply.error = PlatformError{errorText(code)};
        made.headersNeverEnd = headerBytes_ > longestHeaders || saysLineTooLong(code);
    } else if (status < firstFinalStatus) {
        made.reply.error = PlatformError{std::string(unreadableReplyText)};
    } else {
        made.status = static_cast<int>(status);
        made.location = field("Location");
        made.reply = reply(made.status);
    }
    return made;
}

URLReply HTTPTransfer::reply(int status) {
    URLReply made;
    if (!body_.empty()) {
        auto data = decodedContent(field("Content-Encoding").value_or(""), std::move(body_), longestBody);
        if (const auto* error = std::get_if<DecodingError>(&data)) {
            const bool isTooLarge = *error == DecodingError::tooLarge;
            made.error = PlatformError{std::string(isTooLarge ? tooLargeText : unreadableReplyText)};
            return made;
        }
        auto& bytes = std::get<std::string>(data);
        if (!bytes.empty()) made.data = std::move(bytes);
    }
    made.statusCode = status;
    return made;
}

// Of the final reply: what interim ones and a proxy said is not asked for.
std::optional<std::string> HTTPTransfer::field(const char* name) const {
    constexpr int newestRequest = -1;
    curl_header* found = nullptr;
    if (curl_easy_header(easy_.get(), name, 0, CURLH_HEADER, newestRequest, &found) != CURLHE_OK) return std::nullopt;
    return found->value;
}

std::string HTTPTransfer::errorText(CURLcode code) const {
    if (bodyIsTooLarge_) return std::string(tooLargeText);
    // The proxy's answer to the request for a tunnel.
    constexpr long success = 200;
    long tunnel = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_HTTP_CONNECTCODE, &tunnel);
    if (tunnel != 0 && tunnel / 100 != success / 100) return std::string(notConnectedText);
    return networkErrorText(code);
}

}  // namespace vantrel::linuxdesktop
