// Two lists whose items are put in order and moved from one to the other: by the buttons of each item, by Alt and an
// arrow key, or by dragging. Each list writes its items' data-entry, joined by commas, to the hidden field beside it.
// Items with hidden fields of their own are posted by these, under the name that their list's data-field gives them; the
// field beside the list then has no name and only tells whether something was changed.
import { compose, noteChange } from "./changed.js";
import { t } from "./i18n.js";

const nameOf = (item) => item.querySelector("span").textContent;

// lists: [first, second]; moveTexts: what the button of an item of each list says; changed: called for each new order;
// spare: the data-entry of items that stand for nothing of their own, such as gaps. The first list takes any number of
// them, and the second always has one.
export function orderLists(lists, moveTexts, { spare, changed } = {}) {
  const news = document.createElement("p");
  news.className = "only-read";
  news.setAttribute("role", "status");
  lists[0].after(news);
  const form = lists[0].closest("form");
  const titleOf = (list) => document.getElementById(list.getAttribute("aria-labelledby")).textContent;
  const fieldOf = (list) => list.parentElement.querySelector(":scope > input");
  const otherOf = (list) => lists[1 - lists.indexOf(list)];
  const store = () => {
    for (const list of lists) {
      fieldOf(list).value = [...list.children].map((item) => item.dataset.entry).join(",");
      [...list.children].forEach((item) => {
        item.querySelector("input")?.setAttribute("name", list.dataset.field);
        item.querySelector("[data-step='-1']").disabled = !item.previousElementSibling;
        item.querySelector("[data-step='1']").disabled = !item.nextElementSibling;
        item.querySelector("[data-over]").textContent = moveTexts[lists.indexOf(list)];
        item.querySelector("[data-over]").setAttribute("aria-label", `${moveTexts[lists.indexOf(list)]}: ${nameOf(item)}`);
      });
    }
    changed?.();
    noteChange(form);
  };

  const copyOf = (some) => {
    const copy = some.find((item) => item.dataset.entry === spare).cloneNode(true);
    for (const button of copy.querySelectorAll("button")) button.remove();
    prepare(copy);
    return copy;
  };
  const keepOneSpare = (moved) => {
    const [used, unused] = lists.map((list) => [...list.children].filter((item) => item.dataset.entry === spare));
    if (unused.includes(moved)) for (const item of unused) if (item !== moved) item.remove();
    if (unused.length || !used.length) return;
    lists[1].prepend(copyOf(used));
  };

  // Puts the item before another one of a list, or at its end; the focus stays where it was.
  const place = (item, list, before) => {
    const focused = item.contains(document.activeElement) ? document.activeElement : null;
    list.insertBefore(item, before);
    keepOneSpare(item);
    store();
    (focused?.disabled ? item.querySelector("button:enabled") : focused)?.focus();
    const position = [...list.children].indexOf(item) + 1;
    news.textContent = t("%1: %2, %3 of %4", nameOf(item), titleOf(list), position, list.children.length);
  };

  const step = (item, by) => {
    const list = item.parentElement;
    const neighbour = by < 0 ? item.previousElementSibling : item.nextElementSibling;
    if (neighbour) place(item, list, by < 0 ? neighbour : neighbour.nextElementSibling);
  };
  const moveOver = (item) => place(item, otherOf(item.parentElement), null);

  const addButton = (item, text, label, data, act) => {
    const button = document.createElement("button");
    button.type = "button";
    button.textContent = text;
    button.setAttribute("aria-label", label);
    Object.assign(button.dataset, data);
    button.addEventListener("click", () => act(item));
    item.append(button);
  };

  const onKey = (event, item) => {
    const by = { ArrowUp: -1, ArrowDown: 1 }[event.key];
    if (event.altKey && by) {
      step(item, by);
    } else if (event.altKey && ["ArrowLeft", "ArrowRight"].includes(event.key)) {
      moveOver(item);
    } else if (by) {
      const row = by < 0 ? item.previousElementSibling : item.nextElementSibling;
      const same = [...item.children].indexOf(document.activeElement);
      (row?.children[same]?.disabled ? row.querySelector("[data-over]") : row?.children[same])?.focus();
    } else {
      return;
    }
    event.preventDefault();
  };

  let dragged = null;
  const prepare = (item) => {
    addButton(item, "↑", t("Move up: %1", nameOf(item)), { step: -1 }, (one) => step(one, -1));
    addButton(item, "↓", t("Move down: %1", nameOf(item)), { step: 1 }, (one) => step(one, 1));
    addButton(item, "", "", { over: "" }, moveOver);
    item.draggable = true;
    item.addEventListener("keydown", (event) => onKey(event, item));
    item.addEventListener("dragstart", (event) => {
      dragged = item;
      event.dataTransfer.setData("text/plain", item.dataset.entry);
      event.dataTransfer.effectAllowed = "move";
    });
    item.addEventListener("dragend", () => { dragged = null; });
  };
  for (const list of lists) {
    list.addEventListener("dragover", (event) => { if (dragged) event.preventDefault(); });
    list.addEventListener("drop", (event) => {
      if (!dragged) return;
      event.preventDefault();
      const below = [...list.children].find((item) => {
        const { top, height } = item.getBoundingClientRect();
        return item !== dragged && event.clientY < top + height / 2;
      });
      place(dragged, list, below ?? null);
    });
  }
  for (const item of lists.flatMap((list) => [...list.children])) prepare(item);
  keepOneSpare();
  store();
  const items = lists.map((list) => [...list.children]);
  for (const list of lists) fieldOf(list).dataset.stored = fieldOf(list).value;
  form.addEventListener("reset", () => {
    lists.forEach((list, index) => list.replaceChildren(...items[index]));
    store();
  });

  // A state is the entries of both lists in their order.
  const entriesOf = (some) => some.map((list) => list.map((item) => item.dataset.entry));
  const all = items.flat();
  const stored = entriesOf(items);
  const write = (state) => {
    const left = [...all];
    const take = (entry) => {
      const at = left.findIndex((item) => item.dataset.entry === entry);
      return at < 0 ? null : left.splice(at, 1)[0];
    };
    const orders = state.map((entries) => entries.map((entry) => take(entry) ?? (entry === spare ? copyOf(all) : null)));
    if (orders.flat().includes(null) || left.some((item) => item.dataset.entry !== spare)) return false;
    lists.forEach((list, index) => list.replaceChildren(...orders[index]));
    store();
    return true;
  };
  compose(form, {
    key: lists[0].getAttribute("aria-labelledby"),
    inputs: lists.map(fieldOf),
    label: () => titleOf(lists[0]),
    stored: () => stored,
    now: () => entriesOf(lists.map((list) => [...list.children])),
    say: ([used]) => used.map((entry) => nameOf(all.find((item) => item.dataset.entry === entry))).join(", "),
    write,
  });
}
