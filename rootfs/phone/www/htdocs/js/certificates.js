// The pages of certificates: files that the phone would refuse, and a question before anything is deleted.
import { t } from "./i18n.js";

const largest = 5 * 1024 * 1024 - 2048;  // bytes; what a form adds to a file fits into the rest

const upload = document.getElementById("upload");
const chosenForm = document.getElementById("delete-chosen");  // of the page that lists several
const ownForm = document.getElementById("delete-own");        // of the page that has one

function show(line, text) {
  const outcome = document.getElementById(line);
  outcome.textContent = text;
  outcome.dataset.kind = "error";
}

// The page that the phone leads to tells of it.
const tellThen = (text) => sessionStorage.setItem("saved", `${document.body.dataset.page}\n${text}`);

function fault() {
  const [file] = upload.elements.certificatefile.files;
  if (!file) return t("Choose a file first.");
  return file.size > largest ? t("The file is too large!") : "";
}

// A fingerprint breaks between its bytes.
for (const code of document.querySelectorAll(".certificates code")) {
  code.replaceChildren(...code.textContent.split(/(?<=:)/).flatMap((part) => [part, document.createElement("wbr")]));
}

upload.elements.certificatefile.addEventListener("change", () => show("upload-result", fault()));
upload.addEventListener("submit", (event) => {
  const error = fault();
  show("upload-result", error);
  if (error) event.preventDefault();
  else tellThen(t("The certificate has been uploaded."));
});

const boxes = () => [...chosenForm.querySelectorAll("[type=checkbox]")];

function deleteChosen(event) {
  const chosen = boxes().filter((box) => box.checked);
  const names = chosen.map((box) => box.labels[0].textContent);
  show("delete-result", chosen.length ? "" : t("Choose a certificate first."));
  if (!chosen.length || !confirm(`${t("Delete these certificates from the phone?")}\n\n${names.join("\n")}`)) {
    event.preventDefault();
    return;
  }
  chosenForm.elements.z.value = chosen.map((box) => `${box.value},`).join("");
  tellThen(t("The certificates have been deleted."));
}

if (chosenForm) {
  const isEmpty = !boxes().length;
  document.getElementById("none").hidden = !isEmpty;
  for (const part of chosenForm.querySelectorAll("ul, .choices")) part.hidden ||= isEmpty;
  for (const box of boxes()) box.disabled = box.value.includes(",");  // the phone would take it for two names
  chosenForm.addEventListener("submit", deleteChosen);
}

ownForm?.addEventListener("submit", (event) => {
  if (confirm(t("Delete the certificate and its key from the phone? Browsers are then shown the built-in one."))) tellThen(t("The certificate has been deleted."));
  else event.preventDefault();
});
