"use strict";

// Makes the page's parts, empty. trainer.js fills them.
const columnTitles = ["Partecipante", "Stato", "Ultimo segnale", "Blocco", "Riunione", "Violazioni"];

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

function makeCard(code) {
    const card = { node: make("section", "card"), rows: new Map(), shown: [], violationCount: null };
    card.node.dataset.code = code;
    const head = make("div", "head");
    card.title = make("bdi");
    card.heading = titled("h2", "title-" + code, card.title);
    card.status = make("span", "badge");
    card.counts = make("p", "counts");
    card.end = make("button", "end", "Termina sessione");
    card.end.type = "button";
    card.end.setAttribute("aria-label", "Termina sessione " + code);
    card.end.addEventListener("click", () => ask(card));
    head.append(make("span", "code", code), card.heading, card.status, card.counts, card.end);
    card.columns = make("div", "columns");
    card.columns.append(makePeople(card, code), makeViolations(card, code));
    card.node.append(head, card.columns);
    card.node.setAttribute("aria-labelledby", card.heading.id);
    return card;
}

function titled(tag, id, title) {
    const heading = make(tag);
    heading.id = id;
    heading.append(title);
    return heading;
}

function makePeople(card, code) {
    const people = make("div", "people");
    card.peopleTitle = titled("h3", "people-" + code, "Partecipanti");
    card.nobody = make("p", "note");
    // On a narrow page the rows are boxes. Without its roles the table would then be none for a screen reader.
    card.table = withRole("table", make("table"));
    card.table.setAttribute("aria-labelledby", card.peopleTitle.id);
    const header = withRole("row", make("tr"));
    for (const title of columnTitles) {
        const cell = withRole("columnheader", make("th", "", title));
        cell.scope = "col";
        header.append(cell);
    }
    const top = withRole("rowgroup", make("thead"));
    top.append(header);
    card.body = withRole("rowgroup", make("tbody"));
    card.table.append(top, card.body);
    people.append(card.peopleTitle, card.nobody, card.table);
    return people;
}

function makeViolations(card, code) {
    const violations = make("div", "violations");
    const heading = titled("h3", "violations-" + code, "Violazioni, la più recente in alto");
    card.nothing = make("p", "note", "Nessuna violazione.");
    card.list = withRole("list", make("ol"));
    card.list.setAttribute("aria-labelledby", heading.id);
    card.more = make("p", "note");
    violations.append(heading, card.nothing, card.list, card.more);
    return violations;
}

function withRole(role, node) {
    node.setAttribute("role", role);
    return node;
}

function makeRow() {
    const row = { node: withRole("row", make("tr")) };
    const who = withRole("rowheader", make("th"));
    who.scope = "row";
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
    row.lockdown.append(make("span"));
    row.meeting = make("td", "flag");
    row.meeting.append(make("span"));
    row.count = make("td", "number");
    const cells = [presence, when, row.lockdown, row.meeting, row.count];
    cells.forEach((cell, index) => {
        withRole("cell", cell).dataset.label = columnTitles[index + 1];
    });
    row.node.append(who, ...cells);
    return row;
}

function makeViolation(violation) {
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
}
