// Logs in without leaving the form, so that a refusal, the lock-out included, is shown in the page's own words.
import { showValue, t } from "./i18n.js";
import { keptHere } from "./left.js";

const form = document.querySelector("form");
const { username, pwd, jumpto } = form.elements;
const notice = document.getElementById("notice");
const caps = document.getElementById("caps");

document.getElementById("kept").hidden = !keptHere;
(username.value ? pwd : username).focus();  // the page was not seen yet when the browser looked for "autofocus"

function refuse(text) {
  showValue(notice, text);
  pwd.value = "";
  pwd.focus();
}

async function logIn() {
  const response = await fetch(form.action, {
    method: "POST", headers: { Accept: "application/json" }, body: new URLSearchParams(new FormData(form)),
  });
  if (response.redirected) {
    location.replace(response.url);
    return;
  }
  const answer = await response.text();
  const isForm = response.headers.get("Content-Type")?.startsWith("application/json");
  refuse(isForm ? JSON.parse(answer).variables.notice : answer);
}

form.addEventListener("submit", (event) => {
  // A command that waits for the login is to run once only, so the browser follows the redirect itself.
  if (jumpto.value === "URI") return;
  event.preventDefault();
  const button = form.querySelector("button");
  button.disabled = true;
  logIn()
    .catch(() => refuse(t("The phone does not answer. Please try again.")))
    .finally(() => { button.disabled = false; });
});

pwd.addEventListener("keyup", (event) => {
  caps.textContent = event.getModifierState("CapsLock") ? t("Caps Lock is on.") : "";
});
