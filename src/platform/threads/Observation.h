#pragma once

namespace vantrel {

/// A registered observer. Destroying it removes the observer. A block already queued for it does nothing.
class Observation {
  public:
    virtual ~Observation() = default;
};

}  // namespace vantrel
