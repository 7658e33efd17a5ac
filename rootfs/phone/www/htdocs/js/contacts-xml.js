// A directory as XML: what is in it, what is wrong with it, and what it would change.
import { t } from "./i18n.js";

const standardRing = "Auto";
const standardPhoto = "Default:default_contact_image.png";
const automatic = "-1";

const attribute = (element, name) => element.getAttribute(name) ?? "";

const contactOf = (element) => ({
  name: attribute(element, "display_name"),
  office: attribute(element, "office_number"),
  mobile: attribute(element, "mobile_number"),
  other: attribute(element, "other_number"),
  group: attribute(element, "group_id_name"),
  line: attribute(element, "line") || automatic,
  ring: attribute(element, "ring") || standardRing,
  photo: attribute(element, "default_photo") || standardPhoto,
});

const groupOf = (element) => ({ name: attribute(element, "display_name"), ring: attribute(element, "ring") || standardRing });

function repeated(names) {
  const seen = new Set();
  return [...new Set(names.filter((name) => seen.has(name) || !seen.add(name)))];
}

function faultsOf({ contacts, groups }) {
  const nameless = contacts.filter(({ name }) => !name).length;
  return [
    ...nameless ? [t("Contacts without a name: %1", nameless)] : [],
    ...repeated(contacts.map(({ name }) => name).filter(Boolean)).map((name) => t("This contact is there twice: %1", name)),
    ...repeated(groups.map(({ name }) => name)).map((name) => t("This group is there twice: %1", name)),
  ];
}

// {contacts, groups, faults}. Faults are texts for people; the phone refuses a file that has one.
export function parseDirectory(text) {
  const root = new DOMParser().parseFromString(text, "text/xml").documentElement;
  const nothing = { contacts: [], groups: [] };
  if (root.querySelector("parsererror") || root.localName === "parsererror") return { ...nothing, faults: [t("This is not an XML file, or a part of it is missing.")] };
  if (root.localName !== "root_contact") return { ...nothing, faults: [t("This file holds no contacts: it begins with %1 instead of root_contact.", root.localName)] };
  const parts = [...root.children];
  const directory = {
    contacts: parts.filter(({ localName }) => localName === "contact").map(contactOf),
    groups: parts.filter(({ localName }) => localName === "group").map(groupOf),
  };
  return { ...directory, faults: faultsOf(directory) };
}

// The contacts with their groups as people read them; a file gives a group's name or its id.
function withGroupTitles(contacts, known) {
  const titles = new Map([...known.map(({ id, title }) => [id, title]), ...known.map(({ name, title }) => [name, title])]);
  return contacts.map((contact) => ({ ...contact, group: titles.get(contact.group || "0") ?? contact.group }));
}

const fieldNames = () => ({
  office: t("Office number"), mobile: t("Mobile number"), other: t("Other number"), group: t("Group"), line: t("Account"), ring: t("Ring"),
  photo: t("Photo"),
});

function changesOf(before, after) {
  const changed = Object.entries(fieldNames()).filter(([field]) => before[field] !== after[field]);
  return changed.map(([field, title]) => t("%1: %2 → %3", title, before[field] || "–", after[field] || "–")).join("; ");
}

const byName = (all) => new Map(all.map((one) => [one.name, one]));

// What becomes of the phone's directory when a file takes its place: lists of texts. `known` are the phone's groups, {id,
// name, title}, first the two that are always there.
export function compare(phone, file, known) {
  const [old, now] = [phone, file].map(({ contacts }) => byName(withGroupTitles(contacts, known)));
  const fixed = new Set(known.slice(0, 2).flatMap(({ name, title }) => [name, title]));
  const groupsOf = ({ groups }, contacts) => new Set([...groups.map(({ name }) => name), ...[...contacts.values()].map(({ group }) => group)].filter((name) => name && !fixed.has(name)));
  const [oldGroups, newGroups] = [groupsOf(phone, old), groupsOf(file, now)];
  const rings = byName(file.groups);
  const changedRings = phone.groups.filter(({ name, ring }) => rings.has(name) && rings.get(name).ring !== ring);
  const both = [...now.values()].filter(({ name }) => old.has(name));
  const changed = both.map((contact) => [contact.name, changesOf(old.get(contact.name), contact)]).filter(([, changes]) => changes);
  return {
    added: [...now.keys()].filter((name) => !old.has(name)),
    changed: changed.map(([name, changes]) => `${name} – ${changes}`),
    gone: [...old.keys()].filter((name) => !now.has(name)),
    kept: both.length - changed.length,
    groupsAdded: [...newGroups].filter((name) => !oldGroups.has(name)),
    groupsChanged: changedRings.map(({ name, ring }) => `${name} – ${t("%1: %2 → %3", t("Ring"), ring, rings.get(name).ring)}`),
    groupsGone: [...oldGroups].filter((name) => !newGroups.has(name)),
  };
}
