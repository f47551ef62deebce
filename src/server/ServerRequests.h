#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/network/JSON.h"
#include "platform/network/URLSession.h"
#include "platform/network/URLs.h"
#include "platform/threads/Dispatch.h"

namespace vantrel {

/// Makes the exchanges with the server. Any thread; holds only references to the platform.
class ServerRequests {
  public:
    ServerRequests(Dispatch& dispatch, URLs& urls, JSONSerialization& json, URLSession& session)
        : dispatch_(dispatch), urls_(urls), json_(json), session_(session) {}

    /// A request without a body. Empty if the address does not form a URL.
    std::optional<URLRequest> request(const std::string& address, const std::string& method,
                                      double timeoutSeconds) const;

    /// Gives the request a JSON body and its content type. False if the object cannot be written.
    bool attach(URLRequest& request, const JSONObject& body) const;

    void send(URLRequest request, URLSession::Completion completion) const;

    /// Sends and blocks until `completion` has run or `waitSeconds` have passed, without saying which. A late
    /// completion still runs.
    void sendAndWait(URLRequest request, double waitSeconds, URLSession::Completion completion) const;

    /// The body as a JSON object. Empty if there is no body or it is anything else.
    std::optional<JSONObject> object(const URLReply& reply) const;

  private:
    Dispatch& dispatch_;
    URLs& urls_;
    JSONSerialization& json_;
    URLSession& session_;
};

}  // namespace vantrel
