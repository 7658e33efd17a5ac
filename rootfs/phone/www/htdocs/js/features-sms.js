// A text message: its recipient is completed, what is left of its room is counted, and it is sent without leaving the page.
import "./app.js";  // which translates first
import { ask as askPage, attempt, show } from "./ask.js";
import { messageRoom, tidyNumber } from "./checks.js";
import { firstWrong, prepareChecks } from "./form.js";
import { showValue, t } from "./i18n.js";
import { ask, poll, SessionEnded } from "./poll.js";

const askSeconds = 5;
const registered = new Set(["2", "5"]);

const form = document.getElementById("message-form");
const result = document.getElementById("result");
let questions;  // about the state of the account
const { acc: account, editMsgTarget: recipient, editMsgTxt: text } = form?.elements ?? {};

// "sip:" is the phone's to add, and who is no address yet is one of the account's server.
function completeRecipient() {
  const name = recipient.value.trim().replace(/^sip:/i, "");
  const server = account.selectedOptions[0].text.split("@").at(-1);
  recipient.value = !name || name.includes("@") ? name : `${tidyNumber(name)}@${server}`;
}

function showRoom() {
  document.getElementById("room").textContent = t("%1 bytes left.", Math.max(messageRoom(text.value, recipient.value), 0));
}

async function showState() {
  try {
    const code = await ask(`/servlet?p=account-register&q=askstatus&acc=${encodeURIComponent(account.value)}`);
    showValue(document.getElementById("account-state"), registered.has(code.trim()) ? "Registered" : "Unregistered");
  } catch (error) {
    showValue(document.getElementById("account-state"), "Unknown");
    if (error instanceof SessionEnded) questions.pause();
  }
}

const sendMessage = () => attempt(result, form, async () => {
  const sent = text.value;
  show(result, t("Sending…"), "warning");
  await askPage("features-sms", "send", {}, new URLSearchParams(new FormData(form)));
  show(result, t("The message has been sent."), "success");
  if (text.value === sent) text.value = "";
  showRoom();
});

function prepare() {
  prepareChecks(form);
  recipient.addEventListener("change", completeRecipient, { capture: true });
  form.addEventListener("input", showRoom);
  form.addEventListener("change", showRoom);
  form.addEventListener("submit", (event) => {
    event.preventDefault();
    completeRecipient();
    const wrong = firstWrong(form);
    if (wrong) wrong.focus();
    else sendMessage();
  });
  window.addEventListener("beforeunload", (event) => { if (text.value) event.preventDefault(); });
  account.addEventListener("change", showState);
  questions = poll(askSeconds, showState);
  showRoom();
}

if (form) prepare();
