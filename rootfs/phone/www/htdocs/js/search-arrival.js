// Brings a setting before its reader: scrolled to, marked for a moment, with the focus.
import { t } from "./i18n.js";

const main = document.getElementById("main");
const deepest = 5;  // settings that bring each other
const control = "input:not([type=hidden]), select, textarea, button, a[href]";

// The anchor that a fragment of an address holds.
export function anchorOf(hash) {
  try {
    return decodeURIComponent(hash.slice(1));
  } catch {
    return "";
  }
}

// An anchor is an id, a name or, of what has neither, its label in English.
function find(anchor) {
  const quoted = CSS.escape(anchor);
  const byName = `[name="${quoted}"]:not([type=hidden]), [data-var="${quoted}"]`;
  const byLabel = () => [...main.querySelectorAll("h2, dt, label, .label")].find((label) => label.textContent.trim() === t(anchor));
  const found = main.querySelector(`[id="${quoted}"]`) ?? main.querySelector(byName) ?? byLabel();
  if (!found || found.closest("dialog")) return null;
  const isPart = found.matches(`${control}, .field, .card, h2, dt, dd, label, .label`);
  return isPart ? found.closest(".field, dl > div, .card") : null;
}

// The field of the setting that decides whether this part of the form is shown.
function fieldThatBrings(part) {
  const other = part.closest("form").elements[part.dataset.when.split("=")[0]];
  const one = other instanceof RadioNodeList ? [...other].find(({ type }) => type !== "hidden") : other;
  return one?.closest(".field");
}

// What of the place can be seen: the place itself, the setting that brings it, or the nearest thing around.
function reveal(place) {
  if (place.closest("#key-editor[hidden]")) document.querySelector(".keys > li > button")?.click();
  for (let fold = place.closest("details"); fold; fold = fold.parentElement.closest("details")) fold.open = true;
  let shown = place;
  for (let depth = 0; depth < deepest && shown.closest(".unused[data-when]"); ++depth) {
    shown = fieldThatBrings(shown.closest(".unused[data-when]")) ?? shown.parentElement;
  }
  while (shown !== main && !shown.checkVisibility()) shown = shown.parentElement;
  return shown;
}

function explain(place, shown) {
  if (!place.closest(".unused[data-when]") || !shown.matches(".field")) return;
  const hint = document.createElement("p");
  hint.className = "outcome arrival";
  hint.dataset.kind = "warning";
  hint.setAttribute("role", "status");
  const name = place.querySelector("label, .label, h2").textContent.trim();
  hint.textContent = t("“%1” appears once you change this setting.", name);
  shown.append(hint);
  shown.addEventListener("change", () => hint.remove(), { once: true });
}

function focus(shown) {
  const target = shown.querySelector("input[type=radio]:checked") ??
    [...shown.querySelectorAll(control)].find((one) => one.checkVisibility() && !one.disabled) ?? shown;
  if (target === shown && !shown.hasAttribute("tabindex")) shown.tabIndex = -1;
  target.focus({ preventScroll: true });
}

// False when the page has no such setting, or none with an empty anchor; then it shows its beginning.
export function showSetting(anchor) {
  for (const hint of main.querySelectorAll(".arrival")) hint.remove();
  for (const earlier of main.querySelectorAll(".arrived")) earlier.classList.remove("arrived");
  const place = anchor ? find(anchor) : null;
  if (!place) return false;
  const shown = reveal(place);
  if (shown === main) return false;
  const isTall = shown.offsetHeight > window.innerHeight / 2;
  shown.scrollIntoView({ block: isTall ? "start" : "center" });
  focus(shown);
  explain(place, shown);
  requestAnimationFrame(() => shown.classList.add("arrived"));
  shown.addEventListener("animationend", () => shown.classList.remove("arrived"), { once: true });
  return true;
}
