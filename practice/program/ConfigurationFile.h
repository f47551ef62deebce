#pragma once

#include <string>
#include <variant>

#include "practice/configuration/PracticeConfiguration.h"

namespace vantrel::practice {

struct ConfigurationError {
    /// FILE:LINE: what is wrong. Without the line if the file cannot be read at all.
    std::string message;
};

/// Reads the YAML file that practice/README.md describes. An unknown key is an error.
std::variant<PracticeConfiguration, ConfigurationError> readConfigurationFile(const std::string& path);

/// The same for a text. `path` is used only in messages.
std::variant<PracticeConfiguration, ConfigurationError> readConfiguration(const std::string& text,
                                                                          const std::string& path);

}  // namespace vantrel::practice
