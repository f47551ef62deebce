#pragma once

#include <optional>
#include <string>

namespace vantrel::rehearsal {

/// The bytes of a file; empty when it cannot be read to its end, a folder for instance.
std::optional<std::string> fileText(const std::string& path);

}  // namespace vantrel::rehearsal
