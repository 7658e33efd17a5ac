// Columns of a table and the fields of a contact: a guess at what belongs together, and what looks wrong.
import { t } from "./i18n.js";

export const field = { ignore: 0, name: 1, office: 2, mobile: 3, other: 4, account: 5, ring: 6, group: 7, photo: 8, picture: 9 };

// Titles in lower case without signs: those of the phone's own export, and usual ones.
const titles = new Map(Object.entries({
  displayname: "name", name: "name", fullname: "name", contact: "name", anzeigename: "name", kontakt: "name", الاسم: "name",
  officenumber: "office", office: "office", officephone: "office", work: "office", workphone: "office", business: "office", businessphone: "office",
  phone: "office", phonenumber: "office", telephone: "office", number: "office", tel: "office", telefon: "office", telefonnummer: "office",
  büro: "office", geschäftlich: "office", nummer: "office", الهاتف: "office",
  mobilenumber: "mobile", mobile: "mobile", mobilephone: "mobile", cell: "mobile", cellphone: "mobile", mobil: "mobile", handy: "mobile",
  mobiltelefon: "mobile", الجوال: "mobile",
  othernumber: "other", other: "other", otherphone: "other", home: "other", homephone: "other", privat: "other", weitere: "other",
  line: "account", account: "account", konto: "account",
  ring: "ring", ringtone: "ring", klingelton: "ring",
  groupidname: "group", group: "group", groups: "group", gruppe: "group", category: "group", المجموعة: "group",
  defaultphoto: "photo", photo: "photo", foto: "photo",
  photodata: "picture",
}));

const isDialled = (text) => /^\+?[\d\s()/.*#-]+$/.test(text) && /\d/.test(text);

function guessByCells(rows, count) {
  const taken = new Set();
  const guesses = [];
  for (let column = 0; column < count; ++column) {
    const cells = rows.map((row) => row[column]).filter(Boolean);
    const kind = cells.length && cells.every(isDialled) ? "office" : "name";
    const isFree = cells.length > 0 && !taken.has(kind);
    guesses.push(isFree ? field[kind] : field.ignore);
    if (isFree) taken.add(kind);
  }
  return guesses;
}

// The field of each column. Titles decide where there are some; otherwise the first column of text is the name, and the
// first one of numbers the office number. No field is given twice, and none that the phone does not offer.
export function guess(columnTitles, rows, count, offered) {
  const wanted = columnTitles.length
    ? columnTitles.map((title) => field[titles.get(title.toLowerCase().replace(/[^\p{L}]/gu, ""))] ?? field.ignore)
    : guessByCells(rows, count);
  return Array.from({ length: count }, (_, column) => {
    const value = wanted[column] ?? field.ignore;
    return offered.has(value) && wanted.indexOf(value) === column ? value : field.ignore;
  });
}

const isRunnable = (text) => /^[=+@-]/.test(text) && !/^[+-]?[\d\s()/.*#-]+$/.test(text);

const linesOf = (rows, isMeant) => rows.flatMap((row, index) => isMeant(row) ? [index + 1] : []);

// "1, 4, 7, …": where something is found.
const listed = (lines) => `${lines.slice(0, 5).join(", ")}${lines.length > 5 ? ", …" : ""}`;

// The page holds the beginning of a long cell only: such names may still differ.
const longest = 45;  // bytes of a cell that is surely whole
const isWhole = (text) => new TextEncoder().encode(text).length <= longest;

function repeatedLines(rows, column) {
  const seen = new Set();
  return linesOf(rows, (row) => row[column] && isWhole(row[column]) && (seen.has(row[column]) || !seen.add(row[column])));
}

// What is to be said about a mapping: rows of kind ("error": cannot be imported, "warning", "info"), text and, for one
// that is about a column, its number. `groups` are the names of the phone's groups, null when they are not known.
export function findings(mapping, rows, names, groups) {
  const found = [];
  const say = (kind, text, column) => found.push({ kind, text, column });
  const sayLines = (kind, text, lines) => { if (lines.length) say(kind, `${text} ${t("Rows: %1", listed(lines))}`); };
  mapping.forEach((value, column) => {
    if (value && mapping.indexOf(value) !== column) say("error", t("Two columns hold the same: %1.", names.get(value)), column);
  });
  const nameColumn = mapping.indexOf(field.name);
  if (nameColumn < 0) {
    say("error", t("No column holds the name."));
  } else {
    sayLines("error", t("A name is missing."), linesOf(rows, (row) => !row[nameColumn]));
    sayLines("error", t("A name is there twice."), repeatedLines(rows, nameColumn));
  }
  mapping.forEach((value, column) => {
    if (value < field.office || value > field.other) return;
    sayLines("warning", t("%1: letters in a number.", names.get(value)), linesOf(rows, (row) => row[column] && !isDialled(row[column])));
  });
  const groupColumn = mapping.indexOf(field.group);
  if (groupColumn >= 0 && groups) {
    const unknown = [...new Set(rows.map((row) => row[groupColumn]))].filter((name) => name && !groups.has(name));
    if (unknown.length) say("info", t("The import adds these groups: %1", listed(unknown)));
  }
  sayLines("warning", t("A spreadsheet would run a cell that begins with =, +, - or @. Check where the file comes from."),
    linesOf(rows, (row) => row.some((cell, column) => mapping[column] && cell && isRunnable(cell))));
  return found;
}
