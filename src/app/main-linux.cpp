#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "app/ApplicationMain.h"
#include "platform/linux/LinuxComputer.h"
#include "platform/linux/system/CommandLineAnswer.h"
#include "platform/linux/system/ProcessEnd.h"
#include "platform/linux/system/StandardStreams.h"
#include "session/ClientVersion.h"

namespace {

const char* explanation(vantrel::linuxdesktop::NoComputer reason) {
    using vantrel::linuxdesktop::NoComputer;
    switch (reason) {
        case NoComputer::wayland:
            return "Vantrel non può essere eseguito in una sessione Wayland: esci e scegli una sessione X11 (Xorg).\n"
                   "Vantrel cannot run in a Wayland session: log out and choose an X11 (Xorg) session.\n";
        case NoComputer::relativeHome:
            return "Vantrel richiede una cartella Inizio: la variabile HOME non è un percorso assoluto.\n"
                   "Vantrel needs a home folder: the HOME variable is not an absolute path.\n";
        case NoComputer::noWindowManager:
            return "Vantrel richiede un gestore di finestre: su questo desktop non ne è attivo nessuno.\n"
                   "Vantrel needs a window manager: none is running on this desktop.\n";
        case NoComputer::noFullScreen:
            return "Vantrel richiede un gestore di finestre con lo schermo intero: quello attivo non lo offre.\n"
                   "Vantrel needs a window manager with full screen: the one that is running has none.\n";
        case NoComputer::losesFullScreen:
            return "Vantrel richiede un gestore di finestre che mantiene lo schermo intero: quello attivo "
                   "lo toglie quando un'altra finestra riceve la tastiera.\n"
                   "Vantrel needs a window manager that keeps full screen: the one that is running "
                   "takes it away when another window gets the keyboard.\n";
        case NoComputer::noX11Display:
            break;
    }
    return "Vantrel richiede una sessione X11: nessun display X11 raggiungibile (variabile DISPLAY).\n"
           "Vantrel needs an X11 session: no X11 display can be reached (DISPLAY variable).\n";
}

int refuse(vantrel::linuxdesktop::NoComputer reason) {
    std::fputs(explanation(reason), stderr);
    return EXIT_FAILURE;
}

}  // namespace

int main(int argc, char** argv) {
    vantrel::linuxdesktop::openMissingStandardStreams();
    const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    if (const auto answer = vantrel::linuxdesktop::CommandLineAnswer::to(arguments, vantrel::fixedClientVersion)) {
        std::fputs(answer->text.c_str(), answer->status == 0 ? stdout : stderr);
        return answer->status;
    }
    auto reason = vantrel::linuxdesktop::NoComputer::noX11Display;
    const auto desktop = vantrel::linuxdesktop::LinuxComputer::create(vantrel::linuxdesktop::endProcess, reason);
    if (!desktop) return refuse(reason);
    if (const auto missing = desktop->whyNoClassCanBegin()) return refuse(*missing);
    vantrel::Computer computer = desktop->computer();
    vantrel::applicationMain(computer);
    vantrel::linuxdesktop::endProcess();
}
