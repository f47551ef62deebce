#pragma once

#include <string>
#include <vector>

#include "practice/configuration/PracticeSession.h"

namespace vantrel::practice {

/// What the server answers about client versions.
struct VersionConfiguration {
    /// The newest version. Empty: there is never an update.
    std::string latest;
    /// "info", "recommended", "required", or any text that a test wants to be answered.
    std::string severity = "recommended";
    std::string releaseNotes;
    std::string downloadUrl;
    /// The oldest version that may join. Empty: any.
    std::string minimum;
    /// The message of a refused join.
    std::string minimumMessage =
        "Questa versione di Vantrel non è più supportata. Installa quella nuova per partecipare.";
};

struct PracticeConfiguration {
    std::vector<PracticeSession> sessions;
    VersionConfiguration version;
    /// The address under which participants reach the server, for meeting links. Empty: taken from each request's Host
    /// header.
    std::string publicAddress;
    /// The password of the trainer's page and the control interface. Empty: none is needed.
    std::string trainerPassword;
    /// After this many seconds without a heartbeat the trainer's page shows a participant as lost: two and a half of
    /// the client's intervals, and a little more for transmission.
    double contactLostAfterSeconds = 40;
};

}  // namespace vantrel::practice
