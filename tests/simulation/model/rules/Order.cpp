#include "tests/simulation/model/rules/Order.h"

namespace vantrel::simulation {

void everyLineCanBeRead(const Transcript& transcript, Verdict& verdict) {
    for (const std::size_t line : transcript.unreadable()) verdict.object(line, "it is no entry");
}

void timeNeverGoesBack(const Transcript& transcript, Verdict& verdict) {
    std::int64_t before = 0;
    for (const Entry& entry : transcript.entries()) {
        if (entry.is("misuse")) continue;
        if (entry.at < before) verdict.object(entry.line, "it is earlier than the line before");
        before = entry.at;
    }
}

void noMisuse(const Transcript& transcript, Verdict& verdict) {
    for (const Entry& entry : transcript.entries()) {
        if (entry.is("misuse")) verdict.object(entry.line, std::string(entry.text));
    }
}

void oneEndOfTheRun(const Transcript& transcript, Verdict& verdict) {
    bool ended = false;
    for (const Entry& entry : transcript.entries()) {
        if (entry.is("misuse")) continue;
        if (ended) verdict.object(entry.line, "the run was over");
        ended = ended || entry.is("end");
    }
    if (!ended) verdict.object(0, "the transcript has no end");
}

}  // namespace vantrel::simulation
