#include "platform/virtual/calls/CheckedSystem.h"

#include <utility>

namespace vantrel::virtualmac {

bool CheckedAccessibilityTrust::isProcessTrusted() const {
    engine_.platformCall();
    return trust_.isProcessTrusted();
}

bool CheckedAccessibilityTrust::isProcessTrustedWithPrompt() {
    engine_.platformCall();
    return trust_.isProcessTrustedWithPrompt();
}

AuthorizationStatus CheckedCaptureAuthorization::status(MediaType media) const {
    engine_.platformCall();
    return capture_.status(media);
}

void CheckedCaptureAuthorization::requestAccess(MediaType media, std::function<void(bool granted)> completion) {
    engine_.platformCall();
    capture_.requestAccess(media, std::move(completion));
}

bool CheckedFileManager::fileExists(std::string_view path) const {
    engine_.platformCall();
    return files_.fileExists(path);
}

std::string CheckedFileManager::homeDirectory() const {
    engine_.platformCall();
    return files_.homeDirectory();
}

void CheckedLog::print(std::string_view line) {
    engine_.platformCall();
    log_.print(line);
}

std::optional<std::string> CheckedUserDefaults::string(std::string_view key) const {
    engine_.platformCall();
    return defaults_.string(key);
}

void CheckedUserDefaults::set(std::string_view key, std::string_view value) {
    engine_.platformCall();
    defaults_.set(key, value);
}

void CheckedURLSession::dataTask(URLRequest request, Completion completion) {
    engine_.platformCall();
    session_.dataTask(std::move(request), std::move(completion));
}

}  // namespace vantrel::virtualmac
