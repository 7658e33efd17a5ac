// Keeps the status page up to date through its JSON view: only what changed is written.
import { showValue, t } from "./i18n.js";
import { message } from "./message.js";
import { ask, poll, SessionEnded } from "./poll.js";

const refreshSeconds = 4;
const entities = { "&amp;": "&", "&lt;": "<", "&gt;": ">", "&quot;": '"' };

// Some values come escaped for HTML, some plain; as on the page, one level of escaping is taken off.
const plain = (value) => value.replace(/&(?:amp|lt|gt|quot);/g, (entity) => entities[entity]);

const loops = () => [...document.querySelectorAll("[data-loop]")];
const single = (name) => [...document.querySelectorAll(`main [data-var="${name}"]`)].find((cell) => !cell.closest("[data-loop]"));

// The page has other parts than the answer: an address mode was changed, a module was plugged in.
function isOutgrown(variables) {
  const shown = [...document.querySelectorAll("main [data-var]")].filter((cell) => !cell.closest("[data-loop]"));
  if (shown.some((cell) => !(cell.dataset.var in variables))) return true;
  if (["DHCPstatus", "NetworkIPv6WanIP"].some((name) => name in variables && !single(name))) return true;
  const rowsOf = (name) => document.querySelectorAll(`[data-loop="${name}"] > tr`).length;
  return ["AccountLoop", "extLoop"].some((name) => (variables[name] ?? []).length !== rowsOf(name));
}

function showRow(row, values) {
  if ("enabled" in row.dataset) row.dataset.enabled = plain(values.enabled ?? "");
  for (const cell of row.querySelectorAll("[data-var]")) showValue(cell, plain(values[cell.dataset.var] ?? ""));
}

function show(variables) {
  for (const [name, value] of Object.entries(variables)) {
    const cell = typeof value === "string" && single(name);
    if (cell) showValue(cell, plain(value));
  }
  for (const loop of loops()) {
    [...loop.rows].forEach((row, index) => showRow(row, variables[loop.dataset.loop][index]));
  }
}

const live = document.getElementById("live");
const pause = document.getElementById("pause");

function setState(state, text) {
  live.dataset.state = state;
  live.textContent = text;
}

async function refresh() {
  try {
    const { template, variables } = JSON.parse(await ask("/servlet?p=status&q=load", "application/json"));
    if (template !== "status" || isOutgrown(variables)) {
      location.reload();
      return;
    }
    show(variables);
    if (live.dataset.state === "away") setState("on", t("Live"));
    message("");
  } catch (error) {
    if (error instanceof SessionEnded) location.reload();
    if (live.dataset.state === "paused") return;
    setState("away", t("Offline"));
    message(t("The phone does not answer. This page continues when it is back."), "warning");
  }
}

const questions = poll(refreshSeconds, refresh);
setState("on", t("Live"));
live.parentElement.hidden = false;
pause.addEventListener("click", () => {
  const paused = live.dataset.state === "paused";
  setState(paused ? "on" : "paused", paused ? t("Live") : t("Paused"));
  pause.textContent = paused ? t("Pause") : t("Resume");
  if (paused) questions.resume();
  else questions.pause();
});
