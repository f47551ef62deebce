#pragma once

#include <string_view>

namespace vantrel::linuxdesktop {

/// The program's messages on standard error when it cannot run.
constexpr std::string_view noX11Message =
    "Vantrel richiede una sessione X11: nessun display X11 raggiungibile (variabile DISPLAY).\n"
    "Vantrel needs an X11 session: no X11 display can be reached (DISPLAY variable).\n";
constexpr std::string_view waylandMessage =
    "Vantrel non può essere eseguito in una sessione Wayland: esci e scegli una sessione X11 (Xorg).\n"
    "Vantrel cannot run in a Wayland session: log out and choose an X11 (Xorg) session.\n";
constexpr std::string_view relativeHomeMessage =
    "Vantrel richiede una cartella Inizio: la variabile HOME non è un percorso assoluto.\n"
    "Vantrel needs a home folder: the HOME variable is not an absolute path.\n";
constexpr std::string_view noWindowManagerMessage =
    "Vantrel richiede un gestore di finestre: su questo desktop non ne è attivo nessuno.\n"
    "Vantrel needs a window manager: none is running on this desktop.\n";
constexpr std::string_view noFullScreenMessage =
    "Vantrel richiede un gestore di finestre con lo schermo intero: quello attivo non lo offre.\n"
    "Vantrel needs a window manager with full screen: the one that is running has none.\n";
constexpr std::string_view losesFullScreenMessage =
    "Vantrel richiede un gestore di finestre che mantiene lo schermo intero: quello attivo lo toglie quando un'altra "
    "finestra riceve la tastiera.\n"
    "Vantrel needs a window manager that keeps full screen: the one that is running takes it away when another window "
    "gets the keyboard.\n";

}  // namespace vantrel::linuxdesktop
