#include "platform/linux/system/LinuxUserDefaults.h"

#include <time.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <system_error>

#include "platform/linux/system/HomeDirectory.h"
#include "platform/linux/system/SmallFile.h"
#include "platform/portable/StandardError.h"

namespace vantrel::linuxdesktop {

namespace {

void complain(const std::filesystem::path& file, const char* what, const char* why) {
    sayOnStandardError("vantrel: " + file.string() + " " + what + ": " + why + "\n");
}

std::string timeStamp() {
    const time_t now = time(nullptr);
    tm parts{};
    gmtime_r(&now, &parts);
    std::array<char, 32> text{};
    strftime(text.data(), text.size(), "%Y%m%dT%H%M%SZ", &parts);
    return text.data();
}

}  // namespace

std::filesystem::path LinuxUserDefaults::standardFile() {
    const char* folder = std::getenv("XDG_CONFIG_HOME");
    // A relative folder is invalid and must be ignored (XDG base directories).
    const std::filesystem::path base = folder != nullptr && folder[0] == '/'
                                           ? std::filesystem::path(folder)
                                           : std::filesystem::path(homeOfThisUser()) / ".config";
    return base / "vantrel" / "defaults.json";
}

LinuxUserDefaults::LinuxUserDefaults(std::filesystem::path file, const JSONSerialization& json)
    : file_(std::move(file)), json_(json) {
    load();
}

std::optional<std::string> LinuxUserDefaults::string(std::string_view key) const {
    const std::lock_guard lock(mutex_);
    const auto found = values_.find(key);
    if (found == values_.end() || found->second.string() == nullptr) return std::nullopt;
    return *found->second.string();
}

void LinuxUserDefaults::set(std::string_view key, std::string_view value) {
    const std::lock_guard lock(mutex_);
    values_.insert_or_assign(std::string(key), JSONValue(std::string(value)));
    save();
}

void LinuxUserDefaults::load() {
    std::string bytes;
    const int error = readSmallFile(file_, bytes);
    if (error == ENOENT) return;
    if (error == EFBIG) {
        setAside();
        return;
    }
    if (error != 0) {
        writable_ = false;
        complain(file_, "cannot be read, settings will not be kept", std::strerror(error));
        return;
    }
    const std::optional<JSONValue> parsed = json_.parse(bytes);
    if (parsed && parsed->object() != nullptr) {
        values_ = *parsed->object();
    } else {
        setAside();
    }
}

void LinuxUserDefaults::setAside() {
    std::filesystem::path aside = file_;
    aside += ".damaged-" + timeStamp();
    std::error_code error;
    std::filesystem::rename(file_, aside, error);
    if (error) {
        writable_ = false;
        complain(file_, "is damaged and cannot be set aside, settings will not be kept", error.message().c_str());
    } else {
        complain(file_, "is damaged and was set aside as", aside.filename().c_str());
    }
}

// Runs with the mutex held, so that the file on the disk is always the newest.
void LinuxUserDefaults::save() {
    if (!writable_) return;
    const std::optional<std::string> text = json_.serialise(values_);
    if (!text) {
        complain(file_, "was not written", "a value is not UTF-8");
        return;
    }
    if (const int error = replaceSmallFile(file_, *text + "\n"); error != 0) {
        complain(file_, "was not written", std::strerror(error));
    }
}

}  // namespace vantrel::linuxdesktop
