#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vantrel::linuxdesktop {

/// Reads a whole regular file of at most 1 MiB. Zero, or the errno value of the failure (EFBIG for a larger file,
/// EINVAL if it is not a regular file). Never waits for the other end of a pipe.
int readSmallFile(const std::filesystem::path& file, std::string& bytes);

/// Replaces a file's contents in one step, for the user alone (mode 0600). Creates its folder (0700) if that is
/// missing. A symbolic link is followed and stays. Zero, or the errno value of the failure; the old contents then stay.
int replaceSmallFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace vantrel::linuxdesktop
