#pragma once

#include <filesystem>
#include <string>
#include <variant>

#include "rehearsal/reading/PreludeSource.h"

namespace vantrel::rehearsal {

/// Finds the preludes of a scenario's file: preludes/NAME.yaml in the file's folder or, if missing, in the folder
/// above.
class PreludeFolder {
  public:
    /// `held`: also loads the prelude's kept transcript beside it; if that is missing, the prelude counts as missing.
    PreludeFolder(std::filesystem::path scenarioFile, bool held)
        : scenarioFile_(std::move(scenarioFile)), held_(held) {}

    std::variant<FoundPrelude, NoPrelude> find(const std::string& name) const;

  private:
    bool isAmongPreludes() const;
    std::variant<FoundPrelude, NoPrelude> read(const std::string& name, std::filesystem::path file) const;

    const std::filesystem::path scenarioFile_;
    const bool held_;
};

}  // namespace vantrel::rehearsal
