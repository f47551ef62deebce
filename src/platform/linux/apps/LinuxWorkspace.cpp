#include "platform/linux/apps/LinuxWorkspace.h"

#include <algorithm>
#include <string_view>

#include "platform/linux/apps/DetachedProcess.h"
#include "platform/linux/threads/MainThread.h"

namespace vantrel::linuxdesktop {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool hasScheme(std::string_view address) {
    const std::string_view scheme = address.substr(0, std::min(address.find(':'), address.size()));
    return scheme.size() < address.size() && !scheme.empty() && isLetter(scheme.front()) &&
           std::all_of(scheme.begin(), scheme.end(), [](char c) {
               return isLetter(c) || (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.';
           });
}

}  // namespace

bool LinuxWorkspace::open(const URL& url) {
    MainThread::require("open");
    // Without a scheme, the address would be taken for a file or an option.
    if (!hasScheme(url.absoluteString)) return false;
    return startDetached({"xdg-open", url.absoluteString}) || startDetached({"gio", "open", url.absoluteString});
}

}  // namespace vantrel::linuxdesktop
