#include "platform/linux/network/NetworkErrorText.h"

namespace vantrel::linuxdesktop {

std::string networkErrorText(CURLcode error) {
    switch (error) {
        case CURLE_COULDNT_CONNECT:
        case CURLE_PROXY:
            return std::string(notConnectedText);
        case CURLE_GOT_NOTHING:
        case CURLE_PARTIAL_FILE:
        case CURLE_RECV_ERROR:
        case CURLE_SEND_ERROR:
            return std::string(connectionLostText);
        case CURLE_COULDNT_RESOLVE_HOST:
        case CURLE_COULDNT_RESOLVE_PROXY:
            return "Impossibile trovare un server con il nome host specificato.";
        case CURLE_OPERATION_TIMEDOUT:
            return std::string(timeOutText);
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CERTPROBLEM:
        case CURLE_SSL_CACERT_BADFILE:
        case CURLE_SSL_CIPHER:
        case CURLE_SSL_ISSUER_ERROR:
            return "Si è verificato un errore SSL, impossibile stabilire una connessione protetta al server.";
        case CURLE_URL_MALFORMAT:
            return std::string(badURLText);
        // The scheme is known to be supported: it is the reply that is not HTTP.
        case CURLE_UNSUPPORTED_PROTOCOL:
        case CURLE_WEIRD_SERVER_REPLY:
        case CURLE_BAD_CONTENT_ENCODING:
            return std::string(unreadableReplyText);
        default:
            return curl_easy_strerror(error);
    }
}

}  // namespace vantrel::linuxdesktop
