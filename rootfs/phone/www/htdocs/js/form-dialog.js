// Forms in dialogs: filled by a script, checked while one types, and left with changes only after a question.
import { attempt, show } from "./ask.js";
import { firstWrong, hasChanges, prepareChecks } from "./form.js";
import { t } from "./i18n.js";

// Sets a field and what a later look for changes compares with.
export function setField(field, value, name = value) {
  if (!field.options) {
    field.defaultValue = value;
    field.value = value;
    return;
  }
  for (const gone of field.querySelectorAll("[data-unlisted]")) gone.remove();
  if (![...field.options].some((option) => option.value === value)) {
    const option = new Option(name, value);
    option.dataset.unlisted = "";
    field.append(option);
  }
  for (const option of field.options) option.defaultSelected = option.value === value;
  field.value = value;
  field.dispatchEvent(new Event("change", { bubbles: true }));
}

// A form in a dialog: checked while one types, sent by `save`, and left with changes only after a question.
export function prepareDialog(dialog, save) {
  const form = dialog.querySelector("form");
  const line = form.querySelector("[role=alert]");
  const leave = () => {
    if (!hasChanges(form) || confirm(t("Discard the unsaved changes?"))) dialog.close();
  };
  prepareChecks(form);
  dialog.addEventListener("cancel", (event) => { event.preventDefault(); leave(); });
  // A browser lets a second Escape pass the event above.
  dialog.addEventListener("keydown", (event) => {
    if (event.key !== "Escape" || event.isComposing) return;
    event.preventDefault();
    leave();
  });
  dialog.querySelector("[data-close]").addEventListener("click", leave);
  window.addEventListener("beforeunload", (event) => { if (dialog.open && hasChanges(form)) event.preventDefault(); });
  form.addEventListener("submit", async (event) => {
    event.preventDefault();
    const wrong = firstWrong(form);
    if (wrong) {
      wrong.focus();
      return;
    }
    show(line, "");
    await attempt(line, form, () => save(form));
  });
}

export function openDialog(dialog, heading) {
  dialog.querySelector("h2").textContent = heading;
  show(dialog.querySelector("[role=alert]"), "");
  for (const input of dialog.querySelectorAll("[aria-invalid]")) input.removeAttribute("aria-invalid");
  for (const error of dialog.querySelectorAll(".error")) error.textContent = "";
  dialog.showModal();
}
