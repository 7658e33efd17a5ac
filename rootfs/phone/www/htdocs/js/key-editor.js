// The fields of the key that is open, below its row. A type that is chosen is asked of the phone, which says what such
// a key has.
import { makeSearchable } from "./combobox.js";
import { mayLeave } from "./form.js";
import { t } from "./i18n.js";
import { readTypeChange } from "./key-notation.js";
import { choiceText, parameterNames } from "./key-words.js";
import { message } from "./message.js";
import { SessionEnded, ask } from "./poll.js";

const locked = "2";

const root = document.getElementById("key-editor");
const control = (name) => document.getElementById(`key-${name}`);
const fieldOf = (input) => input.closest(".field");

function fillChoices(select, key, name, choices) {
  const current = key.text(name);
  const shown = choices.some(({ value }) => value === current) ? choices : [{ value: current, text: key.choice(name) }, ...choices];
  select.replaceChildren(...shown.map(({ value, text }) => new Option(choiceText(text), value)));
  select.value = current;
}

export class KeyEditor {
  key = null;

  // query: what names the family, and the module, in an address; lockable: these keys can be locked here.
  constructor(form, { query, lockable }) {
    Object.assign(this, { form, query, lockable });
    this.inputs = { mode: control("mode"), value: control("value"), line: control("line"), label: control("label"), ext: control("ext") };
    this.select = control("type");
    this.picker = makeSearchable(this.select);
    this.select.addEventListener("change", () => this.changeType());
    for (const [name, input] of Object.entries(this.inputs)) {
      input.addEventListener("input", () => this.key?.set(name === "mode" ? "value" : name, input.value));
    }
    // A PIN shows as its mask; the first key replaces it as a whole.
    const { ext } = this.inputs;
    ext.addEventListener("focus", () => { if (ext.type === "password") setTimeout(() => ext.select()); });
    root.addEventListener("keydown", (event) => this.onKey(event));
    control("done").addEventListener("click", () => this.close(true));
  }

  onKey(event) {
    if (event.key === "Enter" && event.target.matches("input")) event.preventDefault();  // the form is not sent from here
    else if (event.key !== "Escape") return;
    this.close(true);
  }

  toggle(key) {
    const isOpen = this.key === key;
    this.close();
    if (isOpen) return;
    this.key = key;
    key.item.append(root);
    key.item.classList.add("open");
    key.button.setAttribute("aria-expanded", "true");
    key.button.setAttribute("aria-controls", root.id);
    root.hidden = false;
    this.fill();
  }

  close(takesFocus = false) {
    const { key } = this;
    this.key = null;
    root.hidden = true;
    if (!key) return;
    key.item.classList.remove("open");
    key.button.setAttribute("aria-expanded", "false");
    key.button.removeAttribute("aria-controls");
    if (takesFocus) key.button.focus();
  }

  fill() {
    const { key, inputs } = this;
    const { value, line, label, ext } = key.shape;
    this.select.value = String(key.type);
    this.picker.show();
    const names = parameterNames(key.type);
    for (const name of ["value", "line", "ext"]) fieldOf(inputs[name]).querySelector("label").textContent = names[name];
    const isMode = value.enabled && value.choices.length > 0;
    const shown = { mode: isMode, value: value.enabled && !isMode, line: line.enabled, label: label.enabled, ext: ext.enabled };
    for (const [name, input] of Object.entries(inputs)) fieldOf(input).hidden = !shown[name];
    if (isMode) fillChoices(inputs.mode, key, "value", value.choices.filter((choice) => this.lockable || choice.value !== locked));
    else inputs.value.value = key.text("value");
    fillChoices(inputs.line, key, "line", line.choices);
    inputs.label.value = key.text("label");
    inputs.ext.value = key.text("ext");
    inputs.ext.type = key.type === 55 ? "password" : "text";
  }

  // While the phone is asked, nothing else can be done with the key.
  async changeType() {
    const { key, select } = this;
    const parts = [...root.querySelectorAll("input, select, button"), this.form.querySelector(".bar .primary")];
    const setBusy = (isBusy) => { for (const part of parts) part.disabled = isBusy; };
    setBusy(true);
    root.setAttribute("aria-busy", "true");
    try {
      const asked = new URLSearchParams({ p: "dsskey", q: "typeChanged", ...this.query, dktype: select.value, keyindex: key.index });
      this.take(key, Number(select.value), readTypeChange(await ask(`/servlet?${asked}`, "text/json")));
    } catch (error) {
      if (error instanceof SessionEnded) message(t("You have been logged out. Reload the page to log in."), "warning");
      else message(t("The phone does not answer. Please try again."), "error");
    } finally {
      root.removeAttribute("aria-busy");
      setBusy(false);
      if (this.key) this.fill();
      if (this.key === key) this.picker.input.focus();
    }
  }

  take(key, type, answer) {
    if (answer?.type === type && answer.keyIndex === key.index) {
      message("");
      key.change(answer);
    } else if (mayLeave(this.form)) {
      location.reload();  // the keys may be other ones now
    }
  }
}
