#include "tests/simulation/model/acts/Blackout.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "tests/simulation/model/reading/Words.h"

namespace vantrel::simulation {
namespace {

constexpr std::array<std::string_view, 5> coverText{"🔒", "Vantrel", "Sessione di formazione protetta in corso",
                                                    "Lo schermo principale è bloccato sulla riunione Meet.",
                                                    "Questo monitor è temporaneamente disabilitato."};

/// The most by which two frames differ in one of their values.
double differenceOf(const Display& one, const Display& other) {
    return std::max({std::abs(one.x - other.x), std::abs(one.y - other.y), std::abs(one.width - other.width),
                     std::abs(one.height - other.height)});
}

constexpr double tolerance = 1.0;

bool areClose(const Display& one, const Display& other) {
    return differenceOf(one, other) < tolerance;
}

bool areEqual(const Display& one, const Display& other) {
    return one.x == other.x && one.y == other.y && one.width == other.width && one.height == other.height;
}

Display frameIn(Words& words) {
    Display frame;
    for (double* value : {&frame.x, &frame.y, &frame.width, &frame.height}) {
        *value = words.number().value_or(-1e9);
        if (!words.skip(", ")) words.skip(" ");
    }
    return frame;
}

/// "is shown at X Y W H on level 1000" with the notice: its frame.
std::optional<Display> readShown(Stage& stage) {
    const Entry* const shown = stage.acceptBeginning("overlay", "is shown at ");
    if (shown == nullptr) return std::nullopt;
    Words words(shown->text.substr(std::string_view("is shown at ").size()));
    const Display frame = frameIn(words);
    if (words.rest() != "on level 1000") stage.depart(shown->line, "a cover lies on level 1000");
    if (!std::equal(shown->further.begin(), shown->further.end(), coverText.begin(), coverText.end())) {
        stage.depart(shown->line, "a cover shows its notice");
    }
    return frame;
}

/// Covers this display, if that comes next.
bool readCover(Stage& stage, const Display& display) {
    const auto shown = readShown(stage);
    if (!shown) return false;
    const Entry* const log = stage.expectBeginning("log", "[BLACKOUT] Coperto monitor " + display.name + " (");
    if (log == nullptr) return true;
    const std::size_t bracket = log->text.rfind('(');
    Words words(log->text.substr(bracket + 1));
    const Display told = frameIn(words);
    if (words.rest() != ")") stage.depart(log->line, "a frame has four numbers");
    if (!areEqual(told, display) || !areEqual(*shown, display)) {
        stage.depart(log->line, "the cover has not the frame of its display");
    }
    stage.client().blackout.covers.push_back(display);
    return true;
}

/// Covers all displays but the excluded one; without one that is known, but any one.
void readCovers(Stage& stage, const Display* excluded) {
    Blackout& blackout = stage.client().blackout;
    blackout.covers.clear();
    int left = 0;
    // What comes next may tell of others already.
    const std::vector<Display> displays = stage.world().displays();
    for (const Display& display : displays) {
        if (stage.departed()) return;
        const bool skipped = excluded != nullptr && areClose(display, *excluded);
        const Entry* const next = stage.peek();
        const std::string log = "[BLACKOUT] Coperto monitor " + display.name + " (";
        bool here = next != nullptr && next->begins("overlay", "is shown at ");
        if (here && excluded == nullptr && left == 0) {
            Words words(next->text.substr(std::string_view("is shown at ").size()));
            here = areEqual(frameIn(words), display);
        }
        if (skipped || (!here && excluded == nullptr && left == 0)) {
            ++left;
            if (excluded == nullptr) blackout.excluded = display;
        } else if (!readCover(stage, display)) {
            stage.departAtNext("display " + display.name + " is not covered");
        }
    }
    if (blackout.covers.empty()) stage.expectLog("[BLACKOUT] Nessun monitor secondario — sistema single-monitor");
}

void closeCovers(Stage& stage) {
    for (const Display& cover : stage.client().blackout.covers) {
        for (const std::string_view verb : {"is hidden at ", "is closed at "}) {
            const Entry* entry = stage.acceptBeginning("overlay", verb);
            if (entry == nullptr) {
                // Of one that somebody has closed there is nothing to hide.
                if (verb.starts_with("is hidden")) continue;
                return stage.departAtNext("a cover is closed");
            }
            Words words(entry->text.substr(verb.size()));
            if (!areEqual(frameIn(words), cover)) stage.depart(entry->line, "the covers are closed in their order");
        }
    }
    stage.client().blackout.covers.clear();
}

}  // namespace

void beginBlackout(Stage& stage) {
    stage.turnTo("covers lie on exactly the secondary displays");
    // A change that waited in the same queue may have been heard before.
    for (Due& due : stage.dues()) {
        if (due.deed == Deed::displayChange && due.at <= stage.now()) due.sure = false;
    }
    Client& client = stage.client();
    if (!stage.scenario().separateSpaces && !stage.scenario().begins) {
        client.blackout = {};
        client.blackout.active = client.blackout.shared = true;
        stage.expectLog("[BLACKOUT] Modalità 'shared spaces' attiva — overlay non necessario");
        return;
    }
    if (stage.scenario().begins &&
        stage.accept("log", "[BLACKOUT] Modalità 'shared spaces' attiva — overlay non necessario")) {
        client.blackout.active = client.blackout.shared = true;
        return;
    }
    client.blackout = {};
    readCovers(stage, nullptr);
    const Entry* const told = stage.expectBeginning("log", "[BLACKOUT] Attivato — escluso: ");
    if (told == nullptr) return;
    const bool none = stage.world().displays().empty();
    const std::string name = none ? "?" : client.blackout.excluded.name;
    const std::string count = std::to_string(client.blackout.covers.size());
    if (told->text != "[BLACKOUT] Attivato — escluso: " + name + ", coperti: " + count) {
        stage.depart(told->line, "another display is excluded, or another number is covered");
    }
    client.blackout.active = true;
    client.blackout.raises.start(stage.now(), 3000);
}

void endBlackout(Stage& stage) {
    Blackout& blackout = stage.client().blackout;
    if (!blackout.active) return;
    closeCovers(stage);
    stage.expectLog("[BLACKOUT] Overlay deattivato");
    blackout = {};
}

void remakeCovers(Stage& stage) {
    stage.turnTo("covers are made anew when the displays change");
    Blackout& blackout = stage.client().blackout;
    stage.expectLog("[BLACKOUT] Cambio configurazione display — ricreo overlay");
    closeCovers(stage);
    std::optional<Display> kept;
    bool open = false;  // a display that differs by just the tolerance may be the same one or not
    for (const Display& display : stage.world().displays()) {
        open = open || (!kept && differenceOf(display, blackout.excluded) == tolerance);
        if (!open && !kept && areClose(display, blackout.excluded)) kept = display;
    }
    if (kept) blackout.excluded = *kept;
    readCovers(stage, kept ? &*kept : nullptr);
}

void raiseCovers(Stage& stage) {
    stage.turnTo("covers are raised every 3 seconds");
    Blackout& blackout = stage.client().blackout;
    const Entry* const first = stage.peek();
    const bool due = blackout.active && !blackout.shared && blackout.raises.on && blackout.raises.next <= first->at;
    if (!stage.strange() && (!due || stage.isHeld())) return stage.depart(first->line, "no cover is to be raised now");
    stage.waitTo(first->at);
    blackout.raises.fire(first->at);
    while (!stage.departed()) {
        const Entry* const next = stage.peek();
        if (next == nullptr || next->at != first->at || !next->is("overlay")) return;
        const Entry* raised = stage.acceptBeginning("overlay", "is raised at ");
        std::optional<Display> frame;
        if (raised != nullptr) {
            Words words(raised->text.substr(std::string_view("is raised at ").size()));
            frame = frameIn(words);
        } else if (stage.acceptBeginning("overlay", "is on level 1000 at ") == nullptr) {
            frame = readShown(stage);
            if (!frame) return;
        }
        const bool known = !frame || std::any_of(blackout.covers.begin(), blackout.covers.end(),
                                                 [&](const Display& cover) { return areEqual(cover, *frame); });
        if (!known) stage.depart(next->line, "no cover is there");
    }
}

}  // namespace vantrel::simulation
