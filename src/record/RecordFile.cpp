#include "record/RecordFile.h"

#include <system_error>

namespace vantrel {

std::optional<RecordFile> RecordFile::create(const std::filesystem::path& path) {
    std::error_code error;
    if (std::filesystem::exists(path, error) || error) return std::nullopt;
    std::ofstream stream(path, std::ios::binary);
    if (!stream) return std::nullopt;
    using std::filesystem::perms;
    std::filesystem::permissions(path, perms::owner_read | perms::owner_write, error);
    if (error) return std::nullopt;
    return RecordFile(std::move(stream));
}

bool RecordFile::write(std::string_view line) {
    stream_ << line << '\n' << std::flush;
    return stream_.good();
}

}  // namespace vantrel
