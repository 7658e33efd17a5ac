// A question in a dialog (QUESTION_DIALOG) that shows what it is about: longer lists are folded.
import { t } from "./i18n.js";

const listed = 100;  // of a longer list, this many names are shown

export const element = (tag, text, children = []) => {
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
