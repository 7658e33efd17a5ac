// The search over all settings: a field in the head with a list of what it finds, page by page, below it.
import { loadAllTexts, t } from "./i18n.js";
import { fold, rate, readQuery, split } from "./search-words.js";

const mostResults = 60;

const create = (tag, attributes, ...children) => {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(attributes)) element.setAttribute(name, value);
  element.append(...children);
  return element;
};

// --- What can be found

const leadsTo = (link, address) => link.href === new URL(address, location).href;
const menuLink = (address) => [...document.querySelectorAll("#navigation [data-page]")].find((link) => leadsTo(link, address));

// Where the menu has the page: "Account › Registration".
function pathOf(address, title) {
  const link = menuLink(address);
  const section = link?.closest(".sections > li").querySelector("span").textContent;
  return link ? [...new Set([section, link.textContent.trim()])].join(" › ") : title;
}

// Shown texts and, for the search, folded ones.
function entryOf(page, anchor, { label, heading = "", help = "", isPage = false }) {
  const shown = { label, heading, help };
  const folded = { label: fold(label), heading: fold(heading), help: fold(help), page: page.words, isPage };
  return { page, shown, folded, href: anchor ? `${page.address}#${encodeURIComponent(anchor)}` : page.address, anchor };
}

function entriesOf({ title, heading, lead, address, settings }) {
  const path = pathOf(address, t(title));
  const page = { address, path, words: fold(`${path} ${t(title)} ${t(heading)}`) };
  const own = entryOf(page, "", { label: t(title), heading: `${path} ${t(heading)}`, help: t(lead), isPage: true });
  own.shown.heading = "";
  return [own, ...settings.map(([anchor, label, help = "", ...headings]) =>
    entryOf(page, anchor || label, { label: t(label), help: t(help), heading: headings.map((one) => t(one)).join(" › ") }))];
}

async function fetchEntries() {
  const [response] = await Promise.all([fetch("/settings.json", { headers: { Accept: "application/json" } }), loadAllTexts()]);
  if (response.status === 403) throw new Error(t("You have been logged out. Reload the page to log in."));
  if (!response.ok) throw new Error(t("The phone does not answer. Please try again."));
  return (await response.json()).pages.flatMap(entriesOf);
}

// The best entries, a list a page, the page of the best one first.
function search(entries, query) {
  const rated = entries.map((entry) => ({ entry, value: rate(entry.folded, query) })).filter(({ value }) => value > 0);
  const byLength = (one, other) => one.entry.shown.label.length - other.entry.shown.label.length;
  rated.sort((one, other) => other.value - one.value || byLength(one, other));
  const pages = new Map();
  for (const { entry } of rated.slice(0, mostResults)) pages.set(entry.page, [...pages.get(entry.page) ?? [], entry]);
  return [...pages];
}

// True when the reader looks at the page already, whatever account he has chosen there.
function isOpen(address) {
  const current = document.querySelector('#navigation [aria-current="page"]');
  if (current) return leadsTo(current, address);
  return !menuLink(address) && new URL(address, location).searchParams.get("p") === document.body.dataset.page;
}

// --- The list

const withMarks = (text, query) => split(text, query).map((part, index) => index % 2 ? create("mark", {}, part) : part);

class Search {
  entries = null;

  constructor(input) {
    this.input = input;
    this.list = document.getElementById("settings-found");
    this.status = document.getElementById("settings-count");
    input.addEventListener("input", () => this.show());
    input.addEventListener("click", () => this.show());
    input.addEventListener("keydown", (event) => this.onKey(event));
    input.addEventListener("blur", () => this.close());
    this.list.addEventListener("pointerdown", (event) => event.preventDefault());  // the field keeps the focus
    this.list.addEventListener("click", (event) => this.choose(event));
  }

  async load() {
    if (this.entries || this.isLoading) return;
    this.isLoading = true;
    this.fault = "";
    try {
      this.entries = await fetchEntries();
    } catch (error) {
      this.fault = error instanceof TypeError ? t("The phone does not answer. Please try again.") : error.message;
    }
    this.isLoading = false;
    if (document.activeElement === this.input) this.show();
  }

  get options() { return [...this.list.querySelectorAll("[href]")]; }
  get marked() { return this.list.querySelector(".marked"); }

  show() {
    const query = readQuery(this.input.value);
    if (!query.whole || (!this.entries && !this.fault)) return this.close();
    const found = this.fault ? [] : search(this.entries, query);
    this.list.replaceChildren(...found.map(([page, entries], index) => this.createGroup(page, entries, index, query)));
    this.status.textContent = this.fault || (found.length ? t("Results: %1", this.options.length) : t("Nothing matches."));
    if (!found.length) this.list.append(create("p", { role: "option", "aria-disabled": "true" }, this.status.textContent));
    this.list.hidden = false;
    this.list.scrollTop = 0;
    this.input.setAttribute("aria-expanded", "true");
    return this.mark(this.options[0]);
  }

  createGroup(page, entries, index, query) {
    const id = `settings-found-${index}`;
    const options = entries.map(({ shown, href, anchor }, at) => {
      const option = create("a", { role: "option", id: `${id}-${at}`, href, tabindex: "-1", "aria-selected": "false", "data-address": page.address, "data-anchor": anchor },
        create("b", {}, ...withMarks(shown.label, query)));
      if (shown.heading) option.append(" ", create("small", {}, ...withMarks(shown.heading, query)));
      if (shown.help) option.append(" ", create("span", { class: "hint" }, ...withMarks(shown.help, query)));
      return option;
    });
    return create("div", { role: "group", "aria-labelledby": id },
      create("p", { id, role: "presentation" }, page.path), ...options);
  }

  close() {
    this.list.hidden = true;
    this.list.replaceChildren();
    this.status.textContent = "";
    this.input.setAttribute("aria-expanded", "false");
    this.mark(null);
  }

  // Makes an option the one that Enter takes.
  mark(option) {
    const { marked } = this;
    marked?.classList.remove("marked");
    marked?.setAttribute("aria-selected", "false");
    option?.classList.add("marked");
    option?.setAttribute("aria-selected", "true");
    option?.scrollIntoView({ block: "nearest" });
    if (option) this.input.setAttribute("aria-activedescendant", option.id);
    else this.input.removeAttribute("aria-activedescendant");
  }

  step(by) {
    if (this.list.hidden) return this.show();
    const { options } = this;
    return this.mark(options.at((options.indexOf(this.marked) + by) % options.length));
  }

  escape() {
    if (!this.list.hidden) return this.close();
    this.input.value = "";
    return this.input.blur();
  }

  onKey(event) {
    if (event.isComposing) return;
    const keys = { ArrowDown: () => this.step(1), ArrowUp: () => this.step(-1), Enter: () => this.marked?.click(), Escape: () => this.escape() };
    if (!this.list.hidden) Object.assign(keys, { Home: () => this.mark(this.options[0]), End: () => this.mark(this.options.at(-1)) });
    if (!keys[event.key] || event.ctrlKey || event.altKey || event.metaKey || event.shiftKey) return;
    event.preventDefault();
    keys[event.key]();
  }

  // Another page is opened as by any link; in this one the reader is brought to the setting.
  async choose(event) {
    const option = event.target.closest("[href]");
    if (!option || event.ctrlKey || event.metaKey || event.shiftKey) return;
    const { address, anchor } = option.dataset;
    if (!isOpen(address)) return;
    event.preventDefault();
    this.close();
    this.input.blur();
    history.replaceState(null, "", `${location.pathname}${location.search}${option.hash}`);
    const { showSetting } = await import("./search-arrival.js");
    if (showSetting(anchor)) return;
    window.scrollTo(0, 0);
    document.getElementById("main").focus({ preventScroll: true });
  }
}

let opened;

export function openSearch(input) {
  opened ??= new Search(input);
  opened.load();
}
