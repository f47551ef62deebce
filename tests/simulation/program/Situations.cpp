#include "tests/simulation/program/Situations.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <sstream>
#include <string_view>
#include <utility>

namespace vantrel::simulation {
namespace {

struct Meaning {
    std::string_view part;
    std::string_view situation;
};

/// What the log says before an end.
constexpr std::array causes = {
    Meaning{"[HEARTBEAT] Sessione terminata dal backend", "by the server"},
    Meaning{"[HEARTBEAT] Troppi errori", "by twenty failed heartbeats"},
    Meaning{"non in esecuzione — fine sessione", "the browser does not run"},
    Meaning{"Finestra chiusa da fullscreen", "the window is gone, which was in full screen"},
    Meaning{"Finestra chiusa con X", "the window is gone, which was not in full screen"},
    Meaning{"Utente cambiato a Space diverso", "another Space"},
};

/// What a fault is, without the names and numbers in it.
constexpr std::array faults = {
    Meaning{"JSON serialisations that fail", "serialisations of JSON fail"},
    Meaning{"no URL is formed", "addresses form no URL"},
    Meaning{"no address is opened", "addresses are not opened"},
    Meaning{"the cover of display", "a cover is closed"},
    Meaning{"no keyboard tap is given", "no keyboard tap is given"},
    Meaning{"main thread hangs", "the main thread hangs"},
    Meaning{"the window list cannot be read", "the window list cannot be read"},
    Meaning{"reads of AXFullScreen", "reads of AXFullScreen fail"},
    Meaning{"reads of AXWindows", "reads of AXWindows fail"},
    Meaning{"reads of", "reads of other attributes fail"},
    Meaning{"writes of AXFullScreen", "writes of AXFullScreen fail"},
    Meaning{"writes of", "writes of other attributes fail"},
    Meaning{"actions of", "actions of elements fail"},
    Meaning{"does not answer", "an application does not answer"},
};

constexpr std::array deeds = {"types into",
                              "presses the key",
                              "presses",
                              "answers the permission prompt",
                              "answers",
                              "opens the status menu",
                              "opens the menu",
                              "chooses",
                              "closes the menu",
                              "closes the window",
                              "logs out",
                              "brings to the front",
                              "starts",
                              "quits",
                              "kills",
                              "moves the window",
                              "resizes the window",
                              "minimises",
                              "restores",
                              "closes",
                              "opens",
                              "toggles full screen",
                              "hides all but",
                              "swipes to the left",
                              "swipes to the right"};

constexpr std::array replyWords = {"status", "body",   "body-base64", "body-size",   "location", "delay",
                                   "pieces", "stalls", "drops",       "never-comes", "not-http", "error"};

class Reader {
  public:
    Counts read(const std::string& scenario, const std::string& transcript) {
        readScenario(scenario);
        std::istringstream lines(transcript);
        for (std::string line; std::getline(lines, line);) {
            constexpr std::size_t kindWidth = 11;
            const auto number = line.find_first_not_of(' ');
            if (number == std::string::npos) continue;
            if (line[number] == '|') {
                if (listsDisplays_) ++displays_.listed;
                continue;
            }
            finishDisplays();
            const auto kind = line.find("  ", number) + 2;
            if (kind < 2 || kind + kindWidth + 2 > line.size()) continue;
            entry(line.substr(kind, line.find("  ", kind) - kind), line.substr(kind + kindWidth + 2));
        }
        finishDisplays();
        if (lockdowns_ > 0) note("classes: with a lockdown");
        if (lockdowns_ > 1) note("classes: with more than one lockdown");
        note("classes: all");
        for (auto& [situation, count] : counts_) count.classes = 1;
        return std::move(counts_);
    }

  private:
    struct Displays {
        int listed = 0;
        int before = -1;
    };

    void readScenario(const std::string& scenario) {
        std::istringstream lines(scenario);
        for (std::string line; std::getline(lines, line);) {
            if (line.find("{to: ") == std::string::npos) continue;
            for (const std::string word : replyWords) {
                if (line.find(", " + word + ": ") != std::string::npos) note("reply rules: " + word);
            }
        }
    }

    void entry(const std::string& kind, const std::string& text) {
        if (kind == "log") {
            log(text);
        } else if (kind == "alert") {
            alert(text);
        } else if (kind == "answer") {
            if (text.starts_with("[Termina] to: ")) cause_ = "chosen in the menu";
        } else if (kind == "fault") {
            meaning("faults: ", faults, text);
        } else if (kind == "displays") {
            displays(text);
        } else if (kind == "lid") {
            note("Mac: the lid is closed");
        } else if (kind == "space") {
            note("Mac: another Space shows");
        } else if (kind == "tap") {
            note("Mac: the keyboard tap " + text);
        } else if (kind == "keyboard") {
            note("Mac: " + text);
        } else if (kind == "key") {
            note(text.ends_with("is swallowed") ? "keys: swallowed" : "keys: not swallowed");
        } else if (kind == "permission") {
            note("permissions: " + text);
        } else if (kind == "overlay") {
            overlay(text);
        } else if (kind == "reply") {
            note("replies: " + text.substr(0, text.find(" from")));
        } else if (kind == "server") {
            note(text.starts_with("ends") ? "server: ends a session" : "server: " + text);
        } else if (kind == "client") {
            note("client: " + text);
        } else if (kind == "participant") {
            participant(text);
        } else if (kind == "end") {
            note("left: " + text.substr(0, text.find(':')));
        }
    }

    void log(const std::string& text) {
        if (text.find("LOCKDOWN COMPLETO E ATTIVO") != std::string::npos) {
            ++lockdowns_;
            note("lockdowns: complete");
            stands_ = true;
        }
        for (const auto& [part, situation] : causes) {
            if (text.find(part) != std::string::npos) cause_ = situation;
        }
        if (!text.starts_with("[SESSION] Fine sessione")) return;
        note("ends: " + std::exchange(cause_, "by another cause"));
        stands_ = false;
    }

    void alert(const std::string& text) {
        const auto style = text.substr(0, text.find(':'));
        const bool isNew = style == "informational" || style == "warning" || style == "critical";
        note("alerts: " + (isNew ? text.substr(text.find(':') + 2) : "(" + style + ")"));
    }

    /// How they differ from those before is known at the end of the list.
    void displays(const std::string& text) {
        if (text.starts_with("changes are noticed")) return note("displays: changes are noticed in a burst");
        listsDisplays_ = true;
        displays_.listed = 0;
    }

    void finishDisplays() {
        if (!std::exchange(listsDisplays_, false)) return;
        const int before = std::exchange(displays_.before, displays_.listed);
        if (before < 0) return note("displays: changed for the first time");
        note(displays_.listed > before   ? "displays: one more"
             : displays_.listed < before ? "displays: one fewer"
                                         : "displays: moved or resized");
    }

    void overlay(const std::string& text) {
        const auto words = text.substr(0, text.find(" at "));
        note("covers: " + words.substr(0, words.find(" on level")));
    }

    void participant(const std::string& text) {
        const auto deed =
            std::find_if(deeds.begin(), deeds.end(), [&](const char* word) { return text.starts_with(word); });
        note("participant: " + (deed == deeds.end() ? text : std::string(*deed)));
    }

    template <class Meanings>
    void meaning(const char* group, const Meanings& meanings, const std::string& text) {
        for (const auto& [part, situation] : meanings) {
            if (text.find(part) != std::string::npos) return note(group + std::string(situation));
        }
    }

    void note(const std::string& situation) {
        auto& count = counts_[situation];
        ++count.times;
        if (stands_) ++count.inLockdown;
    }

    Counts counts_;
    std::string cause_ = "by another cause";
    int lockdowns_ = 0;
    bool stands_ = false;
    bool listsDisplays_ = false;
    Displays displays_;
};

}  // namespace

Counts situations(const std::string& scenario, const std::string& transcript) {
    return Reader().read(scenario, transcript);
}

}  // namespace vantrel::simulation
