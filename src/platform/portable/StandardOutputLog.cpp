#include "platform/portable/StandardOutputLog.h"

#include <string>

namespace vantrel {

void StandardOutputLog::print(std::string_view line) {
    std::string text;
    text.reserve(line.size() + 1);
    text.append(line).push_back('\n');
    lines_->write(text);
}

}  // namespace vantrel
