#include "tests/linux/support/InstalledCommands.h"

#include <stdlib.h>

#include "tests/linux/support/TemporaryFolder.h"

namespace vantrel::linuxdesktop {

namespace {

std::string variable(const char* name) {
    const char* value = getenv(name);
    return value != nullptr ? value : "";
}

}  // namespace

InstalledCommands::InstalledCommands(const std::filesystem::path& parent)
    : folder_(parent / "bin"), home_(parent / "home"), pathBefore_(variable("PATH")), homeBefore_(variable("HOME")) {
    std::filesystem::create_directories(folder_);
    std::filesystem::create_directories(home_);
    search(folder_.string() + ":" + pathBefore_);
    setenv("HOME", home_.c_str(), 1);
}

InstalledCommands::~InstalledCommands() {
    search(pathBefore_);
    setenv("HOME", homeBefore_.c_str(), 1);
}

void InstalledCommands::search(const std::string& path) {
    setenv("PATH", path.c_str(), 1);
}

std::string InstalledCommands::install(const std::string& command, const std::string& lines) const {
    const auto file = folder_ / command;
    std::filesystem::create_directories(file.parent_path());
    writeContents(file, "#!/bin/sh\n" + lines);
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    return file.string();
}

}  // namespace vantrel::linuxdesktop
