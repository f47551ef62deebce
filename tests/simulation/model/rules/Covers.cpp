#include "tests/simulation/model/rules/Covers.h"

#include <array>
#include <map>
#include <string>

namespace vantrel::simulation {
namespace {

struct Covers {
    int open = 0;
    int hidden = 0;
};

/// "VERB FRAME" or "VERB FRAME on level N": the frame; empty with another verb.
std::string_view frameAfter(const Entry& entry, std::string_view verb) {
    if (!entry.begins("overlay", verb)) return {};
    const std::string_view frame = entry.text.substr(verb.size());
    return frame.substr(0, frame.find(" on "));
}

}  // namespace

void coversWereShown(const Transcript& transcript, Verdict& verdict) {
    if (!transcript.entries().empty() && transcript.entries().front().is("prelude")) return;
    std::map<std::string_view, Covers> frames;
    bool closedBySomebody = false;
    for (const Entry& entry : transcript.entries()) {
        closedBySomebody = closedBySomebody || entry.begins("fault", "the cover of display ");
        if (!entry.is("overlay")) continue;
        const std::string_view shown = frameAfter(entry, "is shown at ");
        const std::string_view hidden = frameAfter(entry, "is hidden at ");
        const std::string_view closed = frameAfter(entry, "is closed at ");
        if (!shown.empty()) ++frames[shown].open;
        if (!hidden.empty() && ++frames[hidden].hidden > frames[hidden].open && !closedBySomebody)
            verdict.object(entry.line, "no cover is there");
        if (closed.empty()) continue;
        Covers& covers = frames[closed];
        if (covers.open < 1) verdict.object(entry.line, "no cover is there");
        if (covers.hidden < 1 && !closedBySomebody) verdict.object(entry.line, "it was not hidden before");
        --covers.open;
        --covers.hidden;
    }
}

}  // namespace vantrel::simulation
