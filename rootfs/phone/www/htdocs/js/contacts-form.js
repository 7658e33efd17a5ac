// The dialog of one contact: new or changed.
import { tidyNumber } from "./checks.js";
import { t } from "./i18n.js";
import { blacklist, everybody, leaveTo, loadPage, pageOf, Refusal, rowsPerPage, send } from "./contacts-phone.js";
import { openDialog, prepareDialog, setField } from "./form-dialog.js";
import { preparePhoto, resetPhoto, uploadChosen } from "./contacts-photo.js";
import { isSearching, searchAgain } from "./contacts-search.js";
import { message } from "./message.js";

const dialog = document.getElementById("contact");
const form = document.getElementById("contact-form");
const { elements } = form;
const addButton = document.getElementById("add");  // hidden from those who may not change contacts
let shownGroup = everybody;
let shownPage = 1;

const tidy = { DisplayName: (text) => text.trim(), OfficeNum: tidyNumber, MobileNumber: tidyNumber, OtherNum: tidyNumber };

const fields = {
  DisplayName: "name", OfficeNum: "office", MobileNumber: "mobile", OtherNum: "other", varAccount: "account", RingTone: "ring",
  Photo: "photo",
};
const empty = { name: "", office: "", mobile: "", other: "", account: "-1", ring: "Auto", photo: "Default:default_contact_image.png" };

// `oldName` is that of the contact which is changed; empty for a new one.
function open(contact, groupId, heading, oldName = "") {
  elements.OldName.value = oldName;
  for (const [name, field] of Object.entries(fields)) setField(elements[name], contact[field]);
  setField(elements.ConGroup, groupId);
  elements.num.value = shownPage;
  resetPhoto();
  openDialog(dialog, heading);
  elements.DisplayName.focus();
}

export const openNew = ({ name = "", number = "" } = {}) =>
  open({ ...empty, name, office: tidyNumber(number) }, shownGroup, t("New contact"));

// A hit of the search lacks what only the list of the phone tells: it is fetched.
export async function complete(contact) {
  if ("account" in contact) return contact;
  const { contacts } = await loadPage(shownGroup, Math.ceil(contact.index / rowsPerPage));
  const found = contacts.find(({ index, name }) => index === contact.index && name === contact.name);
  if (!found) throw new Refusal(t("The directory has been changed meanwhile. Reload the page and try again."));
  return found;
}

export async function openEdit(contact) {
  const whole = await complete(contact);
  const option = [...elements.ConGroup.options].find(({ dataset }) => dataset.name === whole.group);
  open(whole, option?.value ?? everybody, t("Edit contact"), whole.name);
}

// Where the reader sees the contact: in the list that is open, or else in that of its group.
async function showSaved(name, groupId, isNew) {
  const isListed = groupId === shownGroup || (shownGroup === everybody && groupId !== blacklist);
  if (isSearching() && isListed && !isNew) {
    await searchAgain();
    message(t("Saved."));
    return;
  }
  const target = isListed ? shownGroup : groupId;
  const likely = target === shownGroup && !isNew ? shownPage : 1;
  leaveTo(target, await pageOf(name, target, likely).catch(() => 1), t("Saved."), name);
}

async function save() {
  await uploadChosen();
  const isNew = !elements.OldName.value;
  const values = { ...Object.fromEntries(new FormData(form)), Photo: elements.Photo.value };  // hidden, it still is the contact's
  if (isNew) delete values.OldName;
  await send(isNew ? "add" : "edit", values);
  dialog.close();
  await showSaved(values.DisplayName, values.ConGroup, isNew);
}

// #new?number=…&name=… opens the dialog filled in, as other pages link it.
function openLinked() {
  const [kind, query = ""] = location.hash.split("?");
  if (kind !== "#new" || dialog.open || addButton.closest("[hidden]")) return;
  history.replaceState(null, "", location.pathname + location.search);
  openNew(Object.fromEntries(new URLSearchParams(query)));
}

export function prepareContactForm(group, page) {
  shownGroup = group.id;
  shownPage = page;
  preparePhoto(elements.Photo);
  prepareDialog(dialog, save);
  for (const [name, tidied] of Object.entries(tidy)) {
    elements[name].addEventListener("change", ({ target }) => { target.value = tidied(target.value); });
  }
  addButton.addEventListener("click", () => openNew());
  window.addEventListener("hashchange", openLinked);
  openLinked();
}
