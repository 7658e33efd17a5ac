// What the contacts pages ask of the phone, and where they lead.
import { t } from "./i18n.js";
import { ask, plain } from "./ask.js";
import { parseDirectory } from "./contacts-xml.js";

export { choicesOf, Refusal } from "./ask.js";

export const rowsPerPage = 10;
export const everybody = "0";  // the group of all contacts but those of the blacklist
export const blacklist = "1";

// Lets the phone do something; the variables of the page that it leads to, or a Refusal.
export const send = (action, fields = {}, page = "contactsbasic") =>
  ask(page, action, {}, fields instanceof FormData ? fields : new URLSearchParams(fields));

// The phone's own export, taken apart.
export const loadDirectory = async () => parseDirectory(await ask("contacts-preview", "exportxml"));

const contactOf = (row) => ({
  index: Number(row.index), name: plain(row.DisplayName), office: plain(row.OfficeNumber), mobile: plain(row.MobilNumber),
  other: plain(row.OtherNumber), group: plain(row.Group), account: plain(row.Account), ring: plain(row.Ring), photo: plain(row.Photo),
});

// The contacts of one page of a group, and how many pages it has.
export async function loadPage(group, num) {
  const { contactslistloop = [], pageloop = [], grouplistloop = [] } = await ask("contactsbasic", "load", { num, group });
  return {
    contacts: contactslistloop.map(contactOf).filter(({ name }) => name),
    pages: pageloop.length,
    groups: grouplistloop.map(({ groupId, groupName }) => ({ id: groupId, name: plain(groupName) })),
  };
}

// Photos that every phone has begin so.
export const standard = "Default:";

// The page of a group on which a contact stands; the likely ones are looked at first.
export async function pageOf(name, group, likely) {
  const { contacts, pages } = await loadPage(group, likely);
  if (contacts.some((contact) => contact.name === name)) return likely;
  if ((await loadPage(group, pages)).contacts.some((contact) => contact.name === name)) return pages;
  const all = (await loadDirectory()).contacts;
  const groupName = nameOfGroup(group);
  const position = membersOf(all, groupName).findIndex((contact) => contact.name === name);
  return Math.floor(Math.max(position, 0) / rowsPerPage) + 1;
}

// Groups of the page by id: {id, name as the phone has it}.
export const groups = () => [...document.querySelectorAll("#groups [data-group]")].map(({ dataset }) => ({ id: dataset.group, name: dataset.name }));

const nameOfGroup = (id) => groups().find((group) => group.id === id)?.name ?? "";

// The contacts of the export that a group lists, in its order.
export function membersOf(contacts, groupName) {
  const [all, black] = [everybody, blacklist].map(nameOfGroup);
  return contacts.filter(({ group }) => groupName === all ? group !== black : group === groupName);
}

// A group's name for people: the phone's own two are named in the page's language.
export const titleOf = ({ id, name }) => ({ [everybody]: t("All contacts"), [blacklist]: t("Blacklist") })[id] ?? name;

export function photoAddress(value) {
  const end = value.indexOf(":");
  const folder = value.startsWith("Config:") ? "/media/user/contact-image/" : "/media/contact-image/";
  return end < 0 || end === value.length - 1 ? "" : folder + encodeURIComponent(value.slice(end + 1));
}

// Opens the list at a page of a group, which then tells what happened and marks a contact for a moment.
export function leaveTo(group, num, text, mark = "") {
  sessionStorage.setItem("saved", `contactsbasic\n${text}`);
  sessionStorage.setItem("contacts-mark", mark);
  location.assign(`/servlet?${new URLSearchParams({ p: "contactsbasic", q: "load", num, group })}`);
}
