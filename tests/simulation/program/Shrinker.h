#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/simulation/classes/WrittenClass.h"

namespace vantrel::simulation {

/// Makes a class shorter while it stays of interest: leaves out steps, replies, whatever is told of the Mac and the
/// server, and shortens times.
class Shrinker {
  public:
    using IsOfInterest = std::function<bool(const WrittenClass&)>;

    /// Asks at most `attempts` times.
    Shrinker(IsOfInterest isOfInterest, int attempts) : isOfInterest_(std::move(isOfInterest)), left_(attempts) {}

    WrittenClass shrink(WrittenClass written);

  private:
    /// Takes the candidate if it is of interest.
    bool take(const WrittenClass& candidate);
    template <class Piece>
    bool leaveOut(std::vector<Piece> WrittenClass::*pieces);
    bool splitMoments();
    bool shortenPauses();
    bool shortenEnd();

    IsOfInterest isOfInterest_;
    int left_;
    WrittenClass best_;
};

}  // namespace vantrel::simulation
