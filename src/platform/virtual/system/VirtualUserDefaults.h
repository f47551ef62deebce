#pragma once

#include <map>
#include <mutex>
#include <string>

#include "platform/system/UserDefaults.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// User defaults in memory.
class VirtualUserDefaults final : public UserDefaults {
  public:
    using Values = std::map<std::string, std::string, std::less<>>;

    VirtualUserDefaults(Engine& engine, Values values) : engine_(engine), values_(std::move(values)) {}

    std::optional<std::string> string(std::string_view key) const override;
    void set(std::string_view key, std::string_view value) override;

    /// Driver-facing, any thread.
    Values values() const;
    /// Driver-facing: sets a value without an event, unseen by the client.
    void put(std::string key, std::string value);

  private:
    Engine& engine_;
    mutable std::mutex mutex_;
    Values values_;
};

}  // namespace vantrel::virtualmac
