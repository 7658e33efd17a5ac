// A select that is searched by typing: a field with the list of matching options below it.
import { t } from "./i18n.js";

let made = 0;

const createList = (label) => {
  const list = document.createElement("ul");
  list.id = `options-${++made}`;
  list.className = "options";
  list.hidden = true;
  list.setAttribute("role", "listbox");
  list.setAttribute("aria-label", label.textContent);
  return list;
};

const createInput = (select, list) => {
  const input = document.createElement("input");
  const attributes = { type: "text", id: select.id, role: "combobox", autocomplete: "off", spellcheck: "false",
    "aria-autocomplete": "list", "aria-controls": list.id, "aria-expanded": "false",
    "aria-describedby": select.getAttribute("aria-describedby") ?? "" };
  for (const [name, value] of Object.entries(attributes)) input.setAttribute(name, value);
  return input;
};

class Combobox {
  constructor(select, label) {
    this.select = select;
    this.list = createList(label);
    this.input = createInput(select, this.list);
    const frame = document.createElement("div");
    frame.className = "combobox";
    frame.append(this.input, this.list);
    select.after(frame);
    select.removeAttribute("id");
    select.hidden = true;
    this.input.addEventListener("click", () => this.open());
    this.input.addEventListener("input", () => this.open(this.input.value));
    this.input.addEventListener("keydown", (event) => this.onKey(event));
    this.input.addEventListener("blur", () => this.close());
    this.list.addEventListener("pointerdown", (event) => event.preventDefault());  // the field keeps the focus
    this.list.addEventListener("click", ({ target }) => this.choose(target.closest("[data-value]")));
    this.show();
  }

  // Shows what is chosen.
  show() {
    this.input.value = this.select.selectedOptions[0]?.text ?? "";
  }

  close() {
    this.list.hidden = true;
    this.input.setAttribute("aria-expanded", "false");
    this.mark(null);
    this.show();
  }

  // Lists the options that hold all words.
  open(search = "") {
    const words = search.toLowerCase().split(/\s+/).filter(Boolean);
    const found = [...this.select.options].filter(({ text, dataset }) =>
      words.every((word) => `${text} ${dataset.search ?? ""}`.toLowerCase().includes(word)));
    this.list.replaceChildren(...found.map((option, index) => this.createItem(option, index)));
    if (!found.length) this.list.append(this.createNothing());
    this.list.hidden = false;
    this.input.setAttribute("aria-expanded", "true");
    this.mark(words.length ? this.list.querySelector("[data-value]") : this.list.querySelector("[aria-selected=true]"));
    if (!words.length) this.input.select();
  }

  createItem(option, index) {
    const item = document.createElement("li");
    item.id = `${this.list.id}-${index}`;
    item.textContent = option.text;
    item.dataset.value = option.value;
    item.setAttribute("role", "option");
    item.setAttribute("aria-selected", String(option.selected));
    return item;
  }

  createNothing() {
    const item = document.createElement("li");
    item.textContent = t("Nothing matches.");
    item.setAttribute("role", "option");
    item.setAttribute("aria-disabled", "true");
    return item;
  }

  // Makes an item the one that Enter takes.
  mark(item) {
    this.list.querySelector(".marked")?.classList.remove("marked");
    item?.classList.add("marked");
    item?.scrollIntoView({ block: "nearest" });
    if (item) this.input.setAttribute("aria-activedescendant", item.id);
    else this.input.removeAttribute("aria-activedescendant");
  }

  step(by) {
    if (this.list.hidden) return this.open();
    const items = [...this.list.querySelectorAll("[data-value]")];
    const at = items.findIndex((item) => item.classList.contains("marked"));
    return this.mark(items.at(at < 0 && by < 0 ? -1 : (at + by) % items.length) ?? null);
  }

  choose(item) {
    if (!item) return;
    const isOther = this.select.value !== item.dataset.value;
    this.select.value = item.dataset.value;
    this.close();
    if (isOther) this.select.dispatchEvent(new Event("change", { bubbles: true }));
  }

  onKey(event) {
    const isOpen = !this.list.hidden;
    if (event.key === "ArrowDown" || event.key === "ArrowUp") this.step(event.key === "ArrowDown" ? 1 : -1);
    else if (event.key === "Enter") this.choose(isOpen && this.list.querySelector(".marked"));
    else if (event.key === "Escape" && isOpen) this.close();
    else return;
    event.preventDefault();
    event.stopPropagation();
  }
}

// Puts the field in place of the select, which keeps the value and says "change". show() after it was changed by others.
export function makeSearchable(select) {
  const label = document.querySelector(`label[for="${select.id}"]`);
  return new Combobox(select, label);
}
