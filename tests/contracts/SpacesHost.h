#pragma once

namespace vantrel::contracts {

/// A computer on trial that has Spaces: two at least, of which the first is shown. Test thread.
class SpacesHost {
  public:
    virtual ~SpacesHost() = default;

    /// Shows the Space at that place, counted from 0, as the participant would. Returns when it is shown; whoever
    /// observes the Spaces may be told later. That a Space is shown already is no change.
    virtual void showSpace(int place) = 0;
};

}  // namespace vantrel::contracts
