#pragma once

namespace vantrel::standins {

/// The application object goes with its Mac; the next sharedApplication makes a new one.
void forgetOwnApplication();

}  // namespace vantrel::standins
