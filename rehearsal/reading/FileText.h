#pragma once

#include <optional>
#include <string>

namespace vantrel::rehearsal {

/// The bytes of a file. Empty if it cannot be read completely, for example because it is a folder.
std::optional<std::string> fileText(const std::string& path);

}  // namespace vantrel::rehearsal
