#include "lockdown/KeyboardHookService.h"

#include "lockdown/BlockedCombination.h"

namespace vantrel {

void KeyboardHookService::start() {
    if (isActive_) return;
    if (!trust_.isProcessTrusted()) {
        log_.print("[HOOK] ⚠ Permessi Accessibilità non concessi — l'hook non funzionerà");
        trust_.isProcessTrustedWithPrompt();
        return;
    }
    eventTap_ = taps_.create(blockedCombination, [weak = weak_from_this()](std::string_view name) {
        if (const auto self = weak.lock()) self->handleBlocked(name);
    });
    if (!eventTap_) {
        log_.print("[HOOK] Impossibile creare event tap — controlla i permessi Accessibilità");
        return;
    }
    isActive_ = true;
    log_.print("[HOOK] Hook tastiera attivato");
}

void KeyboardHookService::stop() {
    if (!isActive_) return;
    eventTap_.reset();
    isActive_ = false;
    log_.print("[HOOK] Hook tastiera disattivato");
}

void KeyboardHookService::handleBlocked(std::string_view name) {
    log_.print("[HOOK] 🚫 Bloccato: " + std::string(name));
    if (onKeyBlocked) onKeyBlocked(std::string(name));
}

}  // namespace vantrel
