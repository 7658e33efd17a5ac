// The preferences: languages in their own words, wallpapers as pictures, and rings and wallpapers that come to the phone
// and go without leaving the page, so that what was changed elsewhere in it stays.
import { t } from "./i18n.js";
import { ask, attempt, choicesOf, plain, Refusal, show } from "./ask.js";
import { pictureFault, pictureName, previewOn } from "./picture.js";

const pageName = "settings-preference";
const own = "Config:";
const longestRing = 8000000;  // bytes
// Of a file's name, in bytes: what the phone can keep.
const longestRingName = 106;
const longestPictureName = 230;

const form = document.querySelector("main form");
const part = (id) => document.getElementById(id);
const textEnd = (value) => value.slice(value.indexOf(":") + 1);

// --- Languages

const ownNames = { Arabic: "العربية", German: "Deutsch" };

for (const option of part("LanguageWebLang").options) option.text = ownNames[option.text] ?? option.text;

// --- Files that come and go

const isTooLong = (name, longest) => new TextEncoder().encode(name).length > longest;

function faultOf(file, kind) {
  const fault = kind.faultOf(file);
  return fault || (isTooLong(kind.nameOf(file), kind.longestName) ? t("The file's name is too long.") : "");
}

async function sendFile(kind) {
  const [file] = kind.input.files;
  if (!file) throw new Refusal(t("Choose a file first."));
  const fault = faultOf(file, kind);
  if (fault) throw new Refusal(fault);
  const name = kind.nameOf(file);
  if (kind.values().includes(own + name) && !confirm(t("The phone has a file named %1 already. Replace it?", name))) return;
  show(kind.result, t("Uploading…"), "warning");
  const body = new FormData();
  body.append(kind.input.name, file, name);
  kind.take(await ask(pageName, kind.uploadAction, {}, body), own + name);
  kind.input.value = "";
  kind.input.dispatchEvent(new Event("change"));
  show(kind.result, t("%1 has been uploaded. Save the page to use it.", name), "success");
}

async function deleteFile(kind) {
  const value = kind.chosen();
  if (!confirm(t("Delete %1 from the phone?", textEnd(value)))) return;
  kind.take(await ask(pageName, kind.deleteAction, {}, new URLSearchParams({ [kind.deleteField]: value })), "");
  show(kind.result, t("%1 has been deleted.", textEnd(value)), "success");
}

// `kind` has the elements and actions of one kind of files, and how its choice is read (chosen, values) and filled anew
// from the phone's answer (take).
function prepareFiles(kind) {
  const showRemoval = () => {
    const value = kind.chosen();
    kind.remove.hidden = !value.startsWith(own);
    kind.remove.setAttribute("aria-label", t("Delete: %1", textEnd(value)));
  };
  kind.choice.addEventListener("change", showRemoval);
  form.addEventListener("reset", () => setTimeout(showRemoval));
  kind.input.addEventListener("change", () => {
    const [file] = kind.input.files;
    const fault = file ? faultOf(file, kind) : "";
    show(kind.result, fault);
    kind.preview?.(fault ? null : file);
  });
  kind.input.form.addEventListener("submit", (event) => {
    event.preventDefault();
    attempt(kind.result, kind.choice, () => sendFile(kind));
  });
  kind.remove.addEventListener("click", () => attempt(kind.result, kind.choice, () => deleteFile(kind)));
  showRemoval();
}

// --- Rings

const ringChoice = part("Ringtype");

function ringFault(file) {
  if (!/\.wav$/i.test(file.name)) return t("Choose a sound whose name ends in .wav.");
  return file.size > longestRing ? t("The sound is too large. The phone takes up to 8 MB.") : "";
}

// The stored ring stays the form's default; what was chosen stays chosen while it is there.
function takeRings({ ringTypeloop = [], Ringtype = "" }, wanted) {
  const before = wanted || ringChoice.value;
  const stored = plain(Ringtype);
  const choices = choicesOf(ringTypeloop);
  if (!choices.some(([value]) => value === stored)) choices.unshift([stored, t("Current value")]);
  ringChoice.replaceChildren(...choices.map(([value, name]) => new Option(name, value, value === stored)));
  ringChoice.value = choices.some(([value]) => value === before) ? before : stored;
  ringChoice.dispatchEvent(new Event("change", { bubbles: true }));
}

prepareFiles({
  choice: ringChoice, input: part("nameUploadRing"), remove: part("ring-delete"), result: part("ring-result"),
  uploadAction: "upload", deleteAction: "deleteRing", deleteField: "Ringtype", longestName: longestRingName,
  chosen: () => ringChoice.value,
  values: () => [...ringChoice.options].map(({ value }) => value),
  nameOf: (file) => file.name.replace(/[\\/:]/g, "-"),
  faultOf: ringFault,
  take: takeRings,
});

// --- Wallpapers

const wallpapers = part("wallpapers");
const radios = () => [...wallpapers.querySelectorAll("input")];
const uploads = new Map();  // how often a picture came since the page was opened: a browser keeps what it has shown

function addressOf(value) {
  const folder = value.startsWith(own) ? "/media/user/wallpaper/" : "/media/wallpaper/";
  const version = uploads.has(value) ? `?${uploads.get(value)}` : "";
  return folder + encodeURIComponent(textEnd(value)) + version;
}

function addPicture(label) {
  const { value } = label.querySelector("input");
  const picture = new Image();
  Object.assign(picture, { loading: "lazy", alt: "", width: 480, height: 272, src: addressOf(value) });
  label.prepend(picture);
  if (value.startsWith("Default:")) label.querySelector("span").textContent = t("Standard picture");
}

function tileOf({ selValue, selName, selected }) {
  const radio = Object.assign(document.createElement("input"), { type: "radio", name: "CurrentWallpaper", value: plain(selValue), defaultChecked: Boolean(selected) });
  const name = Object.assign(document.createElement("span"), { textContent: plain(selName), translate: false });
  const label = document.createElement("label");
  label.append(radio, name);
  addPicture(label);
  return label;
}

function showWhetherNone() {
  part("wallpaper-none").textContent = radios().some((radio) => radio.checked) ? "" : t("None of these is chosen: the phone shows a picture of its own choice.");
}

function takeWallpapers({ wallpaperLoop = [] }, wanted) {
  const before = wanted || wallpapers.querySelector(":checked")?.value;
  if (wanted) uploads.set(wanted, (uploads.get(wanted) ?? 0) + 1);
  wallpapers.replaceChildren(...wallpaperLoop.map(tileOf));
  const again = radios().find((radio) => radio.value === before);
  if (again) again.checked = true;
  wallpapers.dispatchEvent(new Event("change", { bubbles: true }));
}

const canvas = part("wallpaper-preview");
const draw = previewOn(canvas);

async function preview(file) {
  canvas.hidden = true;
  if (!file) return;
  const isDrawn = await draw(() => Promise.resolve(file));
  canvas.hidden = !isDrawn;
  if (!isDrawn && part("nameUploadWallpaper").files[0] === file) show(part("wallpaper-result"), t("The browser cannot read this picture."));
}

for (const label of wallpapers.querySelectorAll("label")) addPicture(label);
wallpapers.addEventListener("change", showWhetherNone);
form.addEventListener("reset", () => setTimeout(showWhetherNone));
showWhetherNone();
prepareFiles({
  choice: wallpapers, input: part("nameUploadWallpaper"), remove: part("wallpaper-delete"), result: part("wallpaper-result"),
  uploadAction: "uploadWallpaper", deleteAction: "deleteWallpaper", deleteField: "Wallpapertype", longestName: longestPictureName,
  chosen: () => wallpapers.querySelector(":checked")?.value ?? "",
  values: () => radios().map(({ value }) => value),
  nameOf: pictureName,
  faultOf: pictureFault,
  preview,
  take: takeWallpapers,
});
