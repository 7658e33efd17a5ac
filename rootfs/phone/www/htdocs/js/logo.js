// The logo: taken to the phone and deleted without leaving the page, so that what was typed elsewhere in it stays.
import { t } from "./i18n.js";

// Width and height in pixels that the screen of a phone type can show.
const wide = [192, 64];
const small = [132, 64];
const limits = new Map([["28", [236, 82]], ["19", small], ["21", small], ["22", small], ["26", small], ["41", wide], ["42", wide]]);
const limit = limits.get(document.body.dataset.phoneType);

const ownLogo = "2";  // the value of the logo choice that an upload sets

const upload = document.getElementById("logo");
const removal = document.getElementById("logo-delete");
const { logoFile } = upload.elements;
const [deleteButton] = removal.elements;
const outcome = document.getElementById("logo-result");

function show(text, kind = "error") {
  outcome.textContent = text;
  outcome.dataset.kind = kind;
}

// The file begins with the width and the height, a byte each.
async function fault() {
  const [file] = logoFile.files;
  if (!file) return t("Choose a file first.");
  const [width = 0, height = 0] = new Uint8Array(await file.slice(0, 2).arrayBuffer());
  if (!limit || (width <= limit[0] && height <= limit[1])) return "";
  return t("This logo is %1 × %2 pixels. The screen shows up to %3 × %4.", width, height, ...limit);
}

function chooseOwnLogo() {
  for (const option of document.getElementById("LCDLogo")?.options ?? []) {
    option.defaultSelected = option.value === ownLogo;
    option.selected = option.value === ownLogo;
  }
}

const talking = () => show(t("Talking, Please wait..."), "warning");

// What follows the phone's answer: the result of the upload, or else the page that came.
const answers = {
  "success": () => {
    show(t("The logo has been uploaded."), "success");
    deleteButton.hidden = false;
    logoFile.value = "";
    chooseOwnLogo();
  },
  "fail": () => show(t("The phone could not store the logo. Please try again.")),
  "big": () => show(t("The logo is too large for the phone. The old logo stays.")),
  "talking": talking,
  "notice": talking,
  "upload-result": () => show(t("The phone received no file. Please try again.")),
  "features-general": () => {
    show(t("The logo has been deleted."), "success");
    deleteButton.hidden = true;
  },
  "loginForm": () => show(t("You have been logged out. Reload the page to log in."), "warning"),
};

async function send(form) {
  const body = form === upload ? new FormData(form) : new URLSearchParams();
  const response = await fetch(form.action, { method: "POST", headers: { Accept: "application/json" }, body });
  const { template, variables } = await response.json();
  answers[variables.result ?? template]();
}

async function run(form, button) {
  button.disabled = true;
  try {
    await send(form);
  } catch {
    show(t("The phone does not answer. Please try again."));
  } finally {
    button.disabled = false;
  }
}

deleteButton.hidden = deleteButton.dataset.exists !== "true";
if (limit) document.getElementById("logo-size").textContent = t("It may be up to %1 pixels wide and %2 pixels high.", ...limit);

logoFile.addEventListener("change", async () => show(logoFile.files.length ? await fault() : ""));
upload.addEventListener("submit", async (event) => {
  event.preventDefault();
  const error = await fault();
  if (error) show(error);
  else await run(upload, event.submitter);
});
removal.addEventListener("submit", (event) => {
  event.preventDefault();
  if (confirm(t("Delete the logo from the phone?"))) run(removal, event.submitter);
});
