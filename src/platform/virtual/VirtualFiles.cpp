#include "platform/virtual/VirtualFiles.h"

#include <utility>

namespace vantrel::virtualmac {

bool VirtualFiles::fileExists(std::string_view path) const {
    engine_.platformCall();
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    const std::lock_guard guard(mutex_);
    return paths_.contains(path);
}

std::string VirtualFiles::homeDirectory() const {
    engine_.platformCall();
    const std::lock_guard guard(mutex_);
    return home_;
}

void VirtualFiles::add(const std::string& path) {
    const std::lock_guard guard(mutex_);
    for (auto end = path.size(); end != std::string::npos && end > 0; end = path.rfind('/', end - 1)) {
        paths_.insert(path.substr(0, end));
    }
}

void VirtualFiles::remove(const std::string& path) {
    const std::lock_guard guard(mutex_);
    std::erase_if(paths_, [&path](const std::string& other) { return other == path || other.starts_with(path + "/"); });
}

void VirtualFiles::setHomeDirectory(std::string path) {
    add(path);
    const std::lock_guard guard(mutex_);
    home_ = std::move(path);
}

}  // namespace vantrel::virtualmac
