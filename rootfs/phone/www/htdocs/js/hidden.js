// Pushes the XML document in the editor to the phone's screen, without leaving the page.
import { t } from "./i18n.js";

const form = document.getElementById("push");
const { editPushXML: editor } = form.elements;
const button = form.querySelector("button");
const error = document.getElementById("editPushXML-error");
const outcome = document.getElementById("push-result");
let pushed = "";

function faultOf(text) {
  if (!text.trim()) return t("This field is required.");
  const fault = new DOMParser().parseFromString(text, "text/xml").querySelector("parsererror");
  return fault ? t("This is not a complete XML document.") : "";
}

function isRight() {
  error.textContent = faultOf(editor.value);
  if (error.textContent) editor.setAttribute("aria-invalid", "true");
  else editor.removeAttribute("aria-invalid");
  return !error.textContent;
}

function show(text, kind = "error") {
  outcome.textContent = text;
  outcome.dataset.kind = kind;
}

async function push() {
  const response = await fetch(form.action, { method: "POST", headers: { Accept: "application/json" }, body: new URLSearchParams(new FormData(form)) });
  const answer = await response.text();
  if (response.redirected) show(t("You have been logged out. Reload the page to log in."), "warning");
  else if (answer === "failed") show(t("Refused. Your computer is not one of this phone's push servers."));
  else if (answer !== "success") show(t("Talking, Please wait..."), "warning");
  else {
    show(t("The phone now shows the page."), "success");
    pushed = editor.value;
  }
}

editor.addEventListener("input", () => { if (editor.hasAttribute("aria-invalid")) isRight(); });
editor.addEventListener("change", () => { if (editor.value) isRight(); });
window.addEventListener("beforeunload", (event) => { if (editor.value !== pushed) event.preventDefault(); });
form.addEventListener("submit", (event) => {
  event.preventDefault();
  if (!isRight()) {
    editor.focus();
    return;
  }
  button.disabled = true;
  push().catch(() => show(t("The phone does not answer. Please try again."))).finally(() => { button.disabled = false; });
});
