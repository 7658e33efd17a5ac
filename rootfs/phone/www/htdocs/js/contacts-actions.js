// What is done to chosen contacts and to all of a group.
import { t } from "./i18n.js";
import { everybody, groups, leaveTo, loadPage, Refusal, send, titleOf } from "./contacts-phone.js";
import { byPage, chosen } from "./contacts-list.js";
import { askFirst, listOf } from "./question.js";
import { attempt } from "./ask.js";
import { isSearching, searchAgain } from "./contacts-search.js";
import { message } from "./message.js";

let group = null;  // the one that the page shows
let page = 1;

const card = document.getElementById("contacts");
const target = document.getElementById("move-target");

// The line above the content is where a refusal shows.
const run = (work) => attempt({ set textContent(text) { message(text, "error"); }, dataset: {} }, card, work);

// The phone takes the rows of one page at a time. The last page goes first, so that the rows of the others stay where they
// are, and each is looked at before: in the meantime somebody else may have changed the directory.
async function inPages(contacts, act) {
  let done = 0;
  try {
    for (const [number, rows] of byPage(contacts)) {
      const { contacts: now } = await loadPage(group.id, number);
      const isSame = rows.every(({ index, name }) => now.some((contact) => contact.index === index && contact.name === name));
      if (!isSame) throw new Refusal(t("The directory has been changed meanwhile. Reload the page and try again."));
      await act(rows.map(({ index }) => index).sort((one, other) => one - other).join(","));
      done += rows.length;
    }
  } catch (error) {
    if (!done || !(error instanceof Refusal)) throw error;
    throw new Refusal(`${error.message} ${t("Done before that: %1 of %2.", done, contacts.length)}`);
  }
}

async function finish(text) {
  if (!isSearching()) {
    leaveTo(group.id, page, text);
    return;
  }
  await searchAgain();
  message(text);
}

async function remove() {
  const contacts = chosen();
  const names = contacts.map(({ name }) => name);
  const isSure = await askFirst({ title: t("Delete these contacts?"), text: t("Contacts: %1", names.length), parts: [listOf(names)], action: t("Delete") });
  if (!isSure) return;
  await inPages(contacts, (record) => send("delete", { record, group: group.id }));
  await finish(t("Deleted: %1", names.length));
}

async function move() {
  const goal = groups().find(({ id }) => id === target.value);
  if (!goal) {
    target.focus();
    return;
  }
  const contacts = chosen();
  const names = contacts.map(({ name }) => name);
  const isSure = await askFirst({ title: t("Move these contacts to %1?", titleOf(goal)), text: t("Contacts: %1", names.length), parts: [listOf(names)], action: t("Move") });
  if (!isSure) return;
  await inPages(contacts, (record) => send("moveto", { record, oldgroup: group.id, newgroup: goal.id }));
  await finish(t("Moved: %1", names.length));
}

async function empty() {
  const isSure = await askFirst({
    title: group.id === everybody ? t("Delete all contacts? Only the blacklist stays.") : t("Delete all contacts of %1?", titleOf(group)),
    text: document.getElementById("count").textContent,
    action: t("Delete all"),
  });
  if (!isSure) return;
  await send("delete", { record: "*", group: group.id });
  leaveTo(group.id, 1, t("The contacts have been deleted."));
}

export const removeChosen = () => run(remove);

// Runs work that may be refused, told in the page's message line.
export const runInPage = run;

export function prepareActions(currentGroup, currentPage) {
  group = currentGroup;
  page = currentPage;
  document.getElementById("delete-chosen").addEventListener("click", removeChosen);
  for (const option of target.options) option.disabled = option.value === group.id && group.id !== everybody;
  document.getElementById("move-chosen").addEventListener("click", () => run(move));
  const button = document.getElementById("empty-group");
  button.textContent = group.id === everybody ? t("Delete all contacts") : t("Delete all contacts of %1", titleOf(group));
  button.addEventListener("click", () => run(empty));
}
