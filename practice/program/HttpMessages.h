#pragma once

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>

#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

using HttpRequest = boost::beast::http::request<boost::beast::http::string_body>;
using HttpResponse = boost::beast::http::response<boost::beast::http::string_body>;

/// The request as received, with its headers sorted by name.
PracticeRequest practiceRequest(HttpRequest message);

/// The reply with its length, on a connection that closes after it. Leaves out a header that contains a line break.
HttpResponse httpResponse(PracticeReply reply);

}  // namespace vantrel::practice
