#pragma once

#include <string>

namespace vantrel {

/// The address to open for what the server calls the meeting link: a text that begins with "http" (lower case) is one
/// already, anything else is a bare meeting code.
inline std::string meetingAddress(const std::string& linkOrCode) {
    return linkOrCode.starts_with("http") ? linkOrCode : "https://meet.google.com/" + linkOrCode;
}

}  // namespace vantrel
