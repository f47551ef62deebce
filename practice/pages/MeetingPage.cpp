#include "practice/pages/MeetingPage.h"

#include <array>
#include <cstddef>
#include <string>

#include "practice/pages/HtmlReply.h"
#include "practice/pages/HtmlText.h"

namespace vantrel::practice {

namespace {

constexpr std::string_view style = R"css(
*{box-sizing:border-box}
html,body{height:100%;margin:0}
html{color-scheme:dark}
body{display:flex;flex-direction:column;background:#14181f;color:#e9edf3;
 font:16px/1.4 "Helvetica Neue",Helvetica,"DejaVu Sans",Arial,sans-serif}
header{display:flex;align-items:center;gap:16px;padding:16px 24px;background:#1b212b;border-bottom:1px solid #2a3240}
h1{font-size:20px;font-weight:600;margin:0;flex:1;overflow:hidden;text-overflow:ellipsis;white-space:nowrap}
.code{display:inline-block;font:600 14px/1 monospace;letter-spacing:.08em;padding:8px 12px;border-radius:8px;background:#263042;color:#b9c9e6}
.clock{font-variant-numeric:tabular-nums;font-size:18px;color:#b9c9e6}
.room{flex:1;min-height:0;display:flex}
main{flex:1;min-width:0;display:flex;flex-wrap:wrap;gap:14px;padding:20px 24px;justify-content:center;
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
.chat{flex:none;width:360px;min-height:0;display:flex;flex-direction:column;background:#1b212b;border-left:1px solid #2a3240}
.chat h2{margin:0;padding:16px 20px 12px;font-size:15px;font-weight:600;color:#b9c9e6}
.chat ol{flex:1;min-height:0;margin:0;padding:4px 20px 12px;overflow:auto;list-style:none;display:flex;
 flex-direction:column;gap:10px}
.chat li{max-width:88%;padding:9px 13px;border-radius:14px 14px 14px 4px;background:#2a3342;font-size:15px;
 overflow-wrap:anywhere;align-self:flex-start}
.chat li.own{align-self:flex-end;border-radius:14px 14px 4px 14px;background:#2c5a86;color:#fff}
.chat li b{display:block;font-size:12px;font-weight:600;color:#9fb0cb}
.chat li.own b{color:#c6ddf3}
.chat form{display:flex;gap:8px;padding:12px 16px 16px;border-top:1px solid #2a3240}
.chat input{flex:1;min-width:0;font:inherit;font-size:15px;padding:10px 12px;border-radius:10px;border:1px solid #4b5a73;background:#12161d;
 color:#fff;caret-color:#5fbf8f}
.chat input::placeholder{color:#8d9ab0;opacity:1}
.chat input:focus{outline:2px solid #5fbf8f;outline-offset:0;border-color:transparent}
.chat button{flex:none;font:inherit;font-size:14px;font-weight:600;padding:10px 12px;border-radius:10px;border:0;background:#35465f;color:#e9edf3;
 cursor:pointer}
.chat button:hover{background:#405473}
.chat button:focus-visible{outline:2px solid #5fbf8f;outline-offset:2px}
footer{padding:12px 24px;background:#1b212b;border-top:1px solid #2a3240;color:#8d9ab0;font-size:13px;display:flex;
 justify-content:space-between;gap:16px}
.note{flex:1;display:flex;flex-direction:column;align-items:center;justify-content:center;text-align:center;padding:24px}
.note h2{margin:0 0 8px;font-size:28px;font-weight:600}
.note p{margin:0;color:#b9c9e6}
@keyframes blink{0%,94%,100%{transform:scaleY(1)}97%{transform:scaleY(.1)}}
@keyframes talk{from{height:4px}to{height:13px}}
@media (max-width:900px){.room{flex-direction:column}.chat{width:auto;border-left:0}
 .chat h2,.chat ol{display:none}.tile{width:calc((100% - 14px)/2);height:calc((100% - 28px)/3)}.face{transform:none}}
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

const page=[...crypto.getRandomValues(new Uint8Array(8))].map(byte=>byte.toString(16).padStart(2,"0")).join("");
const address=location.pathname.replace(/\/+$/,"")+"/reports",waiting=[];
let number=0,underWay=false,lastView="";
// Within what a browser lets outlive the page, 64 KiB at once, with three bytes for a character.
const portion=15000;
function take(){
 let size=0,count=0;
 while(count<waiting.length&&(count===0||size+waiting[count].length<=portion))size+=waiting[count++].length+1;
 return '{"page":"'+page+'","reports":['+waiting.splice(0,count).join()+"]}";
}
function post(){
 return fetch(address,{method:"POST",headers:{"Content-Type":"application/json"},body:take(),keepalive:true,
  signal:AbortSignal.timeout(5000)}).catch(()=>{});
}
// One request at a time, so that they arrive in order.
async function send(){
 if(underWay)return;
 underWay=true;
 while(waiting.length>0)await post();
 underWay=false;
}
function report(kind,what){
 waiting.push(JSON.stringify({number:++number,kind,...what}));
 if(waiting.length>1000)waiting.shift();
 send();
}
function view(kind){
 const now={width:innerWidth,height:innerHeight,
  fullScreen:document.fullscreenElement!==null||matchMedia("(display-mode:fullscreen)").matches,
  visible:document.visibilityState==="visible",focused:document.hasFocus()};
 const text=JSON.stringify(now);
 if(kind==="view"&&text===lastView)return;
 lastView=text;
 report(kind,now);
}
const look=()=>view("view");
for(const name of ["resize","focus","blur","pageshow"])addEventListener(name,look);
for(const name of ["visibilitychange","fullscreenchange"])document.addEventListener(name,look);
matchMedia("(display-mode:fullscreen)").addEventListener("change",look);
// What still waits then goes at once; its numbers put it in its place.
addEventListener("pagehide",()=>{while(waiting.length>0)post();});
addEventListener("keydown",event=>report("key",{key:event.key,code:event.code,ctrl:event.ctrlKey,shift:event.shiftKey,
 alt:event.altKey,meta:event.metaKey,repeat:event.repeat}),true);

const form=document.getElementById("write");
if(form!==null){
 const field=form.elements.text,messages=document.getElementById("messages");
 field.addEventListener("input",()=>report("text",{text:field.value}));
 form.addEventListener("submit",event=>{
  event.preventDefault();
  field.focus();
  if(field.value.trim()==="")return;
  report("message",{text:field.value});
  const item=document.createElement("li"),name=document.createElement("b"),now=new Date();
  item.className="own";
  name.textContent="Tu, "+two(now.getHours())+":"+two(now.getMinutes());
  item.append(name,field.value);
  messages.append(item);
  while(messages.children.length>100)messages.firstChild.remove();
  messages.scrollTop=messages.scrollHeight;
  field.value="";
 });
 field.focus();
}
view("opened");
)js";

constexpr std::string_view chat = R"html(<aside class="chat" aria-label="Messaggi">
<h2>Messaggi</h2>
<ol id="messages" aria-live="polite"><li><b>Formatrice</b>Benvenuti! Qui potete scrivere le vostre domande.</li></ol>
<form id="write"><input name="text" placeholder="Scrivi un messaggio" aria-label="Scrivi un messaggio" maxlength="1000"
 autocomplete="off" autocorrect="off" spellcheck="false"><button>Invia</button></form>
</aside>
)html";

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
        body += "<div class=\"room\">\n<main>\n" + tile("Formatrice", 0);
        std::size_t number = 1;
        for (const PracticeParticipant& participant : participants) {
            if (participant.sessionCode == session.code && !participant.leftAt) {
                body += tile(participant.fullName, number++);
            }
        }
        for (const std::string_view name : classmates) body += tile(std::string(name), number++);
        body += "</main>\n";
        body += chat;
        body += "</div>\n";
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
