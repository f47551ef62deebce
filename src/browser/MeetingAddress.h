#pragma once

#include <string>

namespace vantrel {

/// The address to open for the server's meeting link. A text that begins with "http" (lower case) is an address
/// already; anything else is a bare meeting code.
inline std::string meetingAddress(const std::string& linkOrCode) {
    return linkOrCode.starts_with("http") ? linkOrCode : "https://meet.google.com/" + linkOrCode;
}

}  // namespace vantrel
