#pragma once

#include <cstddef>

#include "platform/virtual/scheduler/Moment.h"

namespace vantrel::virtualmac {

/// Takes the place of the seed: orders what is due at the same moment. Called on any thread with the scheduler's mutex
/// held, so it must not call the scheduler.
class ChoiceSource {
  public:
    virtual ~ChoiceSource() = default;

    /// Which of `count` equals is next, two or more. 0 is the natural one.
    virtual std::size_t choose(std::size_t count, Moment now) = 0;

    /// Whether a thread is interrupted at a call of the platform: 0 if it goes on, or which of `others`, from 1 on,
    /// runs instead.
    virtual std::size_t interrupt(std::size_t others, Moment now) = 0;
};

}  // namespace vantrel::virtualmac
