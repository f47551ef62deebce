#pragma once

namespace vantrel::standins {

/// Destroys the application object with its Mac. The next sharedApplication creates a new one.
void forgetOwnApplication();

}  // namespace vantrel::standins
