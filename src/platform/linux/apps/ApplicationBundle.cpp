#include "platform/linux/apps/ApplicationBundle.h"

#include <string>
#include <string_view>
#include <system_error>

#include "platform/portable/URLComponents.h"

namespace vantrel::linuxdesktop {

namespace {

int hexadecimal(char character) {
    if (character >= '0' && character <= '9') return character - '0';
    if (character >= 'a' && character <= 'f') return character - 'a' + 10;
    if (character >= 'A' && character <= 'F') return character - 'A' + 10;
    return -1;
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '%' && i + 2 < text.size() ? hexadecimal(text[i + 1]) : -1;
        const int low = high >= 0 ? hexadecimal(text[i + 2]) : -1;
        decoded += low >= 0 ? static_cast<char>(high * 16 + low) : text[i];
        if (low >= 0) i += 2;
    }
    return decoded;
}

bool isFile(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

}  // namespace

std::optional<std::filesystem::path> applicationFolder(const URL& url) {
    const URLComponents parts = URLComponents::split(url.absoluteString);
    const std::string host = parts.authority.value_or("");
    if (scheme(url) != "file" || (!host.empty() && host != "localhost")) return std::nullopt;
    std::string path = percentDecoded(parts.path);
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    // The kernel would stop at a zero byte and find another file.
    if (!path.starts_with('/') || !path.ends_with(".app") || path.find('\0') != std::string::npos) return std::nullopt;
    return path;
}

std::filesystem::path applicationExecutable(const std::filesystem::path& folder) {
    const std::filesystem::path executables = folder / "Contents" / "MacOS";
    std::filesystem::path usual = executables / folder.stem();
    if (isFile(usual)) return usual;
    std::filesystem::path only;
    std::error_code error;
    for (auto item = std::filesystem::directory_iterator(executables, error);
         !error && item != std::filesystem::directory_iterator(); item.increment(error)) {
        if (!isFile(item->path())) continue;
        if (!only.empty()) return usual;
        only = item->path();
    }
    return only.empty() ? usual : only;
}

}  // namespace vantrel::linuxdesktop
