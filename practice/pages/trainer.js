"use strict";

// Milliseconds between two requests for the state, and the timeout of a reply.
const pause = 1000;
const patience = 5000;
const freshSeconds = 8;
const statusTexts = { ACTIVE: "Attiva", WAITING: "In attesa", ENDED: "Terminata" };
const presenceTexts = { in: "In sessione", lost: "Contatto perso", left: "Uscito" };
const violationTexts = { KEY_BLOCKED: "Combinazione bloccata", FOCUS_VIOLATION: "Altra applicazione in primo piano" };
const pageTitle = document.title;
const cards = new Map();
let readAt = null;

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

function showFlag(cell, heartbeat, value, yes, no) {
    set(cell.firstChild, heartbeat ? (value ? yes : no) : "–");
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

// Puts only what is new on top: a screen reader keeps its place in the list.
function updateViolations(card, violations) {
    const texts = violations.map(violation => JSON.stringify(violation));
    const known = texts.findIndex((_, start) => texts.slice(start).every((text, index) => text === card.shown[index]));
    const added = known < 0 ? texts.length : known;
    card.list.prepend(...violations.slice(0, added).map(makeViolation));
    while (card.list.children.length > texts.length) card.list.lastChild.remove();
    card.shown = texts;
}

// What scrolls is a stop of the Tab key, and only then.
function letKeysScroll(list) {
    if (list.scrollHeight > list.clientHeight) list.tabIndex = 0;
    else list.removeAttribute("tabindex");
}

function showViolations(card, session, now) {
    updateViolations(card, session.violations);
    if (card.violationCount !== null) noteViolations(session.violationCount - card.violationCount, session.violations[0]);
    card.violationCount = session.violationCount;
    session.violations.forEach((violation, index) =>
        card.list.children[index].classList.toggle("fresh", now - violation.receivedAt < freshSeconds),
    );
    const hiddenCount = session.violationCount - session.violations.length;
    card.nothing.hidden = session.violationCount > 0;
    card.list.hidden = session.violationCount === 0;
    card.more.hidden = hiddenCount <= 0;
    set(card.more, "Non mostrate, meno recenti: " + hiddenCount);
    letKeysScroll(card.list);
}

function countsText(session) {
    const people = session.participants;
    if (people.length === 0) return "";
    const present = people.filter(person => person.presence === "in").length;
    const lost = people.filter(person => person.presence === "lost").length;
    const parts = [present + " in sessione"];
    if (lost > 0) parts.push(lost + " senza contatto");
    parts.push(countText(session.violationCount, "violazione", "violazioni"));
    return parts.join(" · ");
}

function showCard(card, session, now) {
    const people = session.participants;
    const ended = session.status === "ENDED";
    if (ended && card.session && card.session.status !== "ENDED") noteEnd(session.code);
    const isNew = card.session === undefined;
    card.session = session;
    set(card.title, session.title);
    set(card.status, statusTexts[session.status] ?? session.status);
    setClass(card.status, "badge " + session.status);
    card.end.hidden = ended;
    set(card.counts, countsText(session));
    card.columns.hidden = ended && people.length === 0;
    card.table.hidden = people.length === 0;
    card.nobody.hidden = people.length > 0;
    setClass(card.peopleTitle, people.length > 0 ? "above-table" : "");
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
        const row = card.rows.get(participant.number);
        // Who was there before the page was opened is no news.
        if (!isNew) notePresence(participant, row.node.dataset.presence);
        showRow(row, participant, now);
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

// The page's title, seen on its tab: the first session in which somebody is.
function titleOf(state) {
    const session = state.sessions.find(each => each.status !== "ENDED" && each.participants.length > 0);
    return session ? countsText(session) + " · " + pageTitle : pageTitle;
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
        document.title = titleOf(state);
    } catch (error) {
        console.error(error);
        const what = "Il server non risponde" + (readAt === null ? "" : ": dati delle " + momentText(readAt));
        set(link, what + ". La pagina riprova da sola.");
        setClass(link, "link broken");
        setClass(byId("sessions"), "stale");
        document.title = "Il server non risponde · " + pageTitle;
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
    // Taken away, so that a second failure is told as well.
    byId("ask-failed").hidden = true;
    try {
        await exchange("/trainer/end/" + encodeURIComponent(asked.session.code), "POST");
        byId("ask").close();
        await refresh();
        // The button that had the focus is gone.
        asked.heading.tabIndex = -1;
        asked.heading.focus();
    } catch (error) {
        console.error(error);
        set(byId("ask-failed"), "Non è stato possibile terminare la sessione. Riprova.");
        byId("ask-failed").hidden = false;
        yes.disabled = false;
        yes.focus();
    } finally {
        yes.disabled = false;
    }
});

async function follow() {
    for (;;) {
        await refresh();
        tellNews(byId("news"));
        await new Promise(resolve => setTimeout(resolve, pause));
    }
}

follow();
