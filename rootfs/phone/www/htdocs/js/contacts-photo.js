// The photo of a contact: shown as the phone does, taken to the phone and deleted without leaving the dialog.
import { t } from "./i18n.js";
import { choicesOf, photoAddress, Refusal, send, standard } from "./contacts-phone.js";
import { askFirst, attempt, show } from "./contacts-dialog.js";

const largest = 5000000;  // bytes of a file that the phone scales
const kinds = /\.(jpe?g|png|bmp)$/i;
const own = "Config:";

const upload = document.getElementById("photo-upload");
const picture = document.getElementById("uploadPhoto");
const preview = document.getElementById("photo-preview");
const remove = document.getElementById("photo-delete");
const result = document.getElementById("photo-result");
let choice = null;   // the select of the photos; null where the phone shows none
let drawing = null;  // what is drawn last: slow pictures come too late

// Fills the preview with the middle of a picture, as the phone does.
async function draw(load) {
  const turn = Symbol("drawing");
  drawing = turn;
  const pen = preview.getContext("2d");
  const bitmap = await load().then(createImageBitmap).catch(() => null);
  if (drawing !== turn) return false;
  pen.clearRect(0, 0, preview.width, preview.height);
  if (!bitmap) return false;
  const scale = Math.max(preview.width / bitmap.width, preview.height / bitmap.height);
  const [width, height] = [bitmap.width * scale, bitmap.height * scale];
  pen.drawImage(bitmap, (preview.width - width) / 2, (preview.height - height) / 2, width, height);
  return true;
}

async function fetched(address) {
  const answer = await fetch(address);
  if (!answer.ok) throw new Error(`status ${answer.status}`);
  return answer.blob();
}

function showChoice() {
  draw(() => fetched(photoAddress(choice.value)));
  remove.hidden = !choice.value.startsWith(own);
}

async function showFile() {
  const [file] = picture.files;
  show(result, "");
  if (!file) {
    showChoice();
    return;
  }
  const fault = faultOf(file);
  const isDrawn = await draw(() => Promise.resolve(file));
  show(result, fault || (isDrawn ? "" : t("The browser cannot read this picture.")));
}

function faultOf(file) {
  if (!kinds.test(file.name)) return t("Choose a picture whose name ends in .jpg, .png or .bmp.");
  return file.size > largest ? t("The picture is too large. The phone takes up to 5 MB.") : "";
}

// The phone lists no .jpeg, and a colon would part the name from its source.
const nameFor = (file) => file.name.replace(/\.jpeg$/i, ".jpg").replace(/[\\/:]/g, "-");

const optionOf = ([value, name]) => new Option(value.startsWith(standard) ? t("Standard photo") : name, value);

function takeChoices({ photoLoop }, value) {
  choice.replaceChildren(...choicesOf(photoLoop).map(optionOf));
  const before = choice.dataset.stored ?? "";
  for (const option of choice.options) option.defaultSelected = option.value === before;
  choice.value = value;
  if (choice.selectedIndex < 0) choice.selectedIndex = 0;
  choice.dispatchEvent(new Event("change", { bubbles: true }));
}

async function sendPicture() {
  const [file] = picture.files;
  if (!file) throw new Refusal(t("Choose a file first."));
  const fault = faultOf(file);
  if (fault) throw new Refusal(fault);
  const name = nameFor(file);
  const isThere = [...choice.options].some(({ value }) => value === own + name);
  if (isThere && !confirm(t("The phone has a photo named %1 already. Replace it?", name))) throw new Refusal(t("The photo was not uploaded."));
  show(result, t("Uploading…"), "warning");
  const form = new FormData();
  form.append("uploadPhoto", file, name);
  const answer = await send("uploadphoto", form);
  picture.value = "";
  takeChoices(answer, own + (answer.SelectPhoto ?? name));
  show(result, t("The photo has been uploaded."), "success");
}

// Before a contact is saved: a picture that was chosen and not yet uploaded goes first.
export async function uploadChosen() {
  if (choice && picture.files.length) await sendPicture();
}

async function deletePicture() {
  const { value } = choice;
  const [option] = choice.selectedOptions;
  const isSure = await askFirst({
    title: t("Delete the photo %1 from the phone?", option.text),
    text: t("Contacts that have it get the standard photo."),
    action: t("Delete"),
  });
  if (!isSure) return;
  takeChoices(await send("deletephoto", { Photo: value }), choice.options[0].value);
  show(result, t("The photo has been deleted."), "success");
}

// `select` is the dialog's choice of photos, hidden where the phone shows none.
export function preparePhoto(select) {
  if (select.closest("[hidden]")) return;
  choice = select;
  for (const option of choice.options) option.replaceWith(optionOf([option.value, option.text]));
  choice.addEventListener("change", showChoice);
  picture.addEventListener("change", showFile);
  upload.addEventListener("submit", (event) => {
    event.preventDefault();
    attempt(result, choice.form, sendPicture);
  });
  remove.addEventListener("click", () => attempt(result, choice.form, deletePicture));
}

// For a dialog that opens: nothing is chosen, nothing is told.
export function resetPhoto() {
  if (!choice) return;
  choice.dataset.stored = choice.value;
  picture.value = "";
  show(result, "");
}
