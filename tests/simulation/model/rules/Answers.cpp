#include "tests/simulation/model/rules/Answers.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <vector>

namespace vantrel::simulation {
namespace {

struct OpenAlert {
    std::string_view message;
    std::string_view buttons;  // "[A] [B]"
};

// An end of the session holds an answer up.
constexpr std::int64_t longestEnd = 10000;

constexpr std::array<std::string_view, 3> styles{"informational: ", "warning: ", "critical: "};

bool begins(const Transcript& transcript) {
    return !transcript.entries().empty() && transcript.entries().front().is("prelude");
}

bool isIgnored(const Entry& entry) {
    return !entry.further.empty() && entry.further.back().starts_with("ignored: ");
}

std::string_view messageOf(const Entry& alert) {
    for (const std::string_view style : styles) {
        if (alert.text.starts_with(style)) return alert.text.substr(style.size());
    }
    return {};
}

/// Takes the alert that "[BUTTON] to: MESSAGE" or "[BUTTON]: MESSAGE" answers out of the open ones.
bool answers(std::vector<OpenAlert>& open, std::string_view text, std::string_view joint) {
    const auto found = std::find_if(open.rbegin(), open.rend(), [&](const OpenAlert& alert) {
        if (!text.ends_with(alert.message)) return false;
        const std::string_view button = text.substr(0, text.size() - alert.message.size());
        if (!button.ends_with(joint)) return false;
        return alert.buttons.find(button.substr(0, button.size() - joint.size())) != std::string_view::npos;
    });
    if (found == open.rend()) return false;
    open.erase(std::next(found).base());
    return true;
}

}  // namespace

void answersAnswerAlerts(const Transcript& transcript, Verdict& verdict) {
    if (begins(transcript)) return;
    constexpr std::string_view ended = "is ended as ";
    std::vector<OpenAlert> open;
    int given = 0;
    std::int64_t givenAt = -1;
    bool hangs = false;
    for (const Entry& entry : transcript.entries()) {
        hangs = hangs || entry.begins("fault", "the client's main thread hangs");
        const bool answered = entry.begins("participant", "answers ") && !isIgnored(entry);
        if (answered && entry.text.find(" the permission prompt: ") == entry.text.npos) {
            ++given;
            givenAt = entry.at;
        }
        if (entry.is("answer") && given > 0) --given;
        const bool over = entry.is("end") || entry.is("client", "quits");
        if (over && given > 0 && !hangs && (entry.at > givenAt + longestEnd || !entry.is("end")))
            verdict.object(entry.line, "what the participant has answered has come to nothing");
        const std::string_view message = entry.is("alert") ? messageOf(entry) : std::string_view();
        if (!message.empty() && !entry.further.empty()) open.push_back({message, entry.further.back()});
        const bool endedHere = entry.begins("alert", ended);
        if (endedHere && !answers(open, entry.text.substr(ended.size()), ": "))
            verdict.object(entry.line, "no such alert is open");
        if (entry.is("answer") && !answers(open, entry.text, " to: "))
            verdict.object(entry.line, "no such alert is open, or it has no such button");
    }
}

void menusAreOpenedBySomebody(const Transcript& transcript, Verdict& verdict) {
    if (begins(transcript)) return;
    std::int64_t openedAt = -1;
    int open = 0;
    for (const Entry& entry : transcript.entries()) {
        if (entry.begins("menu", "opened: ")) ++open;
        if (entry.begins("menu", "closed: ") && open-- == 0) verdict.object(entry.line, "none is open");
        if (entry.begins("participant", "opens the ") && !isIgnored(entry)) openedAt = entry.at;
        if (entry.begins("menu", "opened: ") && entry.at != openedAt) verdict.object(entry.line, "nobody opens it now");
    }
}

void keysWerePressed(const Transcript& transcript, Verdict& verdict) {
    if (begins(transcript)) return;
    constexpr std::string_view presses = "presses the key ";
    constexpr std::string_view equivalent = "presses Command-";
    std::set<std::string, std::less<>> pressed;
    for (const Entry& entry : transcript.entries()) {
        if (entry.begins("participant", presses)) {
            const std::string_view key = entry.text.substr(presses.size());
            pressed.emplace(key.substr(0, key.find(',')));
        } else if (entry.begins("participant", equivalent)) {
            const std::string_view key = entry.text.substr(equivalent.size());
            const char letter = key.empty() ? ' ' : key.front();
            pressed.insert(std::string("cmd+") +
                           static_cast<char>(letter >= 'A' && letter <= 'Z' ? letter - 'A' + 'a' : letter));
        } else if (entry.is("participant", "presses Return")) {
            pressed.insert("return");
        }
        if (!entry.is("key")) continue;
        const std::string_view key = entry.text.substr(0, entry.text.find(' '));
        if (pressed.find(key) == pressed.end()) verdict.object(entry.line, "nobody has pressed this key");
    }
}

}  // namespace vantrel::simulation
