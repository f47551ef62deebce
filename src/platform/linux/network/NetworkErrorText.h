#pragma once

#include <curl/curl.h>

#include <string>
#include <string_view>

namespace vantrel::linuxdesktop {

inline constexpr std::string_view timeOutText = "La richiesta è scaduta.";
inline constexpr std::string_view unsupportedURLText = "URL non supportato";
inline constexpr std::string_view badURLText = "URL non valido";
inline constexpr std::string_view cancelledText = "annullato";
inline constexpr std::string_view connectionLostText = "La connessione di rete è stata persa.";
inline constexpr std::string_view notConnectedText = "Impossibile connettersi al server.";
inline constexpr std::string_view tooManyRedirectsText = "Troppi reindirizzamenti HTTP.";
inline constexpr std::string_view insecureRedirectText = "Il server rimanda a una connessione non protetta.";
inline constexpr std::string_view unreadableReplyText = "Impossibile analizzare la risposta.";
inline constexpr std::string_view tooLargeText = "La risposta del server è troppo grande.";

/// What the user is told about a failed transport.
std::string networkErrorText(CURLcode error);

}  // namespace vantrel::linuxdesktop
