// What is changed in a form: its number in the bar, and on demand a list, each change with a button that puts it back.
import { changedParts, headingOf } from "./changed.js";
import { rememberForm } from "./form-memory.js";
import { t } from "./i18n.js";

const countPause = 150;    // milliseconds after a key before the changes are counted
const tellPause = 1500;    // and before a screen reader is told
const longestValue = 200;  // characters of a value in the list

function make(tag, className, ...children) {
  const element = document.createElement(tag);
  element.className = className;
  element.append(...children);
  return element;
}

function button(text, act) {
  const made = make("button", "", text);
  made.type = "button";
  made.addEventListener("click", act);
  return made;
}

function valueOf(text) {
  if (!text) return make("i", "", t("empty"));
  const value = make("b", "", text.length > longestValue ? `${text.slice(0, longestValue)}…` : text);
  value.translate = false;
  return value;
}

// "from %1 to %2" with its values as elements.
function sentence(pattern, values) {
  return pattern.split(/(%[12])/).map((piece) => /^%[12]$/.test(piece) ? values[piece[1] - 1] : piece);
}

function describe(part) {
  if (part.isSecret()) return [t("changed")];
  const [from, to] = [part.stored(), part.now()].map((state) => part.say?.(state));
  if (from === undefined || to === undefined || from === to) return [t("changed")];
  return sentence(t("from %1 to %2"), [from, to].map(valueOf));
}

const numberText = (count) => count === 1 ? t("1 change") : t("%1 changes", count);

class ChangesBar {
  count = 0;
  told = 0;

  constructor(form) {
    this.form = form;
    this.save = form.querySelector(".bar .primary");
    this.list = make("ul", "changes");
    this.list.id = "changes";
    this.list.setAttribute("aria-label", t("Changes on this page"));
    this.toggle = button("", () => this.open(this.list.hidden));
    this.toggle.classList.add("count-changes");
    this.toggle.setAttribute("aria-controls", this.list.id);
    this.news = make("p", "only-read");
    this.news.setAttribute("role", "status");
    const bar = form.querySelector(".bar");
    bar.querySelector("[type=reset]").after(this.toggle);
    bar.append(this.list, this.news);
    this.list.addEventListener("keydown", (event) => { if (event.key === "Escape") this.open(false, true); });
    for (const kind of ["input", "change", "composed", "reset"]) form.addEventListener(kind, () => this.countSoon());
    this.recount();
    this.open(false);
  }

  countSoon() {
    clearTimeout(this.counting);
    this.counting = setTimeout(() => this.recount(), countPause);
  }

  recount() {
    const parts = changedParts(this.form);
    this.count = parts.length;
    this.toggle.textContent = numberText(this.count);
    this.toggle.hidden = !this.count;
    if (!this.count) this.open(false);
    else if (!this.list.hidden) this.show(parts);
    clearTimeout(this.telling);
    this.telling = setTimeout(() => this.tell(), tellPause);
  }

  tell() {
    if (this.count === this.told) return;
    this.told = this.count;
    this.news.textContent = this.count ? numberText(this.count) : t("Nothing is changed.");
  }

  open(isOpen, takesFocus = false) {
    this.list.hidden = !isOpen;
    this.toggle.setAttribute("aria-expanded", String(isOpen));
    if (isOpen) this.show(changedParts(this.form));
    else this.list.replaceChildren();
    if (takesFocus) this.toggle.focus();
  }

  show(parts) {
    const focused = [...this.list.children].findIndex((row) => row.contains(document.activeElement));
    this.list.replaceChildren(...parts.map((part) => this.row(part)));
    if (focused >= 0) this.focusRow(focused);
  }

  row(part) {
    const heading = headingOf(part);
    const name = part.label();
    const putBack = button(t("Put back"), () => this.putBack(part));
    putBack.setAttribute("aria-label", t("Put back: %1", name));
    putBack.classList.add("small");
    const title = make("strong", "", name);
    title.translate = false;
    const group = make("span", "hint", heading && heading !== name ? heading : "");
    group.translate = false;
    return make("li", "", make("div", "", title, " ", group, make("p", "", ...describe(part))), putBack);
  }

  putBack(part) {
    const index = [...this.list.children].findIndex((row) => row.contains(document.activeElement));
    part.putBack();
    this.recount();
    if (this.count) this.focusRow(Math.max(index, 0));
    else this.save.focus();
  }

  focusRow(index) {
    const rows = this.list.children;
    rows[Math.min(index, rows.length - 1)]?.querySelector("button").focus();
  }
}

export function followChanges(form) {
  const bar = new ChangesBar(form);
  rememberForm(form, () => bar.recount());
}
