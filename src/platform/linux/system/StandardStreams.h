#pragma once

namespace vantrel::linuxdesktop {

/// Opens /dev/null on each of the descriptors 0 to 2 that the process was started without: the next file or connection
/// would take its number, and whatever is written to a standard stream would go there. Before anything else is opened.
void openMissingStandardStreams();

}  // namespace vantrel::linuxdesktop
