#include "platform/virtual/system/VirtualFileManager.h"

#include <utility>

namespace vantrel::virtualmac {

bool VirtualFileManager::fileExists(std::string_view path) const {
    const auto found = kind(path);
    return found && *found != FileKind::brokenLink;
}

std::string VirtualFileManager::homeDirectory() const {
    const std::lock_guard guard(mutex_);
    return home_;
}

void VirtualFileManager::add(const std::string& path) {
    add(path, kind(path).value_or(FileKind::file));
}

void VirtualFileManager::add(const std::string& path, FileKind kind) {
    const std::lock_guard guard(mutex_);
    for (auto end = path.size(); end != std::string::npos && end > 0; end = path.rfind('/', end - 1)) {
        paths_[path.substr(0, end)] = end == path.size() ? kind : FileKind::folder;
    }
}

std::optional<FileKind> VirtualFileManager::kind(std::string_view path) const {
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    const std::lock_guard guard(mutex_);
    const auto found = paths_.find(path);
    return found == paths_.end() ? std::nullopt : std::optional(found->second);
}

void VirtualFileManager::remove(const std::string& path) {
    const std::lock_guard guard(mutex_);
    std::erase_if(paths_,
                  [&path](const auto& entry) { return entry.first == path || entry.first.starts_with(path + "/"); });
}

void VirtualFileManager::setHomeDirectory(std::string path) {
    add(path, FileKind::folder);
    const std::lock_guard guard(mutex_);
    home_ = std::move(path);
}

}  // namespace vantrel::virtualmac
