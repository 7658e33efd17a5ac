// The phone's names for what keys do, and where they are, in the words of the pages.
import { t } from "./i18n.js";

const typeNames = new Map(Object.entries({
  "N/A": t("Not used"), Conference: t("Conference"), Forward: t("Forward"), Transfer: t("Transfer"), Hold: t("Hold"),
  DND: t("Do not disturb"), Redial: t("Redial"), "Call Return": t("Call back"), SMS: t("Text messages"),
  "Direct Pickup": t("Direct pickup"), "Call Park": t("Park"), DTMF: t("Tones (DTMF)"), "Voice Mail": t("Voice mail"),
  "Speed Dial": t("Speed dial"), Intercom: t("Intercom"), Line: t("Line"), BLF: t("Monitored line (BLF)"),
  URL: t("Web request"), "Group Listen": t("Group listening"), "Private Hold": t("Private hold"),
  "XML Group": t("Remote phone book"), "Group Pickup": t("Group pickup"), Paging: t("Paging"), Record: t("Record"),
  "XML Browser": t("XML browser"), History: t("Call history"), Directory: t("Directory"), Menu: t("Menu"),
  "Switch Account": t("Switch account"), "New SMS": t("New text message"), Status: t("Status"),
  HotDesking: t("Hot desking"), "URL record": t("Record by web request"), LDAP: t("LDAP directory"),
  "BLF List": t("Monitored lines (BLF list)"), Prefix: t("Prefix"), PTT: t("Push to talk"),
  "zero sp touch": t("Zero touch"), ACD: "ACD", "Local Phonebook": t("Contacts"),
  "Network Directory": t("Network directories"), "Local Group": t("Contact group"),
  "Network Group": t("Network directory"), "XML Phonebook": t("Remote phone books"), "Keypad Lock": t("Phone lock"),
  "Meet-Me Conference": t("Meet-me conference"), "Retrieve Park": t("Retrieve a parked call"),
  Hoteling: t("Guest login"), "ACD Trace": t("Call trace (ACD)"), "Disp Code": t("Disposition code"),
  Emergency: t("Emergency"), Favorites: t("Favourites"),
}));
export const typeText = (name) => typeNames.get(name) ?? name;

const placeNames = new Map(Object.entries({
  Up: t("Up"), Down: t("Down"), Left: t("Left"), Right: t("Right"), OK: t("OK"), Cancel: t("Cancel"),
  CONF: t("Conference"), HOLD: t("Hold"), MUTE: t("Mute"), TRAN: t("Transfer"), Redial: t("Redial"),
}));
export const placeText = (name) => {
  const [, number] = /^SoftKey(\d+)$/.exec(name) ?? [];
  return number ? t("Soft key %1", number) : placeNames.get(name) ?? name;
};

const line = new Set([15, 21]);
const textMessages = { 11: t("Tones"), 17: t("Address"), 27: t("Address"), 35: t("Address"), 40: t("Prefix"), 59: t("Code") };
const lists = { 22: t("Phone book"), 28: t("List"), 45: t("Group"), 46: t("Directory"), 54: t("List") };
const extensions = { 16: t("Pickup code"), 55: t("PIN") };

// What the parameters of a key of that type are called.
export const parameterNames = (type) => (
  { value: textMessages[type] ?? t("Number"), line: lists[type] ?? t("Line"), ext: extensions[type] ?? t("Extension") });

const phoneChoices = new Map(Object.entries({
  default: t("On its own page"), float: t("On a free place of any page"), lock: t("Locked: on all pages"),
  "Local History": t("Call history"), "Network CallLog": t("Network call log"), NetCalllog: t("Network call log"),
  "All Contacts": t("All contacts"), "N/A": t("Nothing to choose"),
}));

// A choice as people read it. Groups and phone books keep the names that users gave them.
export function choiceText(text) {
  const [, number] = /^Line (\d+)$/.exec(text) ?? [];
  return number ? t("Line %1", number) : phoneChoices.get(text) ?? text;
}

// What a key does. value and line are texts to show, empty for none.
export function describe({ type, name, value, line: lineText }) {
  if (line.has(type)) return lineText || name;
  if (!lineText) return value ? `${name} ${value}` : name;
  if (type in lists) return lineText === name ? name : t("%1: %2", name, lineText);
  return value ? t("%1 %2 on %3", name, value, lineText) : t("%1 on %2", name, lineText);
}
