#include <cstdio>
#include <cstdlib>

#include "app/ApplicationMain.h"
#include "platform/linux/LinuxComputer.h"
#include "platform/linux/system/StandardStreams.h"
#include "platform/portable/UnreadLines.h"

namespace {

void explain(vantrel::linuxdesktop::NoComputer reason) {
    if (reason == vantrel::linuxdesktop::NoComputer::wayland) {
        std::fputs(
            "Vantrel non può essere eseguito in una sessione Wayland: esci e scegli una sessione X11 (Xorg).\n"
            "Vantrel cannot run in a Wayland session: log out and choose an X11 (Xorg) session.\n",
            stderr);
    } else if (reason == vantrel::linuxdesktop::NoComputer::relativeHome) {
        std::fputs(
            "Vantrel richiede una cartella Inizio: la variabile HOME non è un percorso assoluto.\n"
            "Vantrel needs a home folder: the HOME variable is not an absolute path.\n",
            stderr);
    } else {
        std::fputs(
            "Vantrel richiede una sessione X11: nessun display X11 raggiungibile (variabile DISPLAY).\n"
            "Vantrel needs an X11 session: no X11 display can be reached (DISPLAY variable).\n",
            stderr);
    }
}

// On macOS the process is gone as soon as it may terminate, including everything that sleeps in the background.
// Destructors would wait for that.
[[noreturn]] void endProcess() {
    vantrel::UnreadLines::endAll();
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

}  // namespace

int main() {
    vantrel::linuxdesktop::openMissingStandardStreams();
    auto reason = vantrel::linuxdesktop::NoComputer::noX11Display;
    const auto desktop = vantrel::linuxdesktop::LinuxComputer::create(endProcess, reason);
    if (!desktop) {
        explain(reason);
        return EXIT_FAILURE;
    }
    vantrel::Computer computer = desktop->computer();
    vantrel::applicationMain(computer);
    endProcess();
}
