#include "practice/pages/TrainerPage.h"

#include <string>
#include <string_view>
#include <utility>

#include "practice/pages/HtmlReply.h"

namespace vantrel::practice {

namespace {

constexpr std::string_view style = R"css(
*{box-sizing:border-box}
html,body{margin:0;min-height:100%}
html{scrollbar-gutter:stable}
body{background:#f3f5f8;color:#1c2733;font:15px/1.45 "Inter","Helvetica Neue",Helvetica,"DejaVu Sans",Arial,sans-serif}
bdi{unicode-bidi:isolate}
.bar{position:sticky;top:0;z-index:1;display:flex;align-items:center;gap:20px;padding:14px 32px;background:#fff;
 border-bottom:1px solid #dde3ea}
.bar h1{margin:0;font-size:18px;font-weight:650;flex:1}
.bar h1 span{color:#64748b;font-weight:400}
.link{display:flex;align-items:center;gap:8px;color:#3c4b5c;font-size:14px}
.link:before{content:"";width:9px;height:9px;border-radius:50%;background:#2f9e68}
.link.broken{color:#a33226;font-weight:600}
.link.broken:before{background:#c8402f}
.clock{font-size:18px;font-variant-numeric:tabular-nums;color:#1c2733}
main{max-width:1440px;margin:0 auto;padding:24px 32px 40px;display:grid;gap:20px}
main.stale{opacity:.55}
.empty{padding:56px 24px;text-align:center;color:#64748b}
.card{background:#fff;border:1px solid #dde3ea;border-radius:12px;overflow:hidden}
.head{display:flex;align-items:center;gap:12px;padding:16px 20px}
.head h2{margin:0;font-size:17px;font-weight:650;overflow-wrap:anywhere}
.code{font:600 13px/1 "DejaVu Sans Mono",Menlo,monospace;letter-spacing:.06em;padding:7px 10px;border-radius:7px;
 background:#eaf0f7;color:#23466e;flex:none;max-width:40%;overflow-wrap:anywhere}
.counts{flex:1 0 auto;color:#64748b;font-size:14px;text-align:right;white-space:nowrap}
.badge{display:inline-block;padding:3px 10px;border-radius:99px;font-size:13px;font-weight:600;white-space:nowrap;
 background:#e9edf2;color:#4b5a6b}
.badge.ACTIVE,.badge.in{background:#e1f3e9;color:#17633c}
.badge.WAITING{background:#e6eefb;color:#27508f}
.badge.lost{background:#fdeccf;color:#7f4a00}
button{font:inherit;font-size:14px;font-weight:600;padding:8px 14px;border-radius:8px;border:1px solid #c3ccd7;
 background:#fff;color:#1c2733;cursor:pointer;white-space:nowrap}
button:hover{background:#f3f5f8}
button:focus-visible{outline:3px solid #9cc0ee;outline-offset:1px}
button:disabled{opacity:.6;cursor:default}
button.end{border-color:#dba8a2;color:#a33226}
button.end:hover{background:#fcf1f0}
button.sure{background:#b23a2c;border-color:#b23a2c;color:#fff}
button.sure:hover{background:#992f23}
.columns{display:grid;grid-template-columns:minmax(0,2.1fr) minmax(0,1fr);border-top:1px solid #e6eaf0}
.people{min-width:0}
.violations{min-width:0;border-left:1px solid #e6eaf0;background:#fafbfc;display:flex;flex-direction:column}
h3{margin:0;padding:12px 20px 8px;font-size:13px;font-weight:600;color:#64748b}
.note{padding:6px 20px 20px;margin:0;color:#64748b}
table{width:100%;border-collapse:collapse;table-layout:fixed}
th:nth-child(2){width:140px}
th:nth-child(3){width:128px}
th:nth-child(4){width:112px}
th:nth-child(5){width:120px}
th:nth-child(6){width:102px}
th{padding:12px 8px 8px;font-size:13px;font-weight:600;color:#64748b;text-align:left;white-space:nowrap}
td{padding:10px 8px;border-top:1px solid #eef1f5;vertical-align:top}
th:first-child,td:first-child{padding-left:20px}
th:last-child,td:last-child{padding-right:20px;text-align:right}
td small,li small{display:block;color:#64748b;font-size:13px}
.who{font-weight:600;overflow-wrap:anywhere}
.mail{overflow-wrap:anywhere}
.when,.flag{white-space:nowrap;font-variant-numeric:tabular-nums}
td.flag:before{content:"";display:inline-block;width:8px;height:8px;border-radius:50%;margin-right:7px;background:#b6c0cc}
td.flag.yes:before{background:#2f9e68}
td.flag.no:before{background:#d08a1d}
tr.left td{color:#7b8794}
tr.left td.flag:before,tr.lost td.flag:before{background:#b6c0cc}
tr.lost td.flag{color:#7b8794}
.number{font-variant-numeric:tabular-nums}
.number.some{font-weight:600}
ol{list-style:none;margin:0;padding:0 0 8px;max-height:460px;overflow:auto}
li{display:grid;grid-template-columns:auto minmax(0,1fr);gap:0 14px;padding:9px 20px;border-top:1px solid #eef1f5;
 transition:background-color 1.5s}
li.fresh{background:#fff6e2}
li .when{color:#3c4b5c}
li strong{font-weight:600;overflow-wrap:anywhere}
li .about{overflow-wrap:anywhere}
dialog{width:min(480px,calc(100% - 32px));border:1px solid #c3ccd7;border-radius:12px;padding:24px;color:inherit;
 box-shadow:0 12px 40px #1c273340}
dialog::backdrop{background:#1c273366}
dialog h2{margin:0 0 10px;font-size:18px;overflow-wrap:anywhere}
dialog p{margin:0 0 14px;overflow-wrap:anywhere}
dialog .failed{color:#a33226;font-weight:600}
dialog div{display:flex;justify-content:flex-end;gap:10px;margin-top:20px}
[hidden]{display:none!important}
@media (max-width:1180px){.columns{grid-template-columns:1fr}.violations{border-left:0;border-top:1px solid #e6eaf0}}
@media (prefers-reduced-motion:reduce){*{transition:none!important}}
)css";

constexpr std::string_view body = R"html(
<header class="bar">
<h1>Vantrel <span>· Pagina della formazione</span></h1>
<span class="link" id="link" role="status">Collegamento in corso…</span>
<time class="clock" id="clock" title="Ora del server"></time>
</header>
<main id="sessions"><p class="empty" id="empty">Lettura delle sessioni…</p></main>
<dialog id="ask" aria-labelledby="ask-title">
<h2 id="ask-title"></h2>
<p id="ask-text"></p>
<p class="failed" id="ask-failed" role="alert" hidden></p>
<div><button type="button" id="ask-no" autofocus>Annulla</button>
<button type="button" class="sure" id="ask-yes">Termina la sessione</button></div>
</dialog>
<noscript><p class="empty">Per seguire le sessioni questa pagina ha bisogno di JavaScript.</p></noscript>
)html";

constexpr std::string_view script = R"js(
"use strict";
const pause=1000,patience=5000,freshSeconds=8;
const statusTexts={ACTIVE:"Attiva",WAITING:"In attesa",ENDED:"Terminata"};
const presenceTexts={in:"In sessione",lost:"Contatto perso",left:"Uscito"};
const violationTexts={KEY_BLOCKED:"Combinazione bloccata",FOCUS_VIOLATION:"Altra applicazione in primo piano"};
const byId=id=>document.getElementById(id);
const cards=new Map();
let readAt=null;

// Whatever comes from outside is set as text and never as markup.
function make(tag,className,text){
 const node=document.createElement(tag);
 if(className)node.className=className;
 if(text!==undefined)node.textContent=text;
 return node;
}
function set(node,text){if(node.textContent!==text)node.textContent=text;}
function setClass(node,className){if(node.className!==className)node.className=className;}
function clockText(milliseconds){return new Date(milliseconds).toLocaleTimeString("it-IT",{hour12:false});}
function momentText(seconds){return clockText(seconds*1000);}
function violationTime(violation){
 const time=Date.parse(violation.at);
 return Number.isNaN(time)?violation.at:clockText(time);
}
function agoText(seconds){
 const whole=Math.max(0,Math.floor(seconds));
 if(whole<60)return whole+" s fa";
 if(whole<3600)return Math.floor(whole/60)+" min fa";
 return Math.floor(whole/3600)+" h fa";
}
function countText(count,one,many){return count===1?"1 "+one:count+" "+many;}

function makeCard(code){
 const card={node:make("section","card"),rows:new Map(),shownViolations:""};
 card.node.dataset.code=code;
 const head=make("div","head");
 card.title=make("bdi");
 const heading=make("h2");
 heading.append(card.title);
 card.status=make("span","badge");
 card.counts=make("span","counts");
 card.end=make("button","end","Termina sessione");
 card.end.type="button";
 card.end.addEventListener("click",()=>ask(card));
 head.append(make("span","code",code),heading,card.status,card.counts,card.end);

 const columns=make("div","columns");
 const people=make("div","people");
 card.nobody=make("p","note");
 card.table=make("table");
 const header=make("tr");
 for(const title of ["Partecipante","Stato","Ultimo segnale","Blocco","Riunione","Violazioni"]){
  const cell=make("th","",title);
  cell.scope="col";
  header.append(cell);
 }
 const top=make("thead");
 top.append(header);
 card.body=make("tbody");
 card.table.append(top,card.body);
 card.peopleTitle=make("h3","","Partecipanti");
 people.append(card.peopleTitle,card.nobody,card.table);
 const violations=make("div","violations");
 card.nothing=make("p","note","Nessuna violazione.");
 card.list=make("ol");
 card.more=make("p","note");
 violations.append(make("h3","","Violazioni, la più recente in alto"),card.nothing,card.list,card.more);
 columns.append(people,violations);
 card.columns=columns;
 card.node.append(head,columns);
 return card;
}

function makeRow(){
 const row={node:make("tr")};
 const who=make("td");
 row.name=make("bdi","who");
 row.mail=make("small","mail");
 who.append(row.name,row.mail);
 const presence=make("td");
 row.presence=make("span","badge");
 row.since=make("small");
 presence.append(row.presence,row.since);
 const when=make("td","when");
 row.ago=make("span");
 row.at=make("small");
 when.append(row.ago,row.at);
 row.lockdown=make("td","flag");
 row.meeting=make("td","flag");
 row.count=make("td","number");
 row.node.append(who,presence,when,row.lockdown,row.meeting,row.count);
 return row;
}

function showFlag(cell,heartbeat,value,yes,no){
 set(cell,heartbeat?(value?yes:no):"–");
 setClass(cell,"flag"+(heartbeat?(value?" yes":" no"):""));
}

function showRow(row,participant,now){
 const heartbeat=participant.lastHeartbeat;
 setClass(row.node,participant.presence);
 row.node.dataset.presence=participant.presence;
 set(row.name,participant.fullName);
 set(row.mail,participant.email);
 set(row.presence,presenceTexts[participant.presence]??participant.presence);
 setClass(row.presence,"badge "+participant.presence);
 set(row.since,participant.leftAt!==null?"alle "+momentText(participant.leftAt):"ingresso "+momentText(participant.joinedAt));
 set(row.ago,heartbeat?agoText(now-heartbeat.receivedAt):"nessuno ancora");
 set(row.at,heartbeat?momentText(heartbeat.receivedAt):"");
 showFlag(row.lockdown,heartbeat,heartbeat?.lockdownActive,"attivo","non attivo");
 showFlag(row.meeting,heartbeat,heartbeat?.meetConnected,"aperta","non aperta");
 set(row.count,String(participant.violationCount));
 setClass(row.count,"number"+(participant.violationCount>0?" some":""));
}

function showViolations(card,session,now){
 const text=JSON.stringify(session.violations);
 if(text!==card.shownViolations){
  card.shownViolations=text;
  card.list.replaceChildren(...session.violations.map(violation=>{
   const item=make("li");
   item.dataset.type=violation.type;
   const time=make("span","when",violationTime(violation));
   time.title="Ricevuta alle "+momentText(violation.receivedAt);
   const about=make("div","about");
   const detail=make("strong");
   detail.append(make("bdi","",violation.detail||"(senza nome)"));
   const what=make("small","",violationTexts[violation.type]??violation.type);
   what.title=violation.type;
   const who=make("small");
   who.append(make("bdi","",violation.fullName));
   about.append(detail,what,who);
   item.append(time,about);
   return item;
  }));
 }
 session.violations.forEach((violation,index)=>
  card.list.children[index].classList.toggle("fresh",now-violation.receivedAt<freshSeconds));
 const hiddenCount=session.violationCount-session.violations.length;
 card.nothing.hidden=session.violationCount>0;
 card.list.hidden=session.violationCount===0;
 card.more.hidden=hiddenCount<=0;
 set(card.more,"Non mostrate, meno recenti: "+hiddenCount);
}

function showCard(card,session,now){
 const people=session.participants;
 const ended=session.status==="ENDED";
 card.session=session;
 set(card.title,session.title);
 set(card.status,statusTexts[session.status]??session.status);
 setClass(card.status,"badge "+session.status);
 card.end.hidden=ended;
 const present=people.filter(person=>person.presence==="in").length;
 const lost=people.filter(person=>person.presence==="lost").length;
 const parts=[];
 if(people.length>0){
  parts.push(present+" in sessione");
  if(lost>0)parts.push(lost+" senza contatto");
  parts.push(countText(session.violationCount,"violazione","violazioni"));
 }
 set(card.counts,parts.join(" · "));
 card.columns.hidden=ended&&people.length===0;
 card.table.hidden=people.length===0;
 card.peopleTitle.hidden=people.length>0;
 card.nobody.hidden=people.length>0;
 set(card.nobody,"Nessun partecipante. Per entrare si usa il codice "+session.code+".");

 const numbers=new Set(people.map(person=>person.number));
 for(const [number,row] of card.rows)if(!numbers.has(number)){row.node.remove();card.rows.delete(number);}
 for(const participant of people){
  if(!card.rows.has(participant.number)){
   const row=makeRow();
   card.rows.set(participant.number,row);
   card.body.append(row.node);
  }
  showRow(card.rows.get(participant.number),participant,now);
 }
 showViolations(card,session,now);
}

function show(state){
 const codes=new Set(state.sessions.map(session=>session.code));
 for(const [code,card] of cards)if(!codes.has(code)){card.node.remove();cards.delete(code);}
 for(const session of state.sessions){
  if(!cards.has(session.code)){
   const card=makeCard(session.code);
   cards.set(session.code,card);
   byId("sessions").append(card.node);
  }
  showCard(cards.get(session.code),session,state.now);
 }
 const empty=byId("empty");
 empty.hidden=state.sessions.length>0;
 set(empty,"Nessuna sessione.");
 set(byId("clock"),momentText(state.now));
}

async function exchange(path,method){
 const reply=await fetch(path,{method,cache:"no-store",signal:AbortSignal.timeout(patience)});
 if(!reply.ok)throw new Error("HTTP "+reply.status);
 return reply.json();
}

async function refresh(){
 const link=byId("link");
 try{
  const state=await exchange("/trainer/state","GET");
  show(state);
  readAt=state.now;
  set(link,"Collegata al server");
  setClass(link,"link");
  setClass(byId("sessions"),"");
 }catch(error){
  console.error(error);
  set(link,"Il server non risponde"+(readAt===null?"":": dati delle "+momentText(readAt)));
  setClass(link,"link broken");
  setClass(byId("sessions"),"stale");
 }
}

let asked=null;
function ask(card){
 asked=card;
 const session=card.session;
 const inside=session.participants.filter(person=>person.presence!=="left").length;
 set(byId("ask-title"),"Terminare la sessione "+session.code+"?");
 set(byId("ask-text"),"«"+session.title+"» finisce per tutti e non può riprendere. "+
  (inside===0?"Nessun partecipante è collegato.":"Chi è collegato lo viene a sapere al prossimo segnale, "+
  "entro una quindicina di secondi: la riunione si chiude e il computer si sblocca."));
 byId("ask-failed").hidden=true;
 byId("ask").showModal();
}
byId("ask-no").addEventListener("click",()=>byId("ask").close());
byId("ask-yes").addEventListener("click",async()=>{
 const yes=byId("ask-yes");
 yes.disabled=true;
 try{
  await exchange("/trainer/end/"+encodeURIComponent(asked.session.code),"POST");
  byId("ask").close();
  await refresh();
 }catch(error){
  console.error(error);
  set(byId("ask-failed"),"Non è stato possibile terminare la sessione. Riprova.");
  byId("ask-failed").hidden=false;
 }finally{
  yes.disabled=false;
 }
});

(async()=>{
 for(;;){
  await refresh();
  await new Promise(resolve=>setTimeout(resolve,pause));
 }
})();
)js";

}  // namespace

PracticeReply trainerPage() {
    std::string html =
        "<!doctype html>\n<html lang=\"it\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\">\n"
        // Without it a browser asks for /favicon.ico, which would stand among what was received.
        "<link rel=\"icon\" href=\"data:,\">\n"
        "<title>Vantrel · Pagina della formazione</title>\n<style>";
    html.append(style).append("</style>\n</head>\n<body>").append(body);
    html.append("<script>").append(script).append("</script>\n</body>\n</html>\n");
    return htmlReply(200, std::move(html));
}

}  // namespace vantrel::practice
