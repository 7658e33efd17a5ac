// Search over a whole group: the phone's export is fetched when the first letter is typed, and again after a change.
import { t } from "./i18n.js";
import { loadDirectory, membersOf, Refusal } from "./contacts-phone.js";
import { showContacts } from "./contacts-list.js";
import { show } from "./ask.js";

const pause = 150;   // milliseconds after a key before the search begins
const portion = 50;  // hits that are shown at once

const field = document.getElementById("search");
const result = document.getElementById("search-result");
const more = document.getElementById("more");

let group = null;
let told = {};  // onKnown, onHits, onEmpty of the page
let isChanged = false;  // what the phone wrote into the page is no longer so
let members = null;  // a promise of the group's contacts, each with its row number
let hits = [];
let visible = 0;

const simple = (text) => text.normalize("NFD").replace(/\p{M}/gu, "").toLowerCase();
const digits = (text) => text.replace(/[\s()/.-]/g, "");

async function load() {
  const { contacts } = await loadDirectory();
  told.onKnown(contacts);
  return membersOf(contacts, group.name).map((contact, index) => ({ ...contact, index: index + 1 }));
}

function find(contacts, text) {
  const words = simple(text).split(/\s+/).filter(Boolean);
  const number = digits(text);
  const isNumber = /^[\d*#+]+$/.test(number);
  return contacts.filter(({ name, office, mobile, other }) => {
    const called = simple(name);
    return words.every((word) => called.includes(word)) ||
      [office, mobile, other].some((one) => (isNumber ? digits(one).includes(number) : one && simple(one).includes(simple(text))));
  });
}

function showMore() {
  const next = hits.slice(visible, visible + portion);
  showContacts(next, { more: visible > 0, empty: t("No contact has this name or number.") });
  told.onHits();
  visible += next.length;
  more.hidden = visible >= hits.length;
  show(result, t("Found: %1", hits.length), "success");
}

async function search() {
  const text = field.value.trim();
  if (!text) {
    show(result, "");
    more.hidden = true;
    if (isChanged) location.reload();
    else told.onEmpty();
    return;
  }
  try {
    if (!members) show(result, t("Searching…"), "warning");
    members ??= load();
    const contacts = await members;
    if (text !== field.value.trim()) return;
    hits = find(contacts, text);
    visible = 0;
    showMore();
  } catch (error) {
    members = null;
    if (!(error instanceof Refusal)) throw error;
    show(result, error.message);
  }
}

export const isSearching = () => field.value.trim() !== "";

// Fetches everything anew after a change and shows the hits that there are now.
export async function searchAgain() {
  members = null;
  isChanged = true;
  await search();
}

// onKnown(contacts) is told of the whole directory, onHits() that hits are shown, onEmpty() that the search has ended.
export function prepareSearch(currentGroup, page) {
  group = currentGroup;
  told = page;
  field.parentElement.hidden = false;
  let waiting;
  field.addEventListener("input", () => {
    clearTimeout(waiting);
    waiting = setTimeout(search, pause);
  });
  field.addEventListener("keydown", ({ key }) => { if (key === "ArrowDown") document.querySelector(".people tbody :is(input, button)")?.focus(); });
  more.addEventListener("click", () => {
    const first = visible;
    showMore();
    document.querySelectorAll(".people tbody tr")[first]?.querySelector("input, button")?.focus();
  });
}
