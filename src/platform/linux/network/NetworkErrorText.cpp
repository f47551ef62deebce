#include "platform/linux/network/NetworkErrorText.h"

namespace vantrel::linuxdesktop {

std::string networkErrorText(QNetworkReply::NetworkError error, const QString& fallback) {
    switch (error) {
        case QNetworkReply::ConnectionRefusedError:
        case QNetworkReply::UnknownNetworkError:
            return "Impossibile connettersi al server.";
        case QNetworkReply::RemoteHostClosedError:
        case QNetworkReply::ContentReSendError:
        case QNetworkReply::NetworkSessionFailedError:
        case QNetworkReply::TemporaryNetworkFailureError:
            return std::string(connectionLostText);
        case QNetworkReply::HostNotFoundError:
            return "Impossibile trovare un server con il nome host specificato.";
        case QNetworkReply::TimeoutError:
        case QNetworkReply::OperationCanceledError:
            return std::string(timeOutText);
        case QNetworkReply::SslHandshakeFailedError:
            return "Si è verificato un errore SSL, impossibile stabilire una connessione protetta al server.";
        case QNetworkReply::TooManyRedirectsError:
            return std::string(tooManyRedirectsText);
        case QNetworkReply::ProtocolUnknownError:
            return std::string(unsupportedURLText);
        case QNetworkReply::ProtocolFailure:
            return std::string(unreadableReplyText);
        default:
            return fallback.toStdString();
    }
}

bool isHTTPStatus(QNetworkReply::NetworkError error) {
    constexpr int firstContentError = QNetworkReply::ContentAccessDenied;
    constexpr int lastServerError = QNetworkReply::UnknownServerError;
    const bool protocol = error == QNetworkReply::ProtocolUnknownError || error == QNetworkReply::ProtocolFailure;
    // A 407 may come from a server or from a proxy.
    if (error == QNetworkReply::ProxyAuthenticationRequiredError) return true;
    return error >= firstContentError && error <= lastServerError && !protocol &&
           error != QNetworkReply::ContentReSendError;
}

}  // namespace vantrel::linuxdesktop
