// The call history: one list at a time, newest calls first, a search as one types, and calls by the phone. The list and
// the search stay in the address, so that a refresh keeps them.
import { openDial } from "./dial.js";
import { t } from "./i18n.js";

const filter = document.getElementById("filter");
const search = document.getElementById("search");
const found = document.getElementById("found");

const textOf = (row, name) => row.querySelector(`[data-var="${name}"]`).textContent;

// A call's row with what it says. Whom the directory does not know is named like the number's user.
function readCall(row) {
  const [name, number, account] = ["Name", "Number", "LocalIdentity"].map((field) => textOf(row, field));
  const user = number.split("@")[0];
  return { row, name, number, account, user, isKnown: name !== user, text: `${name} ${number} ${account}`.toLowerCase() };
}

// A number is no name to add.
function contactAddress({ name, user }) {
  const known = /^[\d*#+]*$/.test(name) ? "" : name;
  return `new?number=${encodeURIComponent(user)}&name=${encodeURIComponent(known)}`;
}

function prepareCall(call) {
  const { row, name, number, account, isKnown } = call;
  if (name === number) row.querySelector('[data-var="Number"]').remove();
  const dial = row.querySelector("[data-call]");
  dial.setAttribute("aria-label", t("Call: %1", name));
  dial.addEventListener("click", () => openDial({ number, name: isKnown ? name : "", account }));
  const add = row.querySelector("[data-add]");
  add.hidden = isKnown;
  add.hash = contactAddress(call);
  add.setAttribute("aria-label", t("Add to contacts: %1", name));
}

// The lists that the reader may see: the choice, the list's card and its calls.
function readLists() {
  const choices = [...filter.elements.list].filter((choice) => {
    const isShown = !choice.parentElement.hidden && !document.getElementById(choice.value).hidden;
    choice.parentElement.hidden = !isShown;
    return isShown;
  });
  return choices.map((choice) => {
    const card = document.getElementById(choice.value);
    const body = card.querySelector("tbody");
    const calls = [...body?.rows ?? []].reverse().map(readCall);
    body?.append(...calls.map(({ row }) => row));
    calls.forEach(prepareCall);
    return { choice, card, calls };
  });
}

const lists = readLists();

function show() {
  const words = search.value.toLowerCase().split(/\s+/).filter(Boolean);
  for (const { choice, card, calls } of lists) {
    let count = 0;
    for (const { row, text } of calls) {
      row.hidden = !words.every((word) => text.includes(word));
      if (!row.hidden) ++count;
    }
    choice.parentElement.querySelector(".count").textContent = count;
    card.hidden = !choice.checked;
    if (choice.checked && words.length) found.textContent = count ? t("Calls found: %1", count) : t("No call in this list matches.");
  }
  if (!words.length) found.textContent = "";
}

function remember() {
  const state = { list: filter.elements.list.value, ...(search.value && { search: search.value }) };
  history.replaceState(null, "", `#${new URLSearchParams(state)}`);
}

function restore() {
  const state = new URLSearchParams(location.hash.slice(1));
  const { choice } = lists.find((list) => list.choice.value === state.get("list")) ?? lists[0];
  choice.checked = true;
  search.value = state.get("search") ?? "";
}

if (lists.length) {
  restore();
  show();
  filter.hidden = false;
  filter.addEventListener("input", () => { remember(); show(); });
  filter.addEventListener("submit", (event) => event.preventDefault());
}
document.getElementById("refresh").addEventListener("click", () => location.reload());
