// Calls by the phone: a dialog that shows the number and dials only when told to. Its markup is template/include/
// dial_dialog.htm.
import { t } from "./i18n.js";

const answerLimit = 15 * 1000;

const dialog = document.getElementById("dial");
const form = dialog.querySelector("form");
const { num: numberField, acc: accountField } = form.elements;
const callButton = form.querySelector("[type=submit]");
const hangUpButton = document.getElementById("dial-hangup");
const result = document.getElementById("dial-result");
const trust = document.getElementById("dial-trust");
let opened = 0;  // how often: an answer that comes after the dialog was closed is not for the next number

function show(text, kind = "error") {
  result.textContent = text;
  result.dataset.kind = kind;
  trust.hidden = true;
}

const kinds = { "call success": "success", "call failed": "error", "hangup success": "success" };

function showAnswer(answer) {
  show(t(answer), kinds[answer]);
  trust.hidden = answer !== "call failed";
}

// A notice is "timer$page$message".
const showNotice = (page) => show(t(JSON.parse(page).variables.noticeLabel.split("$").slice(2).join("$")), "warning");

async function command(action, fields) {
  const response = await fetch(`/servlet?p=${encodeURIComponent(document.body.dataset.page)}&q=${action}`, {
    method: "POST",
    headers: { Accept: "application/json" },
    body: new URLSearchParams(fields),
    signal: AbortSignal.timeout(answerLimit),
  });
  const answer = await response.text();
  if (response.redirected) return () => show(t("You have been logged out. Reload the page to log in."), "warning");
  return () => answer in kinds ? showAnswer(answer) : showNotice(answer);
}

async function run(action, fields = {}) {
  const asked = opened;
  const noAnswer = () => show(t("The phone does not answer. Please try again."));
  for (const button of [callButton, hangUpButton]) button.disabled = true;
  const tell = await command(action, fields).catch(() => noAnswer);
  for (const button of [callButton, hangUpButton]) button.disabled = false;
  if (asked !== opened) return;
  try {
    tell();
  } catch {
    noAnswer();
  }
}

// Shows the dialog for a number. `account` is the value or the text of one of its options; without it, or when there is
// no such option, the first is chosen.
export function openDial({ number, name = "", account = "" }) {
  ++opened;
  numberField.value = number;
  document.getElementById("dial-name").textContent = name;
  const options = [...accountField.options];
  const wanted = options.findIndex((option) => option.value === account || option.text === account);
  accountField.selectedIndex = options.length ? Math.max(wanted, 0) : -1;
  accountField.parentElement.hidden = !options.length;
  show(options.length ? "" : t("No account is registered, so the phone cannot call."), "warning");
  callButton.hidden = !options.length;
  dialog.showModal();
}

form.addEventListener("submit", (event) => {
  event.preventDefault();
  const number = numberField.value.trim();
  if (number) run("call", { num: number, acc: accountField.value });
  else show(t("This field is required."));
});
// The key that opened the dialog, held a little too long, is not to dial.
form.addEventListener("keydown", (event) => { if (event.repeat && event.key === "Enter") event.preventDefault(); });
hangUpButton.addEventListener("click", () => run("hangup"));
document.getElementById("dial-close").addEventListener("click", () => dialog.close());
