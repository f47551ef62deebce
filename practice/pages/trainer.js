"use strict";

// Milliseconds between two requests for the state, and the timeout of a reply.
const pause = 1000;
const patience = 5000;
const freshSeconds = 8;
const statusTexts = { ACTIVE: "Attiva", WAITING: "In attesa", ENDED: "Terminata" };
const presenceTexts = { in: "In sessione", lost: "Contatto perso", left: "Uscito" };
const violationTexts = { KEY_BLOCKED: "Combinazione bloccata", FOCUS_VIOLATION: "Altra applicazione in primo piano" };
const cards = new Map();
let readAt = null;

function byId(id) {
    return document.getElementById(id);
}

// Data from outside is set as text, never as markup.
function make(tag, className, text) {
    const node = document.createElement(tag);
    if (className) node.className = className;
    if (text !== undefined) node.textContent = text;
    return node;
}

function set(node, text) {
    if (node.textContent !== text) node.textContent = text;
}

function setClass(node, className) {
    if (node.className !== className) node.className = className;
}

function clockText(milliseconds) {
    return new Date(milliseconds).toLocaleTimeString("it-IT", { hour12: false });
}

function momentText(seconds) {
    return clockText(seconds * 1000);
}

function violationTime(violation) {
    const time = Date.parse(violation.at);
    return Number.isNaN(time) ? violation.at : clockText(time);
}

function agoText(seconds) {
    const whole = Math.max(0, Math.floor(seconds));
    if (whole < 60) return whole + " s fa";
    if (whole < 3600) return Math.floor(whole / 60) + " min fa";
    return Math.floor(whole / 3600) + " h fa";
}

function countText(count, one, many) {
    return count === 1 ? "1 " + one : count + " " + many;
}

function makeCard(code) {
    const card = { node: make("section", "card"), rows: new Map(), shownViolations: "" };
    card.node.dataset.code = code;
    const head = make("div", "head");
    card.title = make("bdi");
    const heading = make("h2");
    heading.append(card.title);
    card.status = make("span", "badge");
    card.counts = make("span", "counts");
    card.end = make("button", "end", "Termina sessione");
    card.end.type = "button";
    card.end.addEventListener("click", () => ask(card));
    head.append(make("span", "code", code), heading, card.status, card.counts, card.end);

    const columns = make("div", "columns");
    const people = make("div", "people");
    card.nobody = make("p", "note");
    card.table = make("table");
    const header = make("tr");
    for (const title of ["Partecipante", "Stato", "Ultimo segnale", "Blocco", "Riunione", "Violazioni"]) {
        const cell = make("th", "", title);
        cell.scope = "col";
        header.append(cell);
    }
    const top = make("thead");
    top.append(header);
    card.body = make("tbody");
    card.table.append(top, card.body);
    card.peopleTitle = make("h3", "", "Partecipanti");
    people.append(card.peopleTitle, card.nobody, card.table);
    const violations = make("div", "violations");
    card.nothing = make("p", "note", "Nessuna violazione.");
    card.list = make("ol");
    card.more = make("p", "note");
    violations.append(make("h3", "", "Violazioni, la più recente in alto"), card.nothing, card.list, card.more);
    columns.append(people, violations);
    card.columns = columns;
    card.node.append(head, columns);
    return card;
}

function makeRow() {
    const row = { node: make("tr") };
    const who = make("td");
    row.name = make("bdi", "who");
    row.mail = make("small", "mail");
    who.append(row.name, row.mail);
    const presence = make("td");
    row.presence = make("span", "badge");
    row.since = make("small");
    presence.append(row.presence, row.since);
    const when = make("td", "when");
    row.ago = make("span");
    row.at = make("small");
    when.append(row.ago, row.at);
    row.lockdown = make("td", "flag");
    row.meeting = make("td", "flag");
    row.count = make("td", "number");
    row.node.append(who, presence, when, row.lockdown, row.meeting, row.count);
    return row;
}

function showFlag(cell, heartbeat, value, yes, no) {
    set(cell, heartbeat ? (value ? yes : no) : "–");
    setClass(cell, "flag" + (heartbeat ? (value ? " yes" : " no") : ""));
}

function showRow(row, participant, now) {
    const heartbeat = participant.lastHeartbeat;
    setClass(row.node, participant.presence);
    row.node.dataset.presence = participant.presence;
    set(row.name, participant.fullName);
    set(row.mail, participant.email);
    set(row.presence, presenceTexts[participant.presence] ?? participant.presence);
    setClass(row.presence, "badge " + participant.presence);
    const left = participant.leftAt !== null;
    set(row.since, left ? "alle " + momentText(participant.leftAt) : "ingresso " + momentText(participant.joinedAt));
    set(row.ago, heartbeat ? agoText(now - heartbeat.receivedAt) : "nessuno ancora");
    set(row.at, heartbeat ? momentText(heartbeat.receivedAt) : "");
    showFlag(row.lockdown, heartbeat, heartbeat?.lockdownActive, "attivo", "non attivo");
    showFlag(row.meeting, heartbeat, heartbeat?.meetConnected, "aperta", "non aperta");
    set(row.count, String(participant.violationCount));
    setClass(row.count, "number" + (participant.violationCount > 0 ? " some" : ""));
}

function showViolations(card, session, now) {
    const text = JSON.stringify(session.violations);
    if (text !== card.shownViolations) {
        card.shownViolations = text;
        card.list.replaceChildren(
            ...session.violations.map(violation => {
                const item = make("li");
                item.dataset.type = violation.type;
                const time = make("span", "when", violationTime(violation));
                time.title = "Ricevuta alle " + momentText(violation.receivedAt);
                const about = make("div", "about");
                const detail = make("strong");
                detail.append(make("bdi", "", violation.detail || "(senza nome)"));
                const what = make("small", "", violationTexts[violation.type] ?? violation.type);
                what.title = violation.type;
                const who = make("small");
                who.append(make("bdi", "", violation.fullName));
                about.append(detail, what, who);
                item.append(time, about);
                return item;
            }),
        );
    }
    session.violations.forEach((violation, index) =>
        card.list.children[index].classList.toggle("fresh", now - violation.receivedAt < freshSeconds),
    );
    const hiddenCount = session.violationCount - session.violations.length;
    card.nothing.hidden = session.violationCount > 0;
    card.list.hidden = session.violationCount === 0;
    card.more.hidden = hiddenCount <= 0;
    set(card.more, "Non mostrate, meno recenti: " + hiddenCount);
}

function showCard(card, session, now) {
    const people = session.participants;
    const ended = session.status === "ENDED";
    card.session = session;
    set(card.title, session.title);
    set(card.status, statusTexts[session.status] ?? session.status);
    setClass(card.status, "badge " + session.status);
    card.end.hidden = ended;
    const present = people.filter(person => person.presence === "in").length;
    const lost = people.filter(person => person.presence === "lost").length;
    const parts = [];
    if (people.length > 0) {
        parts.push(present + " in sessione");
        if (lost > 0) parts.push(lost + " senza contatto");
        parts.push(countText(session.violationCount, "violazione", "violazioni"));
    }
    set(card.counts, parts.join(" · "));
    card.columns.hidden = ended && people.length === 0;
    card.table.hidden = people.length === 0;
    card.peopleTitle.hidden = people.length > 0;
    card.nobody.hidden = people.length > 0;
    set(card.nobody, "Nessun partecipante. Per entrare si usa il codice " + session.code + ".");

    const numbers = new Set(people.map(person => person.number));
    for (const [number, row] of card.rows) {
        if (numbers.has(number)) continue;
        row.node.remove();
        card.rows.delete(number);
    }
    for (const participant of people) {
        if (!card.rows.has(participant.number)) {
            const row = makeRow();
            card.rows.set(participant.number, row);
            card.body.append(row.node);
        }
        showRow(card.rows.get(participant.number), participant, now);
    }
    showViolations(card, session, now);
}

function show(state) {
    const codes = new Set(state.sessions.map(session => session.code));
    for (const [code, card] of cards) {
        if (codes.has(code)) continue;
        card.node.remove();
        cards.delete(code);
    }
    for (const session of state.sessions) {
        if (!cards.has(session.code)) {
            const card = makeCard(session.code);
            cards.set(session.code, card);
            byId("sessions").append(card.node);
        }
        showCard(cards.get(session.code), session, state.now);
    }
    const empty = byId("empty");
    empty.hidden = state.sessions.length > 0;
    set(empty, "Nessuna sessione.");
    set(byId("clock"), momentText(state.now));
}

async function exchange(path, method) {
    const reply = await fetch(path, { method, cache: "no-store", signal: AbortSignal.timeout(patience) });
    if (!reply.ok) throw new Error("HTTP " + reply.status);
    return reply.json();
}

async function refresh() {
    const link = byId("link");
    try {
        const state = await exchange("/trainer/state", "GET");
        show(state);
        readAt = state.now;
        set(link, "Collegata al server");
        setClass(link, "link");
        setClass(byId("sessions"), "");
    } catch (error) {
        console.error(error);
        set(link, "Il server non risponde" + (readAt === null ? "" : ": dati delle " + momentText(readAt)));
        setClass(link, "link broken");
        setClass(byId("sessions"), "stale");
    }
}

let asked = null;

function ask(card) {
    asked = card;
    const session = card.session;
    const inside = session.participants.filter(person => person.presence !== "left").length;
    set(byId("ask-title"), "Terminare la sessione " + session.code + "?");
    const who =
        inside === 0
            ? "Nessun partecipante è collegato."
            : "Chi è collegato lo viene a sapere al prossimo segnale, entro una quindicina di secondi: " +
              "la riunione si chiude e il computer si sblocca.";
    set(byId("ask-text"), `«${session.title}» finisce per tutti e non può riprendere. ${who}`);
    byId("ask-failed").hidden = true;
    byId("ask").showModal();
}

byId("ask-no").addEventListener("click", () => byId("ask").close());
byId("ask-yes").addEventListener("click", async () => {
    const yes = byId("ask-yes");
    yes.disabled = true;
    try {
        await exchange("/trainer/end/" + encodeURIComponent(asked.session.code), "POST");
        byId("ask").close();
        await refresh();
    } catch (error) {
        console.error(error);
        set(byId("ask-failed"), "Non è stato possibile terminare la sessione. Riprova.");
        byId("ask-failed").hidden = false;
    } finally {
        yes.disabled = false;
    }
});

async function follow() {
    for (;;) {
        await refresh();
        await new Promise(resolve => setTimeout(resolve, pause));
    }
}

follow();
