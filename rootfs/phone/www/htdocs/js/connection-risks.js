// Saves that may cost their reader the phone: the dialog of the form says so before they go out, and the page that waits
// for the restart is told where the phone will be found.
import { isChanged } from "./form.js";
import { drop, write } from "./store.js";

// The fields of a form by their names; hidden ones are left aside.
export function fieldsOf(form) {
  const all = (name) => [...form.querySelectorAll(`[name="${name}"]:not([type=hidden])`)];
  return {
    isOn: (name) => all(name).some((input) => input.checked),
    valueOf: (name) => (all(name).find((input) => input.checked) ?? all(name)[0])?.value ?? "",
    storedOf: (name) => all(name)[0]?.defaultValue ?? "",
    isAnyChanged: (...names) => names.flatMap(all).some(isChanged),
  };
}

// Where this browser will find the pages at another host, with the protocol and port of now.
export const addressAt = (host) => `${location.protocol}//${host.includes(":") ? `[${host}]` : host}${location.port && `:${location.port}`}/`;

// `risksOf` gives the texts of what the changes may cost and, where they can be told, the `addresses` at which the phone
// will be found after a restart.
export function warnOfRisks(form, risksOf) {
  const list = document.createElement("ul");
  list.className = "findings";
  form.querySelector("dialog > p").after(list);
  const show = () => list.replaceChildren(...risksOf().texts.filter(Boolean).map((text) => {
    const item = document.createElement("li");
    item.dataset.kind = "warning";
    item.textContent = text;
    return item;
  }));
  // The dialog is filled before the form opens it.
  form.addEventListener("submit", show, { capture: true });
  form.addEventListener("submit", ({ defaultPrevented, submitter }) => {
    const { addresses = [] } = risksOf();
    if (!defaultPrevented && addresses.length && submitter?.name === "reboot") write("addresses", addresses);
    else drop("addresses");
  });
}
