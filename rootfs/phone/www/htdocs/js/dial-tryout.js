// Tries a number: which rules of the dial plan take it, and what the phone dials in the end. Nothing is called.
import { ask, Forbidden, plain, Refusal } from "./ask.js";
import { tidyNumber } from "./checks.js";
import { dial } from "./dial-rules.js";
import { t } from "./i18n.js";

const { page } = document.body.dataset;
const numberField = document.getElementById("try-number");
const accountField = document.getElementById("try-account");
const result = document.getElementById("try-result");

// What the page's own form says, saved or not, goes before what is stored.
const typedValue = (name) => document.querySelector(`form:has(.bar) [name="${name}"]`)?.value;

const rulesOf = ({ TRLoop = [] }, read) => TRLoop.map((row) => {
  const known = Object.fromEntries(Object.entries(row).map(([name, value]) => [name, plain(value)]));
  return read(known);
});

function areaCodeOf(stored) {
  const value = (name) => typedValue(name) ?? plain(stored[name]);
  const [shortest, longest] = ["AreaCodeMinLen", "AreaCodeMaxLen"].map((name) => Number(value(name)));
  return { code: value("AreaCode"), shortest, longest, accounts: value("AreaCodeAccount") };
}

// Rules of a page that the reader may not see are as good as none; the result says so.
let isIncomplete = false;
async function rulesPage(name) {
  try {
    return await ask(name, "load");
  } catch (error) {
    if (!(error instanceof Forbidden)) throw error;
    isIncomplete = true;
    return {};
  }
}

let plan = null;  // a promise of it
async function load() {
  const [replace, dialNow, areaCode, blocked] =
    await Promise.all(["settings-dialplan", "settings-dialnow", "settings-areacode", "settings-blackout"].map(rulesPage));
  return () => ({
    replace: rulesOf(replace, (row) => ({ prefix: row.textPrefix, replacement: row.textReplace, accounts: row.textAccount })),
    dialNow: rulesOf(dialNow, (row) => ({ rule: row.textRule, accounts: row.textAccount })),
    areaCode: areaCodeOf(areaCode),
    blocked: rulesOf(blocked, ({ row, BlackOut, Account }) =>
      ({ rule: typedValue(`BlackOut_${row}`) ?? BlackOut, accounts: typedValue(`Account_${row}`) ?? Account })),
  });
}

// A number keeps its order in a text that runs from right to left.
const isolated = (number) => `\u2066${number}\u2069`;

function* tell({ dialNow, replaced, areaCode, blocked, number }) {
  if (dialNow?.rest) yield [t("Dial-now rule %1 dials as soon as %2 is typed, without %3.", dialNow.rule, isolated(dialNow.number), isolated(dialNow.rest)), "warning"];
  else if (dialNow) yield [t("Dial-now rule %1 dials it at once.", dialNow.rule)];
  if (replaced) yield [t("Replace rule %1 makes it %2.", replaced.rule, isolated(replaced.number))];
  if (areaCode) yield [t("The area code makes it %1.", isolated(areaCode.number))];
  if (!dialNow && !replaced && !areaCode) yield [t("No rule changes it.")];
  if (isIncomplete) yield [t("Rules that your user level may not see are left out."), "warning"];
  if (blocked) yield [t("Not dialled: %1 is blocked by entry %2.", isolated(number), blocked.rule), "error"];
  else yield [t("Dialled: %1", isolated(number)), "success"];
}

function showLines(lines) {
  result.replaceChildren(...lines.map(([text, kind = "step"]) => {
    const item = document.createElement("li");
    item.textContent = text;
    item.dataset.kind = kind;
    return item;
  }));
}

// The row of this page's rule that takes the number.
function markRow({ dialNow, replaced }) {
  const taking = { "settings-dialplan": replaced, "settings-dialnow": dialNow }[page];
  for (const row of document.querySelectorAll("tr[data-row]")) row.classList.toggle("taking", Number(row.dataset.row) === taking?.rule);
}

async function tryNumber() {
  const number = tidyNumber(numberField.value);
  const isTried = () => number && number === tidyNumber(numberField.value);
  if (!number) {
    showLines([]);
    markRow({});
    return;
  }
  try {
    plan ??= load();
    const current = await plan;
    if (!isTried()) return;
    const steps = dial(number, accountField.value, current());
    showLines([...tell(steps)]);
    markRow(steps);
  } catch (error) {
    plan = null;
    if (!(error instanceof Refusal)) throw error;
    if (isTried()) showLines([[error.message, "error"]]);
  }
}

for (const field of [numberField, accountField]) field.addEventListener("input", tryNumber);
document.querySelector("form:has(.bar)")?.addEventListener("input", tryNumber);
