#include "session/UpdatePrompts.h"

namespace vantrel {
namespace {

constexpr const char* openPage = "Apri pagina download";

}  // namespace

void UpdatePrompts::showUpdate(const UpdateOffer& offer, const std::string& clientVersion) {
    if (offer.severity == "info") return;
    const auto notes = offer.releaseNotes.empty() ? "" : "\n\nNote di rilascio:\n" + offer.releaseNotes;
    if (offer.severity == "required") {
        alerts_.runModal({AlertStyle::warning,
                          "Aggiornamento Vantrel obbligatorio",
                          "È disponibile la versione " + offer.latestVersion +
                              ", che è obbligatoria per partecipare alle sessioni." + notes,
                          {openPage}});
        openDownloadPage(offer.downloadUrl);
        return;
    }
    const auto chosen = alerts_.runModal(
        {AlertStyle::informational,
         "Aggiornamento Vantrel consigliato",
         "È disponibile la versione " + offer.latestVersion + " (la tua è " + clientVersion + ")." + notes,
         {openPage, "Più tardi"}});
    if (chosen == 0) openDownloadPage(offer.downloadUrl);
}

void UpdatePrompts::showRequiredUpdate(const std::string& message, const std::string& downloadUrl) {
    Alert alert{AlertStyle::warning, "Aggiornamento Vantrel richiesto", message, {"OK"}};
    if (!downloadUrl.empty()) alert.buttons = {openPage, "Annulla"};
    if (alerts_.runModal(alert) == 0) openDownloadPage(downloadUrl);
}

void UpdatePrompts::openDownloadPage(const std::string& downloadUrl) {
    if (downloadUrl.empty()) return;
    if (const auto page = urls_.form(downloadUrl)) workspace_.open(*page);
}

}  // namespace vantrel
