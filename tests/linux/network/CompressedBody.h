#pragma once

#include <string>
#include <string_view>

namespace vantrel::linuxdesktop {

/// The bytes as a server sends them with that Content-Encoding: "deflate", or else gzip.
std::string compressed(std::string_view encoding, const std::string& bytes);

}  // namespace vantrel::linuxdesktop
