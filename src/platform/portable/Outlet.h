#pragma once

#include <string_view>

namespace vantrel {

/// Where text for a descriptor is written without waiting. A terminal may say that it takes something and then hold up
/// who writes more than that, for as long as it is stopped. A pipe may say so, and another process that writes there
/// fill it first. So a terminal, and on Linux a pipe, is opened once more, in a way that never waits: its flags belong
/// to this opening alone. Any thread.
class Outlet {
  public:
    enum class Taken { everything, aPart, nothingAnyMore };

    explicit Outlet(int descriptor);
    ~Outlet();
    Outlet(const Outlet&) = delete;
    Outlet& operator=(const Outlet&) = delete;

    /// To be waited for.
    int get() const { return own_ >= 0 ? own_ : descriptor_; }
    /// Writes as much as is taken at once, and leaves the rest.
    Taken write(std::string_view& rest) const;

  private:
    bool takesAPiece() const;

    const int descriptor_;
    int own_ = -1;
};

}  // namespace vantrel
