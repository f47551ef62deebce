#include "tests/linux/support/AddressOpener.h"

#include <stdlib.h>

#include <fstream>

#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {

AddressOpener::AddressOpener(const std::filesystem::path& parent)
    : folder_(parent / "opener"), before_(getenv("PATH")) {
    std::filesystem::create_directory(folder_);
    const auto program = folder_ / "xdg-open";
    writeContents(program, "#!/bin/sh\nprintf '%s\\n' \"$1\" >>'" + (folder_ / "opened").string() + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    setenv("PATH", (folder_.string() + ":" + before_).c_str(), 1);
}

AddressOpener::~AddressOpener() {
    setenv("PATH", before_.c_str(), 1);
}

void AddressOpener::haveNone() {
    std::filesystem::remove(folder_ / "xdg-open");
    setenv("PATH", folder_.c_str(), 1);
}

std::vector<std::string> AddressOpener::opened() const {
    std::ifstream stream(folder_ / "opened");
    std::vector<std::string> addresses;
    // A line that is still being written has no line break yet.
    for (std::string line; std::getline(stream, line) && !stream.eof();) addresses.push_back(line);
    return addresses;
}

}  // namespace vantrel::linuxdesktop
