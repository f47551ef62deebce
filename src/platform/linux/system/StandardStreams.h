#pragma once

namespace vantrel::linuxdesktop {

/// Opens /dev/null on each of the descriptors 0 to 2 that the process was started without. Otherwise the next file or
/// connection would get that number, and output to a standard stream would go there. Call it before anything else is
/// opened.
void openMissingStandardStreams();

}  // namespace vantrel::linuxdesktop
