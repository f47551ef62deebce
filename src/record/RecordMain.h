#pragma once

#include <filesystem>

#include "platform/Computer.h"
#include "record/LookWriter.h"

namespace vantrel {

/// Says what will be written, then records until the application is terminated. Main thread.
void record(const Computer& computer, const std::filesystem::path& path, LookWriter::Sink sink);

/// Records to a new file. Returns the exit status, if it returns.
int recordMain(const Computer& computer, const std::filesystem::path& path);

}  // namespace vantrel
