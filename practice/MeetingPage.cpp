#include "practice/MeetingPage.h"

#include <array>
#include <cstddef>
#include <string>

#include "practice/HtmlReply.h"
#include "practice/HtmlText.h"

namespace vantrel::practice {

namespace {

constexpr std::string_view style = R"css(
*{box-sizing:border-box}
html,body{height:100%;margin:0}
body{display:flex;flex-direction:column;background:#14181f;color:#e9edf3;
 font:16px/1.4 "Helvetica Neue",Helvetica,"DejaVu Sans",Arial,sans-serif}
header{display:flex;align-items:center;gap:16px;padding:16px 24px;background:#1b212b;border-bottom:1px solid #2a3240}
h1{font-size:20px;font-weight:600;margin:0;flex:1;overflow:hidden;text-overflow:ellipsis;white-space:nowrap}
.code{display:inline-block;font:600 14px/1 monospace;letter-spacing:.08em;padding:8px 12px;border-radius:8px;background:#263042;color:#b9c9e6}
.clock{font-variant-numeric:tabular-nums;font-size:18px;color:#b9c9e6}
main{flex:1;min-height:0;display:flex;flex-wrap:wrap;gap:14px;padding:20px 24px;justify-content:center;
 align-content:safe center;overflow:auto}
.tile{position:relative;overflow:hidden;border-radius:14px;background:#232b38;display:flex;align-items:flex-end;
 justify-content:center;width:calc((100% - 28px)/3);height:calc((100% - 14px)/2);min-height:180px}
.tile.speaking{box-shadow:inset 0 0 0 3px #5fbf8f}
.face{position:relative;width:132px;height:150px;transform:scale(1.7);transform-origin:bottom}
.head{position:absolute;left:34px;top:16px;width:64px;height:78px;border-radius:46% 46% 50% 50%;background:var(--skin);
 z-index:1}
.hair{position:absolute;left:28px;top:4px;width:76px;height:60px;border-radius:50% 50% 34% 34%;background:var(--hair)}
.head:before{content:"";position:absolute;left:-1px;top:-8px;width:66px;height:26px;border-radius:60% 60% 40% 40%;
 background:var(--hair)}
.eye{position:absolute;top:34px;width:8px;height:8px;border-radius:50%;background:#2a211c;animation:blink 5.2s infinite}
.eye.left{left:15px}
.eye.right{right:15px}
.mouth{position:absolute;left:22px;top:54px;width:20px;height:9px;border-radius:0 0 20px 20px;background:#9a4a44}
.speaking .mouth{animation:talk .42s infinite alternate}
.body{position:absolute;left:4px;bottom:0;width:124px;height:62px;border-radius:60px 60px 0 0;background:var(--coat)}
.neck{position:absolute;left:52px;bottom:44px;width:28px;height:26px;border-radius:0 0 14px 14px;background:var(--skin);
 filter:brightness(.86)}
.name{position:absolute;left:10px;bottom:10px;z-index:2;max-width:calc(100% - 20px);padding:4px 10px;border-radius:8px;
 background:#000000a6;font-size:14px;overflow:hidden;text-overflow:ellipsis;white-space:nowrap}
footer{padding:12px 24px;background:#1b212b;border-top:1px solid #2a3240;color:#8d9ab0;font-size:13px;display:flex;
 justify-content:space-between;gap:16px}
.note{flex:1;display:flex;flex-direction:column;align-items:center;justify-content:center;text-align:center;padding:24px}
.note h2{margin:0 0 8px;font-size:28px;font-weight:600}
.note p{margin:0;color:#b9c9e6}
@keyframes blink{0%,94%,100%{transform:scaleY(1)}97%{transform:scaleY(.1)}}
@keyframes talk{from{height:4px}to{height:13px}}
@media (max-width:900px){.tile{width:calc((100% - 14px)/2);height:calc((100% - 28px)/3)}.face{transform:none}}
@media (max-height:560px){.face{transform:none}}
@media (prefers-reduced-motion:reduce){*{animation:none!important}}
)css";

constexpr std::string_view script = R"js(
const opened=Date.now(),two=n=>String(n).padStart(2,"0");
function tick(){
 const now=new Date(),passed=Math.floor((Date.now()-opened)/1000);
 document.getElementById("clock").textContent=two(now.getHours())+":"+two(now.getMinutes())+":"+two(now.getSeconds());
 document.getElementById("passed").textContent="In riunione da "+two(Math.floor(passed/60))+":"+two(passed%60);
}
tick();
setInterval(tick,1000);
)js";

struct Face {
    std::string_view skin;
    std::string_view hair;
    std::string_view coat;
};

constexpr std::array<Face, 6> faces{{{"#e8b996", "#3a2a20", "#3d5a80"},
                                     {"#c98d66", "#1f1a17", "#6a4c7d"},
                                     {"#f0c9a8", "#8a5a2b", "#4f7a5b"},
                                     {"#8d5a3c", "#17120f", "#a3593f"},
                                     {"#f3d3b5", "#b9843c", "#54606f"},
                                     {"#d7a27c", "#6b6f76", "#7a3e54"}}};

constexpr std::array<std::string_view, 3> classmates{"Giulia", "Tommaso", "Amina"};

std::string page(const std::string& title, const std::string& body) {
    std::string html;
    html += "<!doctype html>\n<html lang=\"it\">\n<head>\n<meta charset=\"utf-8\">\n";
    html += "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\">\n";
    // Without it a browser asks for /favicon.ico, which would stand among what was received.
    html += "<link rel=\"icon\" href=\"data:,\">\n";
    html += "<title>" + title + "</title>\n<style>";
    html += style;
    html += "</style>\n</head>\n<body>\n" + body + "</body>\n</html>\n";
    return html;
}

std::string tile(const std::string& name, std::size_t number) {
    const Face& face = faces[number % faces.size()];
    std::string html = number == 0 ? "<section class=\"tile speaking\"" : "<section class=\"tile\"";
    html.append(" style=\"--skin:").append(face.skin).append(";--hair:").append(face.hair);
    html.append(";--coat:").append(face.coat).append("\"><div class=\"face\" aria-hidden=\"true\">");
    html += "<div class=\"hair\"></div><div class=\"body\"></div><div class=\"neck\"></div><div class=\"head\">";
    html += "<div class=\"eye left\"></div><div class=\"eye right\"></div><div class=\"mouth\"></div></div></div>";
    html += "<div class=\"name\">" + htmlText(name) + "</div></section>\n";
    return html;
}

std::string note(const std::string& heading, const std::string& text) {
    return "<div class=\"note\"><h2>" + heading + "</h2><p>" + text + "</p></div>\n";
}

}  // namespace

PracticeReply meetingPage(const PracticeSession& session, const std::vector<PracticeParticipant>& participants) {
    const std::string title = htmlText(session.title);
    std::string body = "<header><h1>" + title + "</h1><span class=\"code\">" + htmlText(session.code) +
                       "</span><span class=\"clock\" id=\"clock\"></span></header>\n";
    if (session.status == SessionStatus::ended) {
        body += note("La lezione è terminata", "Puoi chiudere questa finestra.");
    } else {
        body += "<main>\n" + tile("Formatrice", 0);
        std::size_t number = 1;
        for (const PracticeParticipant& participant : participants) {
            if (participant.sessionCode == session.code && !participant.leftAt) {
                body += tile(participant.fullName, number++);
            }
        }
        for (const std::string_view name : classmates) body += tile(std::string(name), number++);
        body += "</main>\n";
    }
    body +=
        "<footer><span>Riunione di prova: nessun audio né video lascia questo computer.</span>"
        "<span id=\"passed\"></span></footer>\n<script>";
    body += script;
    body += "</script>\n";
    return htmlReply(200, page(title, body));
}

PracticeReply unknownMeetingPage(std::string_view code) {
    return htmlReply(404, page("Riunione non trovata",
                               note("Riunione non trovata", "Nessuna lezione ha il codice <span class=\"code\">" +
                                                                htmlText(code) + "</span>.")));
}

}  // namespace vantrel::practice
