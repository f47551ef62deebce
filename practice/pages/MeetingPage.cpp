#include "practice/pages/MeetingPage.h"

#include <array>
#include <cstddef>
#include <string>

#include "practice/pages/HtmlReply.h"
#include "practice/pages/HtmlText.h"
#include "practice/pages/PageFiles.h"
#include "practice/pages/PageTemplate.h"

namespace vantrel::practice {

namespace {

/// The number of faces in meeting.css.
constexpr std::size_t faces = 6;

constexpr std::array<std::string_view, 3> classmates{"Giulia", "Tommaso", "Amina"};

/// The first one is the speaker.
std::string tile(std::string_view name, std::size_t number) {
    std::string look = "face-" + std::to_string(number % faces + 1);
    std::string text = htmlText(name);
    if (number == 0) {
        look += " speaking";
        text += "<span class=\"unseen\"> (sta parlando)</span>";
    }
    return filledTemplate(pagefiles::meetingTileHtml, {{"look", look}, {"name", text}});
}

}  // namespace

PracticeReply meetingPage(const PracticeSession& session, const std::vector<PracticeParticipant>& participants) {
    const std::string title = htmlText(session.title);
    const std::string code = htmlText(session.code);
    if (session.status == SessionStatus::ended) {
        return htmlReply(200, filledTemplate(pagefiles::meetingEndedHtml, {{"title", title}, {"code", code}}));
    }
    std::string tiles = tile("Formatrice", 0);
    std::size_t number = 1;
    for (const PracticeParticipant& participant : participants) {
        if (participant.sessionCode == session.code && !participant.leftAt) {
            tiles += tile(participant.fullName, number++);
        }
    }
    for (const std::string_view name : classmates) tiles += tile(name, number++);
    return htmlReply(200, filledTemplate(pagefiles::meetingHtml, {{"title", title}, {"code", code}, {"tiles", tiles}}));
}

PracticeReply unknownMeetingPage(std::string_view code) {
    return htmlReply(404, filledTemplate(pagefiles::meetingUnknownHtml, {{"code", htmlText(code)}}));
}

}  // namespace vantrel::practice
