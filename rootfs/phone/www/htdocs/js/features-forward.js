// Choosing another mode or account opens the page with its settings; changes are not lost without a question.
import { mayLeave } from "./form.js";
import { showValue, t } from "./i18n.js";
import { message } from "./message.js";

const form = document.querySelector("form[method=post]");
const accountParameters = new Map([["ForwardAccount", "fwd"], ["DNDAccount", "dnd"]]);
const query = new URLSearchParams(location.search);

function restore(control) {
  if (control.type === "radio") [...form.elements[control.name]].find((radio) => radio.defaultChecked).checked = true;
  else for (const option of control.options) option.selected = option.defaultSelected;
}

function addressFor({ name, value }) {
  if (accountParameters.has(name)) {
    query.set(accountParameters.get(name), value);
  } else {
    for (const mode of ["ForwardMode", "DndMode"]) query.set(mode, form.elements[mode].value);
    query.set(name, value);
  }
  return `/servlet?${query}`;
}

// Before the form itself sees the change: it is to be taken back if the reader stays.
form.addEventListener("change", (event) => {
  const { name, value } = event.target;
  if (!accountParameters.has(name) && !["ForwardMode", "DndMode"].includes(name)) return;
  event.stopPropagation();
  restore(event.target);
  if (mayLeave(form)) location.assign(addressFor({ name, value }));
}, { capture: true });

for (const name of accountParameters.keys()) {
  for (const option of form.elements[name]?.options ?? []) {
    if (option.textContent) continue;
    option.dataset.text = "";
    showValue(option, `Account${Number(option.value) + 1}`);
  }
}
if (query.has("ForwardMode")) message(t("The mode shown takes effect when you save."), "warning");
