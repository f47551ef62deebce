#include "platform/linux/apps/LaunchErrorText.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "platform/portable/UTF8Validity.h"

namespace vantrel::linuxdesktop {

std::string launchErrorText(std::string_view executablePath, int error) {
    const std::filesystem::path path(executablePath);
    const std::string file = "“" + repairedUTF8((path.has_filename() ? path.filename() : path).string()) + "”";
    // The kernel would stop at the zero byte.
    if (executablePath.find('\0') != std::string_view::npos) return "Il nome del file " + file + " non è valido.";
    std::error_code unknown;
    const std::filesystem::file_status status = std::filesystem::status(path, unknown);
    if (std::filesystem::is_directory(status)) return file + " è una cartella e non può essere avviata.";
    switch (error) {
        case ENOENT:
            // The file exists. What is missing is the interpreter named in its first line.
            if (std::filesystem::exists(status))
                return "Il programma che deve eseguire il file " + file + " non esiste.";
            return "Il file " + file + " non esiste.";
        case ENOTDIR:
        case ELOOP:
        case ENAMETOOLONG:
            return "Il file " + file + " non esiste.";
        case EACCES:
        case EPERM:
            return "Non hai i permessi per eseguire il file " + file + ".";
        case ENOEXEC:
            return "Il file " + file + " non è un programma eseguibile.";
        case EINVAL:
            return "Gli argomenti per avviare " + file + " non sono validi.";
        case E2BIG:
            return "Gli argomenti per avviare " + file + " sono troppo lunghi.";
        default:
            return "Impossibile avviare " + file + " (errore " + std::to_string(error) + ").";
    }
}

}  // namespace vantrel::linuxdesktop
