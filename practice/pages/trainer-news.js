"use strict";

// Tells a screen reader what is new: who came, who is lost, who left, and violations. All of it in one sentence, and the
// next one only after a pause, so that a busy class does not drown out the reader. What is seen on the page needs none of it.
const newsPause = 6000; // Milliseconds between two sentences.
const namesTold = 3;
const longestName = 60;
const newsKinds = { in: "Ingresso: ", back: "Di nuovo in contatto: ", lost: "Contatto perso: ", left: "Uscita: " };
const news = { in: [], back: [], lost: [], left: [], ended: [], violations: 0, newest: "" };
let newsAt = 0;

function notePresence(participant, before) {
    const kind = participant.presence === "in" && before !== undefined ? "back" : participant.presence;
    if (participant.presence !== before) news[kind]?.push(participant.fullName.slice(0, longestName));
}

function noteViolations(count, newest) {
    if (count <= 0) return;
    news.violations += count;
    news.newest = `${newest.detail}, ${newest.fullName}`.slice(0, 2 * longestName);
}

function noteEnd(code) {
    news.ended.push(code);
}

function namesText(names) {
    if (names.length <= namesTold) return names.join(", ");
    return names.slice(0, namesTold - 1).join(", ") + " e altri " + (names.length - namesTold + 1);
}

function newsText() {
    const parts = Object.keys(newsKinds)
        .filter(kind => news[kind].length > 0)
        .map(kind => newsKinds[kind] + namesText(news[kind]));
    if (news.violations === 1) parts.push("Nuova violazione: " + news.newest);
    if (news.violations > 1) parts.push(`${news.violations} nuove violazioni, l'ultima: ${news.newest}`);
    for (const code of news.ended) parts.push(`Sessione ${code} terminata`);
    return parts.join(". ");
}

function forgetNews() {
    for (const kind of [...Object.keys(newsKinds), "ended"]) news[kind].length = 0;
    news.violations = 0;
}

// Called again and again. Between two sentences the place is empty for a while, so that the same words count as new ones.
function tellNews(place) {
    const now = performance.now();
    if (place.textContent !== "") {
        if (now - newsAt >= newsPause) set(place, "");
        return;
    }
    const text = newsText();
    if (text === "") return;
    set(place, text);
    forgetNews();
    newsAt = now;
}
