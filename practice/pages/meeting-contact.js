"use strict";

// Whether the server answers. Every report tells, and between reports the page asks. While the server is silent the page
// says so in words and in its title, and goes on by itself.
// Milliseconds: between two questions, until a reply counts as lost, and how long a return is told.
const askPause = 3000;
const patience = 5000;
const returnShown = 6000;
const pageAddress = location.pathname.replace(/\/+$/, "");
const pageTitle = document.title;
// The page of an ended session has none. Neither that nor a page that has heard of the end needs the server any longer.
const contactPlace = document.getElementById("contact");
const contactTexts = {
    there: "",
    lost: "Collegamento con il server perso: la pagina riprova da sola.",
    back: "Il server risponde di nuovo.",
    ended: "La lezione è terminata. Puoi chiudere questa finestra.",
};
const titleStarts = { lost: "Collegamento perso · ", ended: "Lezione terminata · " };
let contact = "there";
let backTimer = 0;

function showContact(state) {
    if (state === contact || contact === "ended" || contactPlace === null) return;
    contact = state;
    contactPlace.dataset.contact = state;
    contactPlace.textContent = contactTexts[state];
    document.title = (titleStarts[state] ?? "") + pageTitle;
    clearTimeout(backTimer);
    if (state === "back") backTimer = setTimeout(() => showContact("there"), returnShown);
}

function noteAnswer(answered) {
    if (!answered) showContact("lost");
    else if (contact === "lost") showContact("back");
}

async function askState() {
    try {
        const reply = await fetch(pageAddress + "/state", { cache: "no-store", signal: AbortSignal.timeout(patience) });
        noteAnswer(true);
        if (reply.ok && (await reply.json()).status === "ENDED") showContact("ended");
    } catch {
        noteAnswer(false);
    }
}

async function keepContact() {
    while (contact !== "ended") {
        await new Promise(resolve => setTimeout(resolve, askPause));
        await askState();
    }
}

if (contactPlace !== null) keepContact();
