// The photo of a contact: shown as the phone does, taken to the phone and deleted without leaving the dialog.
import { t } from "./i18n.js";
import { choicesOf, photoAddress, Refusal, send, standard } from "./contacts-phone.js";
import { askFirst } from "./question.js";
import { attempt, show } from "./ask.js";
import { pictureFault, pictureName, previewOn } from "./picture.js";

const own = "Config:";

const upload = document.getElementById("photo-upload");
const picture = document.getElementById("uploadPhoto");
const preview = document.getElementById("photo-preview");
const remove = document.getElementById("photo-delete");
const result = document.getElementById("photo-result");
let choice = null;  // the select of the photos; null where the phone shows none
const draw = previewOn(preview);

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
  const fault = pictureFault(file);
  const isDrawn = await draw(() => Promise.resolve(file));
  show(result, fault || (isDrawn ? "" : t("The browser cannot read this picture.")));
}

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
  const fault = pictureFault(file);
  if (fault) throw new Refusal(fault);
  const name = pictureName(file);
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
