#include "tests/linux/support/TemporaryFolder.h"

#include <stdlib.h>

#include <fstream>
#include <sstream>
#include <system_error>

namespace vantrel::linuxdesktop {

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vantrel-test-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string contentsOf(const std::filesystem::path& file) {
    std::ostringstream contents;
    contents << std::ifstream(file).rdbuf();
    return contents.str();
}

void writeContents(const std::filesystem::path& file, const std::string& contents) {
    std::ofstream(file) << contents;
}

}  // namespace vantrel::linuxdesktop
