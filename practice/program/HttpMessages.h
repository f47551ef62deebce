#pragma once

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>

#include "practice/messages/PracticeReply.h"
#include "practice/messages/PracticeRequest.h"

namespace vantrel::practice {

using HttpRequest = boost::beast::http::request<boost::beast::http::string_body>;
using HttpResponse = boost::beast::http::response<boost::beast::http::string_body>;

/// The request as it came in, its headers sorted by name.
PracticeRequest practiceRequest(HttpRequest message);

/// The reply with its length, on a connection that closes after it. A header that a line break would split is left out.
HttpResponse httpResponse(PracticeReply reply);

}  // namespace vantrel::practice
