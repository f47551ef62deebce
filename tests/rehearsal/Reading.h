#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <variant>

#include "rehearsal/reading/ScenarioReader.h"

namespace vantrel::rehearsal {

/// Knows no prelude.
inline std::variant<FoundPrelude, NoPrelude> noPreludes(const std::string& name) {
    return NoPrelude{"there is no " + name};
}

/// The scenario of a text without problems.
inline Scenario good(const std::string& text, const PreludeSource& preludes = noPreludes) {
    auto read = readScenario(text, preludes);
    if (const auto* problems = std::get_if<Problems>(&read)) {
        for (const auto& problem : *problems) ADD_FAILURE() << problem.line << ": " << problem.what;
        return {};
    }
    return std::get<Scenario>(std::move(read));
}

/// The problems of a text, one per line.
inline std::string wrong(const std::string& text, const PreludeSource& preludes = noPreludes) {
    const auto read = readScenario(text, preludes);
    if (!std::holds_alternative<Problems>(read)) return "nothing";
    std::string lines;
    for (const auto& problem : std::get<Problems>(read)) {
        lines += std::to_string(problem.line) + ": " + problem.what + "\n";
    }
    return lines;
}

inline const std::string head = "title: T\nuntil: 100\n";

/// The action of a step.
inline Action action(const std::string& step) {
    const auto scenario = good(head + "timeline:\n  - at: 1\n    " + step + "\n");
    return scenario.timeline.size() == 1 ? scenario.timeline[0].action : Action();
}

template <typename Kind>
Kind as(const std::string& step) {
    const auto what = action(step);
    if (const auto* kind = std::get_if<Kind>(&what)) return *kind;
    ADD_FAILURE() << step << " is another action";
    return {};
}

}  // namespace vantrel::rehearsal
