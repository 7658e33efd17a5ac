// The call log's accounts: a choice of all that the phone has, and no form for one that it does not have.
import { mayLeave } from "./form.js";
import { t } from "./i18n.js";
import { message } from "./message.js";
import { ask } from "./poll.js";

const maxAccounts = 20;

const form = document.getElementById("account");
const choice = document.getElementById("choice");
const { position } = choice.dataset;

// The names of the accounts; null for a position without one.
async function nameAt(index) {
  const page = await ask(`/servlet?p=contacts-calllog&q=load&z=${index}`, "application/json");
  return JSON.parse(page).variables.DisplayName ?? null;
}

async function names() {
  const all = [];
  for (let name = await nameAt(0); name !== null && all.length < maxAccounts; name = await nameAt(all.length)) all.push(name);
  return all;
}

function fill(all) {
  choice.append(...all.map((name, index) => new Option(name ? `${index + 1}: ${name}` : index + 1, index, false, String(index) === position)));
  choice.form.hidden ||= all.length < 2;
  choice.form.querySelector("button").hidden = true;
  choice.addEventListener("change", () => {
    if (mayLeave(form)) choice.form.submit();
    else choice.value = position;
  });
  if (Number(position) < all.length) return;
  form.hidden = true;
  message(t("The phone has no such account for its call log."), "warning");
}

names().then(fill).catch(() => message(t("The phone does not answer. Please try again."), "error"));
