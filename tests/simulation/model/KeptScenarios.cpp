#include "tests/simulation/model/KeptScenarios.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace vantrel::simulation {
namespace {

std::string textOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The kept lines of what the scenario begins with, without its end.
std::string linesOfPrelude(const std::filesystem::path& scenario, const std::string& text) {
    constexpr std::string_view word = "begins: ";
    const std::size_t at = text.starts_with(word) ? 0 : text.find("\nbegins: ");
    if (at == std::string::npos) return {};
    const std::size_t begins = text.find(word, at) + word.size();
    const std::string prelude = text.substr(begins, text.find('\n', begins) - begins) + ".transcript";
    std::filesystem::path path = scenario.parent_path() / prelude;
    if (!std::filesystem::exists(path)) path = scenario.parent_path().parent_path() / prelude;
    std::string lines = textOf(path);
    const std::size_t end = lines.rfind("  end          ");
    return lines.substr(0, lines.rfind('\n', end) + 1);
}

}  // namespace

std::vector<KeptScenario> keptScenarios() {
    std::vector<KeptScenario> kept;
    const std::filesystem::path folder = VANTREL_SCENARIOS;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const std::filesystem::path& path = entry.path();
        if (path.extension() != ".yaml") continue;
        std::filesystem::path transcript = path;
        transcript.replace_extension(".transcript");
        const std::string name = path.parent_path().filename().string() + "/" + path.stem().string();
        const std::string scenario = textOf(path);
        kept.push_back({name, scenario, linesOfPrelude(path, scenario) + textOf(transcript)});
    }
    std::sort(kept.begin(), kept.end(), [](const auto& one, const auto& other) { return one.name < other.name; });
    return kept;
}

}  // namespace vantrel::simulation
