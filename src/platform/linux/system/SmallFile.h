#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace vantrel::linuxdesktop {

/// Reads a whole regular file of at most 16 MiB. Zero, or the errno value of the failure (EFBIG for a larger file,
/// EINVAL for what is no regular file); never waits for a pipe's other end.
int readSmallFile(const std::filesystem::path& file, std::string& bytes);

/// Replaces a file's contents in one step, for the user alone (mode 0600), making its folder (0700) where it lacks.
/// A symbolic link is followed and stays. Zero, or the errno value of the failure; the old contents then stand.
int replaceSmallFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace vantrel::linuxdesktop
