#pragma once

#include <functional>
#include <string_view>
#include <utility>

#include "platform/network/JSON.h"
#include "record/Look.h"

namespace vantrel {

/// Writes each look as one JSON object (docs/macos.md has its keys). Main thread.
class LookWriter {
  public:
    /// Takes a line without its line break. False if it cannot be kept.
    using Sink = std::function<bool(std::string_view line)>;

    LookWriter(const JSONSerialization& json, Sink sink) : json_(json), sink_(std::move(sink)) {}

    /// False if the sink does not take the line. A look that is no JSON leaves a gap in the numbers of the lines.
    bool write(const Look& look);

  private:
    const JSONSerialization& json_;
    const Sink sink_;
    double lines_ = 0;
};

}  // namespace vantrel
