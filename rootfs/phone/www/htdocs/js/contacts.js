// The page of the local directory.
import { openDial } from "./dial.js";
import { t } from "./i18n.js";
import { groups, loadPage, membersOf, rowsPerPage, titleOf } from "./contacts-phone.js";
import { prepareActions, removeChosen, runInPage } from "./contacts-actions.js";
import { complete, openEdit, prepareContactForm } from "./contacts-form.js";
import { prepareGroups } from "./contacts-groups.js";
import { prepareImport } from "./contacts-import.js";
import { mark, prepareList, showContacts, writtenContacts } from "./contacts-list.js";
import { openPages, preparePages } from "./contacts-pages.js";
import { prepareSearch } from "./contacts-search.js";

const links = [...document.querySelectorAll("#groups [data-group]")];
const selected = links.find((link) => link.dataset.selected === "1");
const count = document.getElementById("count");

function nameGroups(known) {
  for (const element of document.querySelectorAll("[data-group]")) {
    const group = known.find(({ id }) => id === element.dataset.group);
    element.textContent = titleOf(group);
    element.dataset.name = group.name;
  }
  selected?.setAttribute("aria-current", "true");
}

function showCounts(contacts) {
  for (const link of links) {
    const badge = link.querySelector("small") ?? link.appendChild(document.createElement("small"));
    badge.textContent = membersOf(contacts, link.dataset.name).length;
  }
}

// The list tells its pages; how many contacts stand on the last one, that page tells.
async function showCount(group, written) {
  const { open, last } = openPages();
  const lastRows = open === last ? written : (await loadPage(group.id, last)).contacts;
  count.textContent = t("Contacts: %1", (last - 1) * rowsPerPage + lastRows.length);
}

const call = (contact, number) => runInPage(async () => {
  const { name, account } = await complete(contact);
  openDial({ number, name, account });
});

function showList(group) {
  const written = writtenContacts();
  const showPage = () => {
    showContacts(written, { empty: t("There is nobody in this group yet.") });
    document.getElementById("pages").classList.remove("unused");
  };
  prepareList({ edit: (contact) => runInPage(() => openEdit(contact)), call, remove: removeChosen });
  preparePages();
  showPage();
  prepareSearch(group, { onKnown: showCounts, onEmpty: showPage, onHits: () => document.getElementById("pages").classList.add("unused") });
  mark(sessionStorage.getItem("contacts-mark") ?? "");
  sessionStorage.removeItem("contacts-mark");
  showCount(group, written).catch(() => {});  // a number less on the page
}

const known = groups();
nameGroups(known);
const group = known.find(({ id }) => id === selected?.dataset.group);
if (group && !document.getElementById("no-list")) {
  document.getElementById("group-title").textContent = titleOf(group);
  showList(group);
  const page = openPages().open;
  prepareActions(group, page);
  prepareContactForm(group, page);
  prepareGroups(group);
} else {
  for (const id of ["title", "pages", "group-tools", "add"]) document.getElementById(id).hidden = true;
  document.querySelector(".people").hidden = true;
}
prepareImport();
