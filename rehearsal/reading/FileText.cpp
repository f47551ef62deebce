#include "rehearsal/reading/FileText.h"

#include <fstream>
#include <iterator>

namespace vantrel::rehearsal {

std::optional<std::string> fileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    // A folder opens like a file on some systems, and fails at the first byte.
    file.peek();
    if (!file.is_open() || file.bad()) return std::nullopt;
    std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (file.bad()) return std::nullopt;
    return text;
}

}  // namespace vantrel::rehearsal
