#include "tests/linux/network/CompressedBody.h"

#include <zlib.h>

#include <stdexcept>

namespace vantrel::linuxdesktop {

std::string compressed(std::string_view encoding, const std::string& bytes) {
    constexpr int gzipHeader = 16;
    constexpr int usualMemory = 8;
    z_stream stream{};
    const int window = MAX_WBITS + (encoding == "deflate" ? 0 : gzipHeader);
    if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, window, usualMemory, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("zlib does not start");
    }
    std::string packed(deflateBound(&stream, bytes.size()), '\0');
    std::string source = bytes;
    stream.next_in = reinterpret_cast<Bytef*>(source.data());
    stream.avail_in = static_cast<uInt>(source.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    if (result != Z_STREAM_END) throw std::runtime_error("zlib does not end");
    return packed;
}

}  // namespace vantrel::linuxdesktop
