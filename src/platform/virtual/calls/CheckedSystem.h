#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/network/URLSession.h"
#include "platform/system/AccessibilityTrust.h"
#include "platform/system/CaptureAuthorization.h"
#include "platform/system/FileManager.h"
#include "platform/system/Log.h"
#include "platform/system/UserDefaults.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

class CheckedAccessibilityTrust final : public AccessibilityTrust {
  public:
    CheckedAccessibilityTrust(Engine& engine, AccessibilityTrust& trust) : engine_(engine), trust_(trust) {}

    bool isProcessTrusted() const override;
    bool isProcessTrustedWithPrompt() override;

  private:
    Engine& engine_;
    AccessibilityTrust& trust_;
};

class CheckedCaptureAuthorization final : public CaptureAuthorization {
  public:
    CheckedCaptureAuthorization(Engine& engine, CaptureAuthorization& capture) : engine_(engine), capture_(capture) {}

    AuthorizationStatus status(MediaType media) const override;
    void requestAccess(MediaType media, std::function<void(bool granted)> completion) override;

  private:
    Engine& engine_;
    CaptureAuthorization& capture_;
};

class CheckedFileManager final : public FileManager {
  public:
    CheckedFileManager(Engine& engine, const FileManager& files) : engine_(engine), files_(files) {}

    bool fileExists(std::string_view path) const override;
    std::string homeDirectory() const override;

  private:
    Engine& engine_;
    const FileManager& files_;
};

class CheckedLog final : public Log {
  public:
    CheckedLog(Engine& engine, Log& log) : engine_(engine), log_(log) {}

    void print(std::string_view line) override;

  private:
    Engine& engine_;
    Log& log_;
};

class CheckedUserDefaults final : public UserDefaults {
  public:
    CheckedUserDefaults(Engine& engine, UserDefaults& defaults) : engine_(engine), defaults_(defaults) {}

    std::optional<std::string> string(std::string_view key) const override;
    void set(std::string_view key, std::string_view value) override;

  private:
    Engine& engine_;
    UserDefaults& defaults_;
};

class CheckedURLSession final : public URLSession {
  public:
    CheckedURLSession(Engine& engine, URLSession& session) : engine_(engine), session_(session) {}

    void dataTask(URLRequest request, Completion completion) override;

  private:
    Engine& engine_;
    URLSession& session_;
};

}  // namespace vantrel::virtualmac
