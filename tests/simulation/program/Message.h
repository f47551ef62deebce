#pragma once

#include <string>
#include <vector>

namespace vantrel::simulation {

/// One line of what a process tells another: fields of any bytes.
std::string message(const std::vector<std::string>& fields);

/// `line` without its end.
std::vector<std::string> fieldsOf(const std::string& line);

}  // namespace vantrel::simulation
