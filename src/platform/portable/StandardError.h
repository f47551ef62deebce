#pragma once

#include <string_view>

namespace vantrel {

/// Writes a whole line, with its end, to standard error. A reader that does not read and a terminal that is stopped
/// hold nobody up; the line or the rest of it is then lost. Any thread, and between fork() and exec() too.
void sayOnStandardError(std::string_view line);

}  // namespace vantrel
