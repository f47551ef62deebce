#include "platform/linux/system/CommandLineAnswer.h"

namespace vantrel::linuxdesktop {

namespace {

constexpr std::string_view helpText =
    "Uso: vantrel [--help | --version]\n"
    "Apre Vantrel, che tiene il computer sulla riunione di una lezione finché la lezione dura. Nella finestra si\n"
    "scrivono l'indirizzo del server, il codice della sessione, nome ed e-mail. Una sessione si termina da\n"
    "\"🔒 Vantrel\", che compare quando il puntatore tocca il bordo superiore dello schermo.\n"
    "\n"
    "  --help, -h    mostra questo testo\n"
    "  --version     mostra la versione\n"
    "\n"
    "Serve una sessione X11 con un gestore di finestre. Server, nome ed e-mail restano in\n"
    "~/.config/vantrel/defaults.json. Ogni evento è una riga sullo standard output.\n"
    "\n"
    "Usage: vantrel [--help | --version]\n"
    "Opens Vantrel, which keeps the computer on the meeting of a class while the class lasts. It needs an X11 session\n"
    "with a window manager. A session is ended from \"🔒 Vantrel\", which appears when the pointer touches the top "
    "edge\n"
    "of the screen. Each event is a line on standard output. Exit status: 0; 1 where it cannot run; 2 for an argument\n"
    "that it does not know.\n";

constexpr int unknownArgument = 2;

}  // namespace

std::optional<CommandLineAnswer> CommandLineAnswer::to(const std::vector<std::string_view>& arguments,
                                                       std::string_view version) {
    if (arguments.empty()) return std::nullopt;
    const std::string_view first = arguments.front();
    if (first == "--help" || first == "-h") return CommandLineAnswer{0, std::string(helpText)};
    if (first == "--version") return CommandLineAnswer{0, "Vantrel " + std::string(version) + "\n"};
    return CommandLineAnswer{
        unknownArgument, "vantrel: argomento sconosciuto / unknown argument: " + std::string(first) + " (--help)\n"};
}

}  // namespace vantrel::linuxdesktop
