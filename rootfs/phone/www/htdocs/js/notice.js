// The notice page. Its label is "timer$page$message": setInterval waits for the phone to come back and then opens the
// page, setTimeout shows the message and goes back. The page "notice" is the one that was open before.
import { showValue, t } from "./i18n.js";
import { ask, SessionEnded } from "./poll.js";
import { take } from "./store.js";

const readSeconds = 4;       // how long a message stays before the page goes back
const askSeconds = 2;        // between two looks whether the phone is back
const beginSeconds = 10;     // within which work that was ordered is under way
const silentSeconds = 90;    // without an answer at the old address, after which the phone is looked for at its new one
const openSeconds = 20;      // in which a browser may open a page there
const patienceSeconds = 180; // a phone that takes longer may have got another address

const aliases = new Map([["Password", "security"]]);  // names in notices that are no pages
// Pages that tell themselves whether the work goes on: the question, and the answer while it does. The work may take a
// while to begin.
const workers = new Map([["settings-autop", { question: "/servlet?p=settings-autop&q=result", busy: "autoprovision" }]]);

const notice = document.getElementById("notice");
const link = document.getElementById("notice-link");
const progress = document.getElementById("notice-progress");
const [timer, name, ...rest] = notice.dataset.notice.split("$");
const page = aliases.get(name) ?? name;
const worker = workers.get(page);
const [newAddress] = (take("addresses") ?? []).filter((address) => /^https?:\/\/[^/]+\/$/.test(address) && address !== `${location.origin}/`);

function addressOf(target) {
  const entry = document.querySelector(`#navigation [data-page="${CSS.escape(target)}"]`);
  return entry?.getAttribute("href") ?? `/servlet?p=${encodeURIComponent(target)}&q=load`;
}

const goBack = () => page === "notice" ? history.back() : location.replace(addressOf(page));

const wait = (seconds) => new Promise((done) => setTimeout(done, seconds * 1000));

// The phone forgets its sessions when it restarts: it is back when it asks for a login, or when it answers again after
// it had been away.
async function isBack(state, seconds) {
  try {
    if (worker) {
      const isBusy = (await ask(worker.question)).trim() === worker.busy;
      state.wasBusy ||= isBusy;
      return !isBusy && (state.wasBusy || seconds >= beginSeconds);
    }
    await ask(addressOf(page), "application/json");
    state.silentFrom = null;
    return state.wasAway;
  } catch (error) {
    if (error instanceof SessionEnded) return true;
    state.wasAway = true;
    state.silentFrom ??= Date.now();
    return false;
  }
}

// The link to where the phone will be found stands from the beginning.
function showNewAddress() {
  const shown = document.getElementById("notice-address");
  shown.hidden = false;
  const [before, after] = t("The phone will be found at %1. Without an answer here, this page goes there by itself.").split("%1");
  const there = document.createElement("a");
  there.href = newAddress;
  there.textContent = newAddress;
  there.translate = false;
  shown.replaceChildren(before, there, after);
}

// A page of another origin can be asked only by opening it. Until it answers this page stays, and goes on asking here;
// whoever comes back from there finds the page that was saved, and not the save once more.
function lookThere(state) {
  state.silentFrom = Date.now();
  history.replaceState(null, "", addressOf(page));
  location.assign(newAddress);
  setTimeout(() => window.stop(), openSeconds * 1000);
}

async function waitForPhone() {
  notice.querySelector(".spinner").hidden = false;
  link.textContent = t("Open the page now");
  const state = { wasAway: false, wasBusy: false, silentFrom: null };
  if (newAddress) showNewAddress();
  const begin = Date.now();
  let seconds = 0;
  do {
    await wait(askSeconds);
    if (newAddress && state.silentFrom && Date.now() - state.silentFrom >= silentSeconds * 1000) lookThere(state);
    seconds = Math.round((Date.now() - begin) / 1000);
    progress.textContent = seconds < patienceSeconds || (worker && !state.wasAway)
      ? t("Waiting for the phone: %1 s", seconds)
      : t("The phone has not come back yet. Its address may have changed: look at its screen.");
  } while (!await isBack(state, seconds));
  location.replace(addressOf(page));
}

const text = document.getElementById("notice-text");
text.dataset.text = "";
showValue(text, rest.join("$"));
if (page !== "notice") link.href = addressOf(page);
else if (history.length > 1) link.addEventListener("click", (event) => { event.preventDefault(); history.back(); });

if (timer === "setInterval") {
  waitForPhone();
} else {
  wait(readSeconds).then(() => { if (page !== "notice" || history.length > 1) goBack(); });
}
