// The upgrade page: an upgrade that is watched until the phone is back, questions before a restart or a reset, captures.
import { showValue, t } from "./i18n.js";
import { message } from "./message.js";
import { SessionEnded } from "./poll.js";
import { examine, megabytes } from "./upgrade-image.js";
import { askFirmware, forget, isTalking, prepare, remember, remembered, restartInSafeMode, send, waitForFirmware } from "./upgrade-run.js";

const patienceSeconds = 180;  // a phone that takes longer may have got another address
const noCapture = "Invalid file name.";  // in place of a file

const $ = (id) => document.getElementById(id);

const show = (id, text, kind = "error") => {
  $(id).textContent = text;
  $(id).dataset.kind = kind;
};

// Questions

for (const button of document.querySelectorAll("[data-opens]")) {
  button.addEventListener("click", () => $(button.dataset.opens).showModal());
}
for (const button of document.querySelectorAll("dialog [data-close]")) {
  button.addEventListener("click", () => button.closest("dialog").close());
}

// The upgrade

const steps = [...document.querySelectorAll(".steps > li")];
const [preparing, sending, installing] = steps;
const form = $("upgrade");
const { upgradeFile: field } = form.elements;
const others = [$("capture"), ...document.querySelectorAll("[data-opens]")];
let isBreakable = false;  // leaving the page would break the upgrade off

window.addEventListener("beforeunload", (event) => { if (isBreakable) event.preventDefault(); });

function step(current, text) {
  form.hidden = current !== null;
  $("upgrade-run").hidden = current === null;
  for (const part of others) part.inert = part.disabled = current !== null;
  for (const one of steps) {
    one.toggleAttribute("data-done", steps.indexOf(one) < steps.indexOf(current));
    if (one === current) one.setAttribute("aria-current", "step");
    else one.removeAttribute("aria-current");
  }
  $("upgrade-progress").hidden = current !== sending;
  isBreakable = current === preparing || current === sending;
  if (current && $("upgrade-step").textContent !== current.textContent) {
    $("upgrade-step").textContent = current.textContent;
    $("upgrade-run").focus();
  }
  $("upgrade-state").textContent = text ?? "";
}

function end(text, kind) {
  step(null);
  forget();
  message(text, kind);
  scrollTo(0, 0);
}

const tellWaiting = (seconds) => step(installing, seconds < patienceSeconds
  ? t("Waiting for the phone: %1 s", seconds)
  : t("The phone has not come back yet. Its address may have changed: look at its screen."));

function tellOutcome(upgrade, firmware) {
  $("firmware").textContent = firmware;
  if (firmware !== upgrade.before) end(t("The phone now has firmware %1.", firmware), "success");
  else if (firmware === upgrade.version) end(t("The phone is back with firmware %1, as in the file.", firmware), "success");
  else end(t("The upgrade failed. The phone still has firmware %1.", firmware), "error");
}

const brokenOff = () => end(t("The upgrade was broken off before the phone had the file. Restart the phone, so that it can make and take calls again."), "error");

async function follow(upgrade) {
  remember({ ...upgrade, phase: "sent" });
  tellOutcome(upgrade, await waitForFirmware(upgrade, tellWaiting));
}

function showSent(part, file) {
  $("upgrade-progress").value = part;
  step(sending, t("%1 of %2 MB sent", megabytes(part * file.size), megabytes(file.size)));
  if (part === 1) step(installing, t("The phone has the file and checks it."));
}

async function run(file, version) {
  if (await isTalking()) {
    end(t("Talking, Please wait..."), "warning");
    return;
  }
  const upgrade = { before: await askFirmware(), version, phase: "begun", begun: Date.now() };
  remember(upgrade);
  step(preparing, t("The phone ends its applications. This takes some seconds."));
  if (!await prepare()) {
    brokenOff();
    return;
  }
  remember({ ...upgrade, phase: "sent" });
  showSent(0, file);
  if (await send(file, (part) => showSent(part, file))) await follow(upgrade);
  else brokenOff();
}

// What the phone's silence is told by: `tell` gets the text.
async function attempt(work, tell = (text) => end(text, "error")) {
  try {
    await work();
  } catch (error) {
    tell(error instanceof SessionEnded
      ? t("You have been logged out. Reload the page to log in.") : t("The phone does not answer. Please try again."));
  }
}

async function examineFile() {
  const [file] = field.files;
  const { version, fault } = await examine(file);
  if (fault) show("upgrade-file", fault);
  else show("upgrade-file", t("Version %1, %2 MB", version, megabytes(file.size)), "success");
  return version && { file, version };
}

field.addEventListener("change", () => field.files.length ? examineFile() : show("upgrade-file", ""));

let chosen;
form.addEventListener("submit", async (event) => {
  event.preventDefault();
  message("");
  chosen = await examineFile();
  if (!chosen) return;
  $("upgrade-text").textContent = t("The phone gets firmware %1. Its applications end, and it restarts: it cannot make or take calls until it is back.", chosen.version);
  $("upgrade-dialog").showModal();
});
$("upgrade-begin").addEventListener("click", () => {
  $("upgrade-dialog").close();
  attempt(() => run(chosen.file, chosen.version));
});

// An upgrade that was on its way when this page was left.
async function resume(upgrade) {
  if (upgrade.phase === "begun") brokenOff();
  else if (upgrade.phase === "back") tellOutcome(upgrade, await askFirmware());
  else await follow(upgrade);
}
if (remembered()) attempt(() => resume(remembered()));

$("safe-mode-begin").addEventListener("click", () => {
  $("safe-mode-dialog").close();
  attempt(() => restartInSafeMode(tellWaiting));
});

// Captures

const captureStates = { 0: "Stoped", 1: "Running" };

function showCapture(state) {
  showValue($("capture-state"), captureStates[state] ?? "Unknown");
  $("capture-start").disabled = state === "1";
  $("capture-stop").disabled = state !== "1";
}

async function download(response) {
  const file = await response.blob();
  if (file.size === noCapture.length && await file.text() === noCapture) {
    show("capture-result", t("Invalid file name."), "warning");
    return;
  }
  const link = document.createElement("a");
  link.href = URL.createObjectURL(file);
  link.download = /filename=(.*)/.exec(response.headers.get("Content-Disposition"))?.[1] ?? "capture.pcap";
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60 * 1000);
}

async function capture(action) {
  const response = await fetch(action, { method: "POST", headers: { Accept: "application/json" } });
  if (response.url.includes("p=login")) throw new SessionEnded();
  if (!response.ok) throw new Error(`status ${response.status}`);
  if (!response.redirected) await download(response);
  else showCapture(JSON.parse(await response.text()).variables.pcapUpdate);
}

for (const one of document.querySelectorAll("#capture form")) {
  one.addEventListener("submit", async (event) => {
    event.preventDefault();
    show("capture-result", "");
    await attempt(() => capture(one.action), (text) => show("capture-result", text));
  });
}
showCapture($("capture").dataset.capture);
