// What every settings form does: fitting inputs, errors at the field, a warning before changes are lost, save and ask.
//
//   data-value      on a select's group of radios: the stored value        data-current  the option of the stored value
//   data-when       "FIELD=a,b": shown while FIELD has one of the values   data-check    checks of checks.js, "required"
//   data-needed-by: the switch that makes the field a required one
//   data-same-network, data-not-below, data-same-as, data-above, data-at-least, data-at-most, data-differs, data-outside,
//   data-fits-with: relations of checks.js to other fields
//   data-restart    a changed field needs a restart                        data-ask      on a button: ask before its restart
// A field that is not shown is not posted, and the phone leaves its setting alone.
import { checks, relations } from "./checks.js";
import { t } from "./i18n.js";
import { message, messageAfter } from "./message.js";

const secretMask = "********";
const typingPause = 700;  // milliseconds before an error shows in a field that is being typed into

const controls = (form) => [...form.elements].filter((control) => control.name && control.type !== "hidden" && control.type !== "submit");

export function isChanged(control) {
  if (control.disabled) return false;
  if (control.type === "checkbox" || control.type === "radio") return control.checked !== control.defaultChecked;
  if (control.options) return [...control.options].some((option) => option.selected !== option.defaultSelected);
  return control.value !== control.defaultValue;
}

// Hidden fields that scripts fill: data-stored holds what they were filled with first.
const composed = (form) => [...form.querySelectorAll("input[data-stored]")].filter((input) => !input.disabled);

export const hasChanges = (form) =>
  controls(form).some(isChanged) || composed(form).some((input) => input.value !== input.dataset.stored);

// For a page that opens another view of itself: true when nothing is changed, or the reader gives the changes up.
export function mayLeave(form) {
  if (hasChanges(form) && !confirm(t("Discard the unsaved changes?"))) return false;
  form.reset();
  return true;
}

// Marks the stored value as the form's default, so that a reset brings it back. A value that is none of the choices
// keeps the option it came with.
function prepareChoices(form) {
  for (const current of form.querySelectorAll("option[data-current]")) {
    const option = [...current.parentElement.options].find((other) => other !== current && other.value === current.value);
    if (!option) continue;
    const select = current.parentElement;
    const untouched = current.selected;
    current.remove();
    option.defaultSelected = true;
    if (untouched) select.value = option.value;
  }
  for (const group of form.querySelectorAll("[data-value]")) {
    const radios = [...group.querySelectorAll("input[type=radio]")];
    const stored = radios.find((radio) => radio.value === group.dataset.value) ??
      radios.find((radio) => radio.value === group.dataset.otherwise);
    if (stored) stored.defaultChecked = true;
  }
  for (const input of form.querySelectorAll("input[type=number], input[type=time]")) if (!input.value) input.defaultValue = "";
  for (const select of form.querySelectorAll("select")) {
    if ([...select.selectedOptions].length === select.querySelectorAll("option[selected]").length) continue;
    for (const option of select.options) option.defaultSelected = option.selected;  // none was marked, or several
  }
}

function valueOf(form, name) {
  const field = form.elements[name];
  const box = field instanceof RadioNodeList ? [...field].find((one) => one.type === "checkbox") : null;
  if (box) return box.checked ? box.value : "0";
  return field?.value ?? "";
}

// A field above the reader's level comes without its value: what depends on it shows.
function isWithheld(form, name) {
  const field = form.elements[name];
  const shown = field instanceof RadioNodeList ? [...field].find(({ type }) => type !== "hidden") : field;
  return Boolean(shown?.closest("[data-level][hidden]"));
}

// Shows what belongs to the chosen mode and takes what is not shown out of the form.
function applyModes(form) {
  for (const element of form.querySelectorAll("[data-when]")) {
    const [name, values] = element.dataset.when.split("=");
    element.classList.toggle("unused", !isWithheld(form, name) && !values.split(",").includes(valueOf(form, name)));
  }
  for (const control of form.elements) {
    if (control.name && control.type !== "submit") control.disabled = control.closest("[hidden], .unused") !== null;
  }
  // A switch posts "1" itself when it is on, and its hidden twin posts "0" when it is off.
  for (const box of form.querySelectorAll("input[role=switch]")) {
    const twin = [...form.elements[box.name]].find((other) => other.type === "hidden");
    twin.disabled = box.disabled || box.checked;
  }
}

function numberError(input) {
  const { min, max, step, validity } = input;
  if (!validity.badInput && !validity.rangeUnderflow && !validity.rangeOverflow && !validity.stepMismatch) return "";
  return step ? t("Enter a number from %1 to %2.", min, max) : t("Enter a whole number from %1 to %2.", min, max);
}

function dateError({ min, max, validity }) {
  return validity.rangeUnderflow || validity.rangeOverflow ? t("Enter a date from %1 to %2.", min, max) : "";
}

function errorOf(input, form) {
  const names = (input.dataset.check ?? "").split(" ").filter(Boolean);
  if (input.type === "number" && numberError(input)) return numberError(input);
  if (input.type === "date" && dateError(input)) return dateError(input);
  const isNeeded = names.includes("required") || (input.dataset.neededBy && valueOf(form, input.dataset.neededBy) === "1");
  if (!input.value) return isNeeded ? t("This field is required.") : "";
  if (input.type === "password" && input.value.includes(secretMask)) {
    return input.value === secretMask ? "" : t("Enter the whole password.");
  }
  for (const name of names) {
    const error = checks[name]?.(input.value);
    if (error) return error;
  }
  for (const [name, relation] of Object.entries(relations)) {
    const error = name in input.dataset ? relation(input, form.elements, input.dataset[name]) : "";
    if (error) return error;
  }
  return "";
}

// Shows the field's error, or takes it away; true when the field is right.
function check(input, form) {
  const error = input.disabled ? "" : errorOf(input, form);
  const line = document.getElementById(`${input.id}-error`);
  line.textContent = error;
  if (error) input.setAttribute("aria-invalid", "true");
  else input.removeAttribute("aria-invalid");
  return !error;
}

const checkedInputs = (form) => controls(form).filter((control) => control.matches("input:not([type=radio], [type=checkbox]), textarea[data-check]"));

function describe(form) {
  for (const field of form.querySelectorAll(".field")) {
    const target = field.hasAttribute("role") ? field : field.querySelector("input, select, textarea");
    const name = target.id || target.querySelector("input").name;
    const help = field.querySelector(".help");
    const error = document.createElement("p");
    error.className = "error";
    error.id = `${name}-error`;
    field.append(error);
    if (help) help.id = `${name}-help`;
    target.setAttribute("aria-describedby", help ? `${help.id} ${error.id}` : error.id);
    if (target.dataset.check?.split(" ").includes("required")) target.setAttribute("aria-required", "true");
  }
}

function checkWhileTyping(form) {
  let pause;
  form.addEventListener("input", ({ target }) => {
    clearTimeout(pause);
    if (!checkedInputs(form).includes(target)) return;
    const again = () => check(target, form);
    if (target.hasAttribute("aria-invalid")) again();
    else pause = setTimeout(again, typingPause);
  });
  form.addEventListener("change", ({ target }) => {
    applyModes(form);
    // Fields stand in relation to each other: those that show an error are looked at again.
    for (const input of checkedInputs(form)) if (input === target || input.hasAttribute("aria-invalid")) check(input, form);
  });
  form.addEventListener("reset", () => setTimeout(() => {
    for (const input of composed(form)) input.value = input.dataset.stored;
    applyModes(form);
    for (const input of checkedInputs(form)) check(input, form);
    if (!document.querySelector("#message button")) message("");
  }));
}

// A stored password shows as its mask; the first key replaces it as a whole.
function prepareSecrets(form) {
  for (const input of form.querySelectorAll("input[type=password]")) {
    input.addEventListener("focus", () => setTimeout(() => input.select()));
  }
}

// The dialog stands before each save, or, where a button has data-ask, before a save that brings or needs a restart.
function mustAsk(form, submitter) {
  if (submitter?.hasAttribute("data-ask") || !form.querySelector("[data-ask]")) return true;
  return [...form.querySelectorAll("[data-restart]")].some(isChanged);
}

const asTheyAre = new Map();  // forms that are sent without checks and questions, with texts for the page that follows

export function sendAsIs(form, text) {
  asTheyAre.set(form, text);
  form.requestSubmit(form.querySelector(".bar .primary"));
  asTheyAre.delete(form);
}

function prepareSaving(form) {
  const dialog = form.querySelector("dialog");
  dialog?.querySelector("[data-close]").addEventListener("click", () => dialog.close());
  let leaving = false;
  form.addEventListener("submit", (event) => {
    const wrong = asTheyAre.has(form) ? [] : checkedInputs(form).filter((input) => !check(input, form));
    if (wrong.length || (dialog && !dialog.open && !asTheyAre.has(form) && mustAsk(form, event.submitter))) {
      event.preventDefault();
      if (wrong.length) {
        dialog?.close();
        message(t("Not saved. Please correct the marked fields."), "error");
        wrong[0].focus();
      } else {
        dialog.showModal();
      }
      return;
    }
    leaving = true;
    messageAfter(asTheyAre.get(form) ?? "");
  });
  window.addEventListener("beforeunload", (event) => {
    if (!leaving && hasChanges(form)) event.preventDefault();
  });
}

// For a form in a dialog, which is saved by a script: errors at the fields, and the first field that is wrong.
export function prepareChecks(form) {
  form.noValidate = true;
  describe(form);
  checkWhileTyping(form);
}
export const firstWrong = (form) => checkedInputs(form).filter((input) => !check(input, form))[0];

export function prepareForm(form) {
  prepareChoices(form);
  prepareChecks(form);
  applyModes(form);
  prepareSecrets(form);
  prepareSaving(form);
  const anything = [...form.querySelectorAll(".field, .items, .keys > li")].some((field) => !field.closest("[hidden]"));
  form.querySelector(".bar").hidden = !anything;
  // What is changed, and what was: only where something can be taken back, and while the page shows already.
  if (form.querySelector(".bar [type=reset]")) import("./changes.js").then(({ followChanges }) => followChanges(form));
}
