"use strict";

// The camera and the microphone, asked for each by itself, so that one which is refused does not take the other along.
// What they give stays on this page. "granted" is the browser's answer; "live" is the first picture, or the first sound
// that is not silence: a system may grant a device and then hand over black and silence.
const stateTexts = {
    camera: {
        asked: "richiesta",
        granted: "concessa, ancora nera",
        live: "attiva",
        refused: "rifiutata",
        missing: "assente",
        failed: "non disponibile",
        ended: "interrotta",
    },
    microphone: {
        asked: "richiesto",
        granted: "concesso, ancora muto",
        live: "attivo",
        refused: "rifiutato",
        missing: "assente",
        failed: "non disponibile",
        ended: "interrotto",
    },
};
const stateOfError = { NotAllowedError: "refused", NotFoundError: "missing" };

function tell(device, state, detail) {
    const place = document.getElementById(device);
    place.dataset.state = state;
    place.querySelector("span").textContent = stateTexts[device][state];
    place.title = detail;
    if (state !== "asked") report("device", { device, state, detail: detail.slice(0, 1000) });
}

function watchPicture(stream, live) {
    const video = document.getElementById("self");
    video.addEventListener("loadeddata", live, { once: true });
    video.srcObject = stream;
}

function watchSound(stream, live) {
    const context = new AudioContext();
    const analyser = context.createAnalyser();
    const samples = new Float32Array(analyser.fftSize);
    const level = document.getElementById("level");
    let heard = false;
    context.createMediaStreamSource(stream).connect(analyser);
    // A page that records may play; a browser that does not think so stays silent until the first press.
    addEventListener("pointerdown", () => context.resume(), { once: true });
    const listen = () => {
        analyser.getFloatTimeDomainData(samples);
        const loudest = samples.reduce((most, sample) => Math.max(most, Math.abs(sample)), 0);
        level.value = loudest;
        if (!heard && loudest > 0) live();
        heard = heard || loudest > 0;
    };
    setInterval(listen, 100);
}

async function use(device, wanted, watch) {
    tell(device, "asked", "");
    try {
        const stream = await navigator.mediaDevices.getUserMedia(wanted);
        const [track] = stream.getTracks();
        tell(device, "granted", track.label);
        track.addEventListener("ended", () => tell(device, "ended", track.label));
        watch(stream, () => tell(device, "live", track.label));
    } catch (error) {
        tell(device, stateOfError[error.name] ?? "failed", `${error.name}: ${error.message}`);
    }
}

use("camera", { video: true }, watchPicture);
use("microphone", { audio: true }, watchSound);
