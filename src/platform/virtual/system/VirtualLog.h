#pragma once

#include "platform/system/Log.h"
#include "platform/virtual/scheduler/Engine.h"

namespace vantrel::virtualmac {

/// Log lines become events of the journal.
class VirtualLog final : public Log {
  public:
    explicit VirtualLog(Engine& engine) : engine_(engine) {}

    void print(std::string_view line) override { engine_.journal.emit({ClientEvent::log, std::string(line)}); }

  private:
    Engine& engine_;
};

}  // namespace vantrel::virtualmac
