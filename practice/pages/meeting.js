"use strict";

// The clock, and how long the page has been open.
const opened = Date.now();

function two(value) {
    return String(value).padStart(2, "0");
}

function tick() {
    const now = new Date();
    const passed = Math.floor((Date.now() - opened) / 1000);
    document.getElementById("clock").textContent = [now.getHours(), now.getMinutes(), now.getSeconds()]
        .map(two)
        .join(":");
    document.getElementById("passed").textContent =
        `In riunione da ${two(Math.floor(passed / 60))}:${two(passed % 60)}`;
}

tick();
setInterval(tick, 1000);

// What the page reports about itself; see the list in practice/README.md.
const page = [...crypto.getRandomValues(new Uint8Array(8))].map(byte => byte.toString(16).padStart(2, "0")).join("");
const address = pageAddress + "/reports";
const waiting = [];
let number = 0;
let underWay = false;
let lastView = "";
// Below the 64 KiB that a browser sends after the page is gone, with three bytes per character.
const portion = 15000;

function take() {
    let size = 0;
    let count = 0;
    while (count < waiting.length && (count === 0 || size + waiting[count].length <= portion)) {
        size += waiting[count].length + 1;
        count += 1;
    }
    return `{"page":"${page}","reports":[${waiting.splice(0, count).join()}]}`;
}

function post() {
    return fetch(address, {
        method: "POST",
        headers: { "Content-Type": "application/json" },
        body: take(),
        keepalive: true,
        signal: AbortSignal.timeout(patience),
    }).then(
        () => noteAnswer(true),
        () => noteAnswer(false),
    );
}

// One request at a time, so that they arrive in order.
async function send() {
    if (underWay) return;
    underWay = true;
    while (waiting.length > 0) await post();
    underWay = false;
}

function report(kind, what) {
    number += 1;
    waiting.push(JSON.stringify({ number: number, kind, ...what }));
    if (waiting.length > 1000) waiting.shift();
    send();
}

function view(kind) {
    const now = {
        width: innerWidth,
        height: innerHeight,
        fullScreen: document.fullscreenElement !== null || matchMedia("(display-mode:fullscreen)").matches,
        visible: document.visibilityState === "visible",
        focused: document.hasFocus(),
    };
    const text = JSON.stringify(now);
    if (kind === "view" && text === lastView) return;
    lastView = text;
    report(kind, now);
}

const look = () => view("view");
for (const name of ["resize", "focus", "blur", "pageshow"]) addEventListener(name, look);
for (const name of ["visibilitychange", "fullscreenchange"]) document.addEventListener(name, look);
matchMedia("(display-mode:fullscreen)").addEventListener("change", look);
// Sends what still waits at once. The numbers put it in order.
addEventListener("pagehide", () => {
    while (waiting.length > 0) post();
});
addEventListener(
    "keydown",
    event =>
        report("key", {
            key: event.key,
            code: event.code,
            ctrl: event.ctrlKey,
            shift: event.shiftKey,
            alt: event.altKey,
            meta: event.metaKey,
            repeat: event.repeat,
        }),
    true,
);

// The field for messages, which appear only on this page. The page of an ended session has none.
const form = document.getElementById("write");
if (form !== null) {
    const field = form.elements.text;
    const messages = document.getElementById("messages");
    field.addEventListener("input", () => report("text", { text: field.value }));
    form.addEventListener("submit", event => {
        event.preventDefault();
        field.focus();
        if (field.value.trim() === "") return;
        report("message", { text: field.value });
        const item = document.createElement("li");
        const name = document.createElement("b");
        const now = new Date();
        item.className = "own";
        name.textContent = `Tu, ${two(now.getHours())}:${two(now.getMinutes())}`;
        item.append(name, field.value);
        messages.append(item);
        while (messages.children.length > 100) messages.firstChild.remove();
        messages.scrollTop = messages.scrollHeight;
        letKeysScroll();
        field.value = "";
    });
    field.focus({ preventScroll: true });
}

// What scrolls is a stop of the Tab key, and only then.
function letKeysScroll() {
    for (const list of document.querySelectorAll("main > ul, .chat > ol")) {
        const scrolls = list.scrollHeight > list.clientHeight || list.scrollWidth > list.clientWidth;
        if (scrolls) list.tabIndex = 0;
        else list.removeAttribute("tabindex");
    }
}

// The window is not all that changes their size: words about the server make room for themselves.
const sizes = new ResizeObserver(letKeysScroll);
for (const list of document.querySelectorAll("main > ul, .chat > ol")) sizes.observe(list);
view("opened");
