#include "tests/simulation/model/rules/Endings.h"

namespace vantrel::simulation {

void noMisuse(const Transcript& transcript, Verdict& verdict) {
    for (const Entry& entry : transcript.entries()) {
        if (entry.is("misuse")) verdict.object(entry.line, std::string(entry.text));
    }
}

void oneEndForEachLockdown(const Transcript& transcript, Verdict& verdict) {
    bool stands = false;
    for (const Entry& entry : transcript.entries()) {
        if (entry.is("prelude")) stands = true;  // what stood then is not told
        if (entry.is("log", "🔒 ATTIVAZIONE LOCKDOWN")) stands = true;
        if (!entry.begins("log", "[SESSION] Fine sessione: ")) continue;
        if (!stands) verdict.object(entry.line, "a session ends though no lockdown stands");
        stands = false;
    }
}

}  // namespace vantrel::simulation
