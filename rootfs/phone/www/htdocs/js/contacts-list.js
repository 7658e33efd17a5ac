// The table of contacts: rows of a page or of a search, and which of them are chosen.
import { t } from "./i18n.js";
import { everybody, groups, photoAddress, rowsPerPage, standard } from "./contacts-phone.js";

const table = document.querySelector(".people");
const [body] = table.tBodies;
const chooseAll = document.getElementById("choose-all");
const chosenText = document.getElementById("chosen");
const chosenActions = document.getElementById("chosen-actions");
const chosenTools = document.getElementById("chosen-tools");
const nobody = document.getElementById("nobody");
const mayEdit = !document.getElementById("add").hidden;
const titles = [...table.tHead.rows[0].cells].map((cell) => cell.textContent);

let shown = [];  // the contacts of the rows
let handlers = {};  // edit(contact), call(contact, number), remove()

// What the phone wrote into the table. A row without a name is no contact.
export const writtenContacts = () => [...body.rows].filter((row) => row.dataset.name).map((row) => {
  const [, , office, mobile, other, group] = [...row.cells].map((cell) => cell.textContent);
  const { index, name, account, ring, photo } = row.dataset;
  return { index: Number(index), name, office, mobile, other, group, account, ring, photo };
});

function make(tag, properties = {}, children = []) {
  const element = Object.assign(document.createElement(tag), properties);
  element.append(...children);
  return element;
}

function boxOf(contact) {
  const box = make("input", { type: "checkbox" });
  box.setAttribute("aria-label", t("Select: %1", contact.name));
  return box;
}

function faceOf({ name, photo = "" }) {
  const own = photo && !photo.startsWith(standard);
  const face = own ? make("img", { className: "face", src: photoAddress(photo), alt: "", loading: "lazy" })
    : make("span", { className: "face", textContent: [...name.trim()][0]?.toUpperCase() ?? "" });
  face.setAttribute("aria-hidden", "true");
  return face;
}

function numberButton(contact, number) {
  const button = make("button", { type: "button", className: "link", textContent: number, translate: false });
  button.setAttribute("aria-label", t("Call: %1", `${contact.name}, ${number}`));
  button.addEventListener("click", () => handlers.call(contact, number));
  return button;
}

function editButton(contact) {
  const button = make("button", { type: "button", className: "small", textContent: t("Edit") });
  button.setAttribute("aria-label", t("Edit: %1", contact.name));
  button.addEventListener("click", () => handlers.edit(contact));
  return button;
}

function rowOf(contact) {
  const numbers = [contact.office, contact.mobile, contact.other];
  const allName = groups().find(({ id }) => id === everybody)?.name;
  const cells = [
    make("th", { scope: "row" }, [make("span", { className: "person" }, [faceOf(contact), make("span", { textContent: contact.name, translate: false })])]),
    ...numbers.map((number) => make("td", {}, number ? [numberButton(contact, number)] : [])),
    make("td", { textContent: contact.group === allName ? "" : contact.group, translate: false }),
  ];
  const row = make("tr", {}, mayEdit ? [make("td", {}, [boxOf(contact)]), ...cells, make("td", {}, [editButton(contact)])] : cells);
  const names = mayEdit ? titles : titles.slice(1, -1);
  [...row.cells].forEach((cell, index) => { cell.dataset.label = names[index]; });
  row.dataset.name = contact.name;
  return row;
}

const boxes = () => [...body.querySelectorAll("[type=checkbox]")];

export const chosen = () => boxes().flatMap((box, index) => box.checked ? [shown[index]] : []);

function showChosen() {
  const all = boxes();
  const count = all.filter((box) => box.checked).length;
  for (const box of all) box.closest("tr").classList.toggle("chosen", box.checked);
  chooseAll.checked = count > 0 && count === all.length;
  chooseAll.indeterminate = count > 0 && count < all.length;
  chosenText.textContent = count ? t("Selected: %1", count) : "";
  chosenActions.hidden = !count;
}

// Shows contacts in place of those that were there; with `more`, below them.
export function showContacts(contacts, { more = false, empty = "" } = {}) {
  const rows = contacts.map(rowOf);
  shown = more ? [...shown, ...contacts] : contacts;
  if (more) body.append(...rows);
  else body.replaceChildren(...rows);
  table.hidden = !shown.length;
  chosenTools.hidden = !mayEdit || !shown.length;
  nobody.textContent = shown.length ? "" : empty;
  nobody.hidden = !nobody.textContent;
  showChosen();
}

// Marks a row for a moment, and puts the reader there.
export function mark(name) {
  const row = [...body.rows].find((one) => one.dataset.name === name);
  if (!row) return;
  row.classList.add("marked");
  row.scrollIntoView({ block: "nearest" });
  row.querySelector("button.small")?.focus({ preventScroll: true });
}

// Arrow keys go to the same place of the next row, with Shift they choose it as well; Enter chooses, Delete deletes.
function onKey(event) {
  const { key, shiftKey, target } = event;
  const row = target.closest("tr");
  const step = { ArrowUp: "previousElementSibling", ArrowDown: "nextElementSibling" }[key];
  if (step) {
    const cell = [...row.cells].indexOf(target.closest("td, th"));
    const next = row[step]?.cells[cell]?.querySelector("input, button");
    if (next && shiftKey && target.type === "checkbox") next.checked = target.checked;
    next?.focus();
  } else if (key === "Enter" && target.type === "checkbox") {
    target.checked = !target.checked;
  } else if (key === "Delete" && mayEdit && chosen().length) {
    handlers.remove();
  } else {
    return;
  }
  event.preventDefault();
  showChosen();
}

export function prepareList(actions) {
  handlers = actions;
  body.addEventListener("change", showChosen);
  body.addEventListener("keydown", onKey);
  chooseAll.addEventListener("change", () => {
    for (const box of boxes()) box.checked = chooseAll.checked;
    showChosen();
  });
}

// The contacts by the page of the group on which they stand, the last page first.
export function byPage(contacts) {
  const pages = new Map();
  for (const contact of contacts) {
    const page = Math.ceil(contact.index / rowsPerPage);
    pages.set(page, [...pages.get(page) ?? [], contact]);
  }
  return [...pages].sort(([one], [other]) => other - one);
}
