#pragma once

namespace vantrel::contracts {

/// A computer under test that has at least two Spaces, of which the first is shown. Test thread.
class SpacesHost {
  public:
    virtual ~SpacesHost() = default;

    /// Shows the Space at that place, counted from 0, as the participant would. Returns when it is shown; observers may
    /// be told later. Showing the current Space is not a change.
    virtual void showSpace(int place) = 0;
};

}  // namespace vantrel::contracts
