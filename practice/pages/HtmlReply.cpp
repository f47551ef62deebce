#include "practice/pages/HtmlReply.h"

#include <utility>

namespace vantrel::practice {

PracticeReply htmlReply(int status, std::string html) {
    PracticeReply reply;
    reply.status = status;
    reply.contentType = "text/html; charset=utf-8";
    reply.body = std::move(html);
    reply.headers.emplace_back("Cache-Control", "no-store");
    reply.headers.emplace_back("Content-Security-Policy",
                               "default-src 'none'; script-src 'self'; style-src 'self'; connect-src 'self'; "
                               "img-src data:; base-uri 'none'; form-action 'none'; frame-ancestors 'none'");
    return reply;
}

}  // namespace vantrel::practice
