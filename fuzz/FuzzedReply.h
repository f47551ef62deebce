#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "platform/network/URLSession.h"

namespace vantrel::fuzz {

/// A reply made from any bytes. The first byte chooses between a failure, a response that is not HTTP, and a status;
/// the rest is the body.
URLReply fuzzedReply(const std::uint8_t* data, std::size_t size);

/// Ends the process with a message if a property does not hold.
void require(bool held, const char* property);

/// The body's contents, read by a different parser from the client's, to compare.
struct Reference {
    bool isObject = false;
    /// Nested so little that both parsers accept it.
    bool isShallow = false;

    explicit Reference(const URLReply& reply);
    bool isTrue(const char* key) const;
    bool isString(const char* key) const;
    std::string string(const char* key) const;

  private:
    std::string body_;
};

}  // namespace vantrel::fuzz
