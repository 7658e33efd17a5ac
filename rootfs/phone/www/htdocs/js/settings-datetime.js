// Date and time: the phone's clock as it runs, one that is set by hand, the zone and its rule.
import "./app.js";  // which fills the form first
import { compose } from "./changed.js";
import { makeSearchable } from "./combobox.js";
import { BoundaryFields, byDate, byWeek, locale, sentences } from "./daylight.js";
import { t } from "./i18n.js";
import { message } from "./message.js";
import { ask, SessionEnded } from "./poll.js";
import { readZoneRule } from "./zone-rule.js";

const form = document.querySelector("form:has(.bar)");
const changed = () => form.dispatchEvent(new Event("change"));

// --- The clock. Hidden fields carry its parts.

const { date, time } = form.elements;
const phoneTime = document.getElementById("phone-time");
const [year, month, ...parts] = phoneTime.dataset.time.split(" ").map(Number);
const ahead = Date.UTC(year, month - 1, ...parts) - Date.now();
const clock = new Intl.DateTimeFormat(locale, { dateStyle: "full", timeStyle: "medium", timeZone: "UTC" });
let follows = true;  // the fields run with the computer's clock until they are changed

const twoDigits = (number) => String(number).padStart(2, "0");

function runClock() {
  phoneTime.textContent = clock.format(Date.now() + ahead);
  if (!follows) return;
  const now = new Date();
  date.value = date.defaultValue = [now.getFullYear(), now.getMonth() + 1, now.getDate()].map(twoDigits).join("-");
  time.value = time.defaultValue = [now.getHours(), now.getMinutes(), now.getSeconds()].map(twoDigits).join(":");
}

function composeClock() {
  runClock();
  const values = [...date.value.split("-"), ...time.value.split(":")].map(Number);
  ["Year", "Month", "Day", "Hour", "Minute", "Second"].forEach((part, index) => {
    form.elements[`Manual${part}`].value = values[index] ?? 0;
  });
}

for (const field of [date, time]) {
  field.addEventListener("focus", () => { follows = false; });
  field.addEventListener("blur", () => { follows = date.value === date.defaultValue && time.value === time.defaultValue; });
}
document.getElementById("take-time").addEventListener("click", () => {
  follows = true;
  runClock();
  changed();
});
setInterval(runClock, 1000);

// --- The zone: a field that is searched, its value carried by a hidden one.

const select = document.getElementById("TimeZoneAndName");
const carrier = document.createElement("input");
const picker = makeSearchable(select);
const plain = (text) => text.normalize("NFD").replace(/\p{M}/gu, "");

// "+5:30 …" is found by "UTC+05:30" and "GMT+5:30" as well.
function searchWords(text) {
  const [, sign = "+", hours = "0", minutes = "00"] = /^([+-]?)(\d+)(?::(\d+))?/.exec(text) ?? [];
  const offsets = [hours, twoDigits(hours)].flatMap((number) => ["UTC", "GMT"].map((name) => `${name}${sign || "+"}${number}:${minutes}`));
  return [plain(text), ...offsets].join(" ");
}

// A zone that is none of the list stays as it is stored.
function carryZone() {
  carrier.value = select.value;
  carrier.name = select.value ? "TimeZoneAndName" : "";
}

function prepareZone() {
  for (const option of select.options) option.dataset.search = searchWords(option.text);
  select.removeAttribute("name");
  carrier.type = "hidden";
  select.after(carrier);
  carryZone();
  carrier.dataset.stored = carrier.value;
  compose(form, {
    key: select.id,
    inputs: [carrier],
    label: () => document.getElementById("TimeZoneAndName").labels[0].textContent,
    say: ([value]) => value,
    write([value]) {
      select.value = value;
      picker.show();
      select.dispatchEvent(new Event("change", { bubbles: true }));
      return carrier.value === value;
    },
  });
}

// --- Daylight saving.

const ownRule = document.getElementById("own-rule");
const fields = Object.fromEntries([[byDate, "date"], [byWeek, "week"]].map(([kind, name]) =>
  [kind, ["S", "E"].map((edge) => new BoundaryFields(document.getElementById(name + edge), kind))]));
let asked = 0;

function showOwnRule({ kind, start, end, shift }, isStored) {
  if (!fields[kind]) return;
  const radio = [...form.elements.DSTTimeType].find(({ value }) => value === kind);
  radio.checked = true;
  if (isStored) radio.defaultChecked = true;
  else if (shift) form.elements.DSTOffSetTime.value = shift;
  fields[kind].forEach((boundary, index) => boundary.show([start, end][index], isStored));
}

function showStoredRule() {
  const { kind, start, end } = ownRule.dataset;
  const [startParts, endParts] = [start, end].map((text) => {
    const [monthPart, week, day, hour] = text.split("/");
    return { month: monthPart, week, day, hour };
  });
  for (const boundary of Object.values(fields).flat()) boundary.show({}, true);
  showOwnRule({ kind: kind === "byDate" ? byDate : byWeek, start: startParts, end: endParts }, true);
  changed();
}

function tellRule(lines) {
  document.getElementById("zone-rule").replaceChildren(...lines.map((line) => {
    const element = document.createElement("span");
    element.textContent = line;
    return element;
  }));
}

// Shows the rule of the chosen zone. While daylight saving is automatic, the phone's own rule begins as the same.
async function showZoneRule(isChosen) {
  const question = ++asked;
  try {
    const answer = select.value && await ask(`/servlet?p=settings-datetime&q=TimeZoneChanged&z=${encodeURIComponent(select.value)}`);
    if (question !== asked) return;
    const rule = readZoneRule(answer);
    tellRule(rule ? sentences(rule) : [t("The phone knows no rule for this time zone.")]);
    if (rule && isChosen && form.elements.LocalTimeDaylightSaving.value === "2") showOwnRule(rule, false);
  } catch (error) {
    tellRule([t("The phone does not answer. Please try again.")]);
    if (error instanceof SessionEnded) message(t("You have been logged out. Reload the page to log in."), "warning");
  }
}

// --- All of it.

prepareZone();
runClock();
showStoredRule();
showZoneRule(false);
select.addEventListener("change", () => {
  carryZone();
  showZoneRule(true);
});
form.addEventListener("reset", () => setTimeout(() => {
  carryZone();
  picker.show();
  follows = true;
  runClock();
  showZoneRule(false);
}));
// Before the form itself checks and saves.
form.addEventListener("submit", (event) => {
  composeClock();
  if (Object.values(fields).flat().map((boundary) => boundary.check()).every(Boolean)) return;
  event.preventDefault();
  event.stopImmediatePropagation();
  message(t("Not saved. Please correct the marked fields."), "error");
}, { capture: true });
