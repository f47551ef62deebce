#include "tests/simulation/program/Message.h"

namespace vantrel::simulation {

std::string message(const std::vector<std::string>& fields) {
    std::string line;
    for (const auto& field : fields) {
        if (&field != &fields.front()) line += '\t';
        for (const char character : field) {
            if (character == '\n') {
                line += "\\n";
            } else if (character == '\t') {
                line += "\\t";
            } else if (character == '\\') {
                line += "\\\\";
            } else {
                line += character;
            }
        }
    }
    return line + '\n';
}

std::vector<std::string> fieldsOf(const std::string& line) {
    std::vector<std::string> fields(1);
    for (std::size_t place = 0; place < line.size(); ++place) {
        if (line[place] == '\t') {
            fields.emplace_back();
        } else if (line[place] == '\\' && place + 1 < line.size()) {
            const char escaped = line[++place];
            fields.back() += escaped == 'n' ? '\n' : escaped == 't' ? '\t' : escaped;
        } else {
            fields.back() += line[place];
        }
    }
    return fields;
}

}  // namespace vantrel::simulation
