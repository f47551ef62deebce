#pragma once

#include <cstddef>
#include <vector>

#include "platform/virtual/scheduler/ChoiceSource.h"

namespace vantrel::simulation {

/// Within a span of time, makes the choices that it is given and then the natural ones, and notes how many alternatives
/// each choice had.
class ChoiceSequence final : public virtualmac::ChoiceSource {
  public:
    struct Span {
        virtualmac::Moment from = 0;
        virtualmac::Moment to = 0;
        /// How often a thread may be interrupted at a call of the platform.
        int interruptions = 0;
    };

    ChoiceSequence(Span span, std::vector<std::size_t> choices) : span_(span), choices_(std::move(choices)) {}

    std::size_t choose(std::size_t count, virtualmac::Moment now) override;
    std::size_t interrupt(std::size_t others, virtualmac::Moment now) override;

    /// The number of alternatives at each choice.
    const std::vector<std::size_t>& alternatives() const { return alternatives_; }

  private:
    bool isInside(virtualmac::Moment now) const { return now >= span_.from && now <= span_.to; }
    std::size_t take(std::size_t count);

    const Span span_;
    const std::vector<std::size_t> choices_;
    std::vector<std::size_t> alternatives_;
    int interruptions_ = 0;
};

}  // namespace vantrel::simulation
