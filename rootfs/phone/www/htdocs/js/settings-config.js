// Configuration archives: what is in one is told before it is downloaded, what one would change before it is uploaded.
import { compare, countSettings, readArchive, secretsOf } from "./config-archive.js";
import { t } from "./i18n.js";
import { askFirst, foldedList } from "./question.js";

const largest = 64 * 1024 * 1024;  // bytes; the phone takes no more
const knownNames = new Set([...document.querySelectorAll("#factory-names option")].map(({ value }) => value));

// The phone or the file will not do; the message tells the reader why.
class Refusal extends Error {}

// The phone's configuration as it is now, as the bytes of an archive.
async function download() {
  try {
    const response = await fetch("/servlet?p=settings-config&q=export", { headers: { Accept: "application/json" }, cache: "no-store" });
    if (response.headers.get("Content-Type")?.startsWith("text/xml")) return new Uint8Array(await response.arrayBuffer());
    const { template, variables } = await response.json();
    if (template === "loginForm") throw new Refusal(t("You have been logged out. Reload the page to log in."));
    throw new Refusal(t(variables.noticeLabel.split("$").slice(2).join("$")));
  } catch (error) {
    throw error instanceof Refusal ? error : new Refusal(t("The phone does not answer. Please try again."));
  }
}

async function readPhone() {
  const bytes = await download();
  const { files, faults } = readArchive(bytes);
  if (faults.length) throw new Refusal(t("The phone could not pack its settings. Please try again."));
  return { bytes, files };
}

const faultTexts = {
  tar: () => t("This is no archive of a configuration. Choose a file that a phone exported."),
  cut: () => t("The archive is cut short or damaged."),
  empty: () => t("The archive holds no folder “factory” with settings."),
  kind: (path) => t("%1: only files and folders may be in the archive, no links.", path),
  name: (path) => t("%1: no such name may be in the archive.", path),
  place: (path) => t("%1: lies outside the folder “factory”.", path),
};

const accountOf = (section) => /^account (\d+)$/.exec(section)?.[1];

function nameOf({ file, section, key }) {
  const account = file === "account.ini" ? accountOf(section) : undefined;
  const place = account === undefined ? section : t("Account %1", Number(account) + 1);
  return [file === "global.ini" || account !== undefined ? "" : file, file === "global.ini" ? "" : place, key].filter(Boolean).join(" › ");
}

// A value of null stands for a secret.
function changeOf(change) {
  if (change.from === null && change.to === null) return `${nameOf(change)}: ${t("another secret")}`;
  const shown = (value) => value === undefined ? t("default") : value === null ? t("a secret") : value || t("empty");
  return `${nameOf(change)}: ${shown(change.from)} → ${shown(change.to)}`;
}

const lists = (...rows) => rows.filter(([, texts]) => texts.length).map(([title, texts]) => foldedList(title, [...texts].sort()));

const secretNames = (files) => secretsOf(files).map(([file, section, key]) => key ? nameOf({ file, section, key }) : file);

// What the phone has no place for among its own settings: it came from other firmware or another model.
const strangersIn = (files) => [...files.keys()].filter((path) => knownNames.size && !knownNames.has(path.split("/")[0]));

async function readFile(file) {
  if (file.size > largest) throw new Refusal(t("big"));
  const { files, faults } = readArchive(new Uint8Array(await file.arrayBuffer()));
  if (!faults.length) return files;
  await askFirst({
    title: t("The phone would refuse this file"), text: file.name,
    parts: lists([t("What does not fit"), faults.map(({ path, fault }) => faultTexts[fault](path))]),
  });
  return null;
}

// Each asks what is to be done with the archive in its form's field; true when it is to be sent.
const reviews = {
  async ConfigFileName(file, files) {
    const changes = compare((await readPhone()).files, files);
    const parts = lists(
      [t("Changed settings"), changes.settings.map(changeOf)],
      [t("New files"), changes.added],
      [t("Changed files"), changes.changed],
      [t("Files that stay as they are"), [...changes.same, ...changes.kept]],
      [t("Not used by this phone"), strangersIn(files)],
    );
    if (parts.length) parts[0].open = true;
    const isSame = !changes.added.length && !changes.changed.length;
    return askFirst({
      title: t("Import %1?", file.name),
      text: isSame ? t("The file holds what the phone has. Nothing would change, but the phone restarts.") : t("The phone restarts with these settings. It cannot make or take calls until it is back."),
      parts, action: t("Import and restart"),
    });
  },

  FactoryConfig(file, files) {
    return askFirst({
      title: t("Store %1?", file.name),
      text: t("A factory reset can then restore these %1 settings in place of the delivered ones.", countSettings(files)),
      parts: lists([t("Files"), [...files.keys()]], [t("Passwords and keys"), secretNames(files)], [t("Not used by this phone"), strangersIn(files)]),
      action: t("Store"),
    });
  },
};

function tell(line, text) {
  line.textContent = text;
  line.dataset.kind = "error";
}

// Runs work that may be refused, once at a time, and tells of it in the line.
async function attempt(button, line, work) {
  if (button.disabled) return;
  button.disabled = true;
  tell(line, "");
  try {
    await work();
  } catch (error) {
    if (!(error instanceof Refusal)) throw error;
    tell(line, error.message);
  } finally {
    button.disabled = false;
  }
}

function save(bytes, name) {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob([bytes], { type: "application/x-tar" }));
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 60_000);
}

async function exportConfig() {
  const { bytes, files } = await readPhone();
  const secrets = secretNames(files);
  const isSure = await askFirst({
    title: t("Download the configuration?"),
    text: secrets.length
      ? t("The file holds %1 settings, and passwords and keys among them. Keep it where nobody else can read it.", countSettings(files))
      : t("The file holds %1 settings, and no passwords or keys.", countSettings(files)),
    parts: lists([t("Passwords and keys"), secrets], [t("Files"), [...files.keys()]]),
    action: t("Download"),
  });
  if (isSure) save(bytes, "config.bin");
}

function prepareUpload(form) {
  const field = form.querySelector("input[type=file]");
  const line = form.querySelector(".outcome");
  field.addEventListener("change", () => tell(line, ""));
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    attempt(event.submitter ?? form.querySelector("button"), line, async () => {
      const [file] = field.files;
      const files = await readFile(file);
      if (files && await reviews[field.name](file, files)) form.submit();
    });
  });
}

// What stands in the place of a link that would download at once.
const link = document.getElementById("export");
const button = document.createElement("button");
button.type = "button";
button.textContent = link.textContent;
link.replaceWith(button);
button.addEventListener("click", () => attempt(button, document.getElementById("export-result"), exportConfig));

for (const form of document.querySelectorAll("form[enctype]")) prepareUpload(form);
document.getElementById("delete-factory")?.addEventListener("submit", (event) => {
  if (!confirm(t("Delete the custom factory settings from the phone?"))) event.preventDefault();
});
