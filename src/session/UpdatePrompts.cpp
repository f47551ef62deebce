#include "session/UpdatePrompts.h"

namespace vantrel {
namespace {

constexpr const char* openPage = "Apri pagina download";

}  // namespace

void UpdatePrompts::showRequiredUpdate(const std::string& message, const std::string& downloadUrl) {
    Alert alert{AlertStyle::warning, "Aggiornamento Vantrel richiesto", message, {"OK"}};
    if (!downloadUrl.empty()) alert.buttons = {openPage, "Annulla"};
    const bool first = alerts_.runModal(alert) == 0;
    if (first && !downloadUrl.empty()) openDownloadPage(downloadUrl);
}

void UpdatePrompts::openDownloadPage(const std::string& downloadUrl) {
    if (const auto page = urls_.form(downloadUrl)) workspace_.open(*page);
}

}  // namespace vantrel
