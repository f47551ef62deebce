#include "rehearsal/reading/PreludeFolder.h"

#include <system_error>
#include <utility>

#include "rehearsal/reading/FileText.h"
#include "rehearsal/reading/ScenarioReader.h"

namespace vantrel::rehearsal {
namespace {

constexpr const char* noneOfItsOwn = "a prelude begins with no other";

bool isFile(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

}  // namespace

std::variant<FoundPrelude, NoPrelude> PreludeFolder::find(const std::string& name) const {
    if (isAmongPreludes()) return NoPrelude{noneOfItsOwn};
    const auto folder = scenarioFile_.parent_path();
    const auto here = folder / (name + ".yaml");
    const auto above = (folder / ".." / (name + ".yaml")).lexically_normal();
    for (const auto& file : {here, above}) {
        if (isFile(file)) return read(name, file);
    }
    return NoPrelude{"there is no " + name + ": neither " + here.string() + " nor " + above.string()};
}

/// This also keeps a prelude from beginning with itself, or two with each other.
bool PreludeFolder::isAmongPreludes() const {
    std::error_code error;
    const auto whole = std::filesystem::absolute(scenarioFile_, error).lexically_normal();
    return !error && whole.parent_path().filename() == "preludes";
}

std::variant<FoundPrelude, NoPrelude> PreludeFolder::read(const std::string& name, std::filesystem::path file) const {
    const auto text = fileText(file.string());
    if (!text) return NoPrelude{name + " cannot be read"};
    const auto read = readScenario(*text, [](const std::string&) { return NoPrelude{noneOfItsOwn}; });
    if (const auto* problems = std::get_if<Problems>(&read)) {
        NoPrelude lines;
        for (const auto& problem : *problems) {
            lines.push_back(file.string() + ":" + std::to_string(problem.line) + ": " + problem.what);
        }
        return lines;
    }
    FoundPrelude found{std::get<Scenario>(read), std::nullopt};
    if (!held_) return found;
    found.keptTranscript = fileText(file.replace_extension(".transcript").string());
    if (!found.keptTranscript) return NoPrelude{name + " has no kept transcript, " + file.string()};
    return found;
}

}  // namespace vantrel::rehearsal
