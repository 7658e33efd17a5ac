// An XML file is compared with the phone's directory before it takes its place.
import { t } from "./i18n.js";
import { everybody, groups, leaveTo, loadDirectory, send, titleOf } from "./contacts-phone.js";
import { askFirst, foldedList, listOf } from "./question.js";
import { attempt, show } from "./ask.js";
import { compare, parseDirectory } from "./contacts-xml.js";

const form = document.getElementById("import-xml");
const { frameUploadXMLFile: field } = form.elements;
const result = document.getElementById("import-result");

function listsOf(changes) {
  const lists = [
    [t("New contacts"), changes.added],
    [t("Changed contacts"), changes.changed],
    [t("Contacts that will be deleted"), changes.gone],
    [t("New groups"), changes.groupsAdded],
    [t("Changed groups"), changes.groupsChanged],
    [t("Groups that will be deleted"), changes.groupsGone],
  ];
  return lists.filter(([, texts]) => texts.length).map(([title, texts]) => foldedList(title, texts));
}

async function preview() {
  const [file] = field.files;
  show(result, "");
  const read = parseDirectory(await file.text());
  if (read.faults.length) {
    await askFirst({ title: t("The phone would refuse this file"), text: file.name, parts: [listOf(read.faults)] });
    return;
  }
  const known = groups().map((group) => ({ ...group, title: titleOf(group) }));
  const changes = compare(await loadDirectory(), read, known);
  const parts = listsOf(changes);
  const isSure = await askFirst({
    title: t("Import %1?", file.name),
    text: parts.length ? t("Contacts that stay as they are: %1", changes.kept) : t("The file holds what the phone has. Nothing would change."),
    parts,
    action: t("Import"),
  });
  if (!isSure) return;
  const body = new FormData();
  body.append(field.name, file);
  await send("importxml", body, "contacts-preview");
  leaveTo(everybody, 1, t("Imported."));
}

export function prepareImport() {
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    attempt(result, form, preview);
  });
  field.addEventListener("change", () => show(result, ""));
}
