#pragma once

#include <filesystem>
#include <string>
#include <variant>

#include "rehearsal/reading/PreludeSource.h"

namespace vantrel::rehearsal {

/// The preludes of a scenario's file: preludes/NAME.yaml in the file's own folder or, when there is none, in the folder
/// above that.
class PreludeFolder {
  public:
    /// `held`: the prelude's kept transcript, beside it, is found with it; without one there is no prelude.
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
