// Dialogs of the contacts page: a question that names what it is about, and forms that nobody leaves by mistake.
import { firstWrong, hasChanges, prepareChecks } from "./form.js";
import { t } from "./i18n.js";
import { attempt, show } from "./ask.js";

export { attempt, show } from "./ask.js";

const listed = 100;  // of a longer list, this many names are shown

const element = (tag, text, children = []) => {
  const made = document.createElement(tag);
  if (text) made.textContent = text;
  made.append(...children);
  return made;
};

export function listOf(texts) {
  const items = texts.slice(0, listed).map((text) => element("li", text));
  if (texts.length > listed) items.push(element("li", t("… and %1 more", texts.length - listed)));
  const list = element("ul", "", items);
  list.translate = false;
  return list;
}

// A list that opens under its title and number.
export function foldedList(title, texts) {
  return element("details", "", [element("summary", `${title}: ${texts.length}`), listOf(texts)]);
}

const question = document.getElementById("question");
const [title, text, details, yes, no] = ["title", "text", "details", "yes", "no"].map((name) => document.getElementById(`question-${name}`));

// Asks; true when the button `action` was pressed. `parts` are shown between the text and the buttons.
export function askFirst({ title: heading, text: body = "", parts = [], action }) {
  title.textContent = heading;
  text.textContent = body;
  details.replaceChildren(...parts);
  details.hidden = !parts.length;
  yes.textContent = action;
  yes.hidden = !action;
  no.textContent = action ? t("Cancel") : t("Close");
  question.returnValue = "";
  question.showModal();
  (action ? yes : no).focus();
  return new Promise((done) => question.addEventListener("close", () => done(question.returnValue === "yes"), { once: true }));
}

yes.addEventListener("click", () => question.close("yes"));
no.addEventListener("click", () => question.close());

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
