// Texts in the language of the page. English texts are the keys; the language file maps them in window.phoneLanguage,
// and `more` are those of the page's section, once they are here.
const { texts: common = {}, more } = window.phoneLanguage ?? {};
const texts = new Map(Object.entries({ ...common, ...await more }));

const attributes = ["placeholder", "title", "aria-label", "alt"];

const tidy = (text) => text.trim().replace(/\s+/g, " ");

// The text in the page's language, %1, %2, ... replaced by the values. A text the language lacks stays English.
export function t(text, ...values) {
  const key = tidy(text);
  return (texts.get(key) ?? key).replace(/%([1-9])/g, (mark, number) => values[number - 1] ?? mark);
}

// Takes in the texts of all other sections, for what names settings of their pages.
export async function loadAllTexts() {
  const { sections = {} } = window.phoneLanguage ?? {};
  const files = await Promise.all(Object.values(sections).map((address) => import(address).catch(() => ({ default: {} }))));
  for (const [key, text] of files.flatMap((file) => Object.entries(file.default))) texts.set(key, text);
}

// A text of the phone's: "Account3" is looked up as "Account%d" when it has no translation of its own.
function phoneText(text) {
  const key = tidy(text);
  if (texts.has(key)) return texts.get(key);
  const numbers = key.match(/-?\d+/g) ?? [];
  const pattern = texts.get(key.replace(/-?\d+/g, "%d"));
  return pattern ? pattern.replace(/%d/g, () => numbers.shift()) : key;
}

// Shows a value of the phone: translated in an element with data-text, as it is otherwise. data-state keeps the
// untranslated value for the style sheet.
export function showValue(element, value) {
  const shown = "text" in element.dataset ? phoneText(value) : value;
  if (element.textContent !== shown) element.textContent = shown;
  if ("state" in element.dataset) element.dataset.state = value;
}

// Translates what the template holds. Users' data stands in elements with translate="no".
export function translatePage(root) {
  for (const element of root.querySelectorAll("[data-text]")) showValue(element, element.textContent);
  const skip = '[translate="no"], [data-text], script, style, noscript, textarea';
  const walker = document.createTreeWalker(root, NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT, (node) =>
    node.nodeType === Node.ELEMENT_NODE && node.matches(skip) ? NodeFilter.FILTER_REJECT : NodeFilter.FILTER_ACCEPT);
  while (walker.nextNode()) {
    const node = walker.currentNode;
    if (node.nodeType === Node.ELEMENT_NODE) {
      for (const name of attributes) if (node.hasAttribute(name)) node.setAttribute(name, t(node.getAttribute(name)));
    } else if (node.data.trim()) {
      node.data = node.data.replace(/\S(?:.*\S)?/s, (text) => t(text));
    }
  }
}
