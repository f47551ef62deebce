#include "practice/exchanges/PageFileExchanges.h"

#include <array>
#include <string>
#include <string_view>

#include "practice/messages/JsonReply.h"
#include "practice/pages/PageFiles.h"

namespace vantrel::practice {

namespace {

constexpr std::string_view script = "text/javascript; charset=utf-8";
constexpr std::string_view style = "text/css; charset=utf-8";

struct PageFile {
    std::string_view path;
    std::string_view contentType;
    std::string_view content;
};

std::array<PageFile, 8> files() {
    return {{{"/pages/meeting.css", style, pagefiles::meetingCss},
             {"/pages/meeting-contact.js", script, pagefiles::meetingContactJs},
             {"/pages/meeting-devices.js", script, pagefiles::meetingDevicesJs},
             {"/pages/meeting.js", script, pagefiles::meetingJs},
             {"/pages/trainer.css", style, pagefiles::trainerCss},
             {"/pages/trainer.js", script, pagefiles::trainerJs},
             {"/pages/trainer-news.js", script, pagefiles::trainerNewsJs},
             {"/pages/trainer-nodes.js", script, pagefiles::trainerNodesJs}}};
}

}  // namespace

bool PageFileExchanges::isPageFile(const RequestTarget& target) {
    return !target.segments().empty() && target.segments().front() == "pages";
}

PracticeReply PageFileExchanges::handle(const PracticeRequest& request, const RequestTarget& target) {
    for (const PageFile& file : files()) {
        if (file.path != target.path()) continue;
        if (request.method != "GET") return methodNotAllowed("GET");
        PracticeReply reply;
        reply.contentType = file.contentType;
        reply.body = file.content;
        reply.headers.emplace_back("Cache-Control", "no-store");
        return reply;
    }
    return notFound();
}

}  // namespace vantrel::practice
