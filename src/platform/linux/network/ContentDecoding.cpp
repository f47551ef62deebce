#include "platform/linux/network/ContentDecoding.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace vantrel::linuxdesktop {

namespace {

// How zlib is told what is around the compressed bytes.
constexpr int gzipHeader = MAX_WBITS + 16;
constexpr int zlibHeader = MAX_WBITS;
constexpr int noHeader = -MAX_WBITS;

class Inflation {
  public:
    Inflation(int window, std::string_view bytes) : started_(inflateInit2(&stream_, window) == Z_OK) {
        // zlib does not write there.
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
        stream_.avail_in = static_cast<uInt>(bytes.size());
    }
    ~Inflation() {
        if (started_) inflateEnd(&stream_);
    }
    Inflation(const Inflation&) = delete;
    Inflation& operator=(const Inflation&) = delete;

    /// Appends up to the end of the compressed bytes.
    std::optional<DecodingError> appendTo(std::string& result, std::size_t most) {
        std::array<char, 65536> piece;
        int state = started_ ? Z_OK : Z_STREAM_ERROR;
        while (state == Z_OK) {
            stream_.next_out = reinterpret_cast<Bytef*>(piece.data());
            stream_.avail_out = static_cast<uInt>(piece.size());
            // Without an end, nothing is left to read or to write: Z_BUF_ERROR.
            state = inflate(&stream_, Z_NO_FLUSH);
            const std::size_t length = piece.size() - stream_.avail_out;
            if (length > most - result.size()) return DecodingError::tooLarge;
            result.append(piece.data(), length);
        }
        if (state != Z_STREAM_END) return DecodingError::unreadable;
        return std::nullopt;
    }

    std::size_t bytesLeft() const { return stream_.avail_in; }

  private:
    z_stream stream_{};
    const bool started_;
};

std::variant<std::string, DecodingError> inflated(int window, std::string_view body, std::size_t most) {
    std::string result;
    do {
        Inflation inflation(window, body);
        if (const auto error = inflation.appendTo(result, most)) return *error;
        body.remove_prefix(body.size() - inflation.bytesLeft());
        // A gzip body may consist of several.
    } while (!body.empty() && window == gzipHeader);
    if (!body.empty()) return DecodingError::unreadable;
    return result;
}

bool hasZlibHeader(std::string_view body) {
    constexpr unsigned deflated = 8;
    constexpr unsigned checkedBy = 31;
    if (body.size() < 2) return false;
    const auto first = static_cast<unsigned char>(body[0]);
    const auto second = static_cast<unsigned char>(body[1]);
    return (first & 15U) == deflated && (first * 256U + second) % checkedBy == 0;
}

std::string lowerCased(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

}  // namespace

std::variant<std::string, DecodingError> decodedContent(std::string_view encoding, std::string body, std::size_t most) {
    const std::string name = lowerCased(encoding);
    if (name.empty() || name == "identity") return body;
    if (name == "gzip" || name == "x-gzip") return inflated(gzipHeader, body, most);
    // By the standard with zlib's header. Some servers leave it out.
    if (name == "deflate") return inflated(hasZlibHeader(body) ? zlibHeader : noHeader, body, most);
    return DecodingError::unreadable;
}

}  // namespace vantrel::linuxdesktop
