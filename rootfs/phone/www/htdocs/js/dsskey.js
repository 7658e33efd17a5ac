// The pages of keys: each key says what it does, and opens its fields in place.
import { mayLeave } from "./form.js";
import { t } from "./i18n.js";
import { KeyEditor } from "./key-editor.js";
import { KeyRecord } from "./key-record.js";
import { typeText } from "./key-words.js";

const form = document.querySelector("form:has(.bar)");
const { model, linepage, extno } = form.elements;
const isLineKeys = model.value === "1";

// The picker's names in the page's words; the phone's own are found as well.
const types = document.getElementById("key-type");
for (const option of types.options) {
  option.dataset.search = option.textContent;
  option.textContent = typeText(option.textContent);
}
const names = new Map([...types.options].map(({ value, text }) => [Number(value), text]));

const placeOf = { 1: String, 3: (index) => String(index + 1) }[model.value];
const keys = [...document.querySelectorAll(".keys > li")].map((item) =>
  new KeyRecord(item, { typeName: (type) => names.get(type) ?? String(type), placeOf }));
const isFirstPage = isLineKeys && linepage.value === "1";
const editor = new KeyEditor(form, { query: { model: model.value, ...(extno && { extno: extno.value }) }, lockable: isFirstPage });

// A locked key of another page is the one of the first page, and is changed there.
function showLock(key) {
  const note = document.createElement("a");
  note.href = `/servlet?p=dsskey&q=load&model=1&linepage=1#key-${(key.index - 1) % 9 + 1}`;
  note.textContent = t("Locked: change it on page 1");
  const row = document.createElement("div");
  row.className = "locked";
  row.append(...key.button.childNodes);
  row.querySelector(".lines .hint:last-child").replaceChildren(note);
  key.button.replaceWith(row);
  key.leaveAlone();
}

const isShownOnly = (key) => key.isLocked && isLineKeys && !isFirstPage;
for (const key of keys) {
  key.item.id = `key-${key.index}`;
  if (isShownOnly(key)) showLock(key);
  else key.button.addEventListener("click", () => editor.toggle(key));
}
form.addEventListener("reset", () => {
  editor.close();
  for (const key of keys) if (!isShownOnly(key)) key.restore();
});
document.getElementById(location.hash.slice(1))?.querySelector(":scope > button")?.focus();

for (const link of document.querySelectorAll("#pages a")) {
  if (new URL(link.href).searchParams.get("linepage") === linepage.value) link.setAttribute("aria-current", "page");
}
const modules = document.getElementById("modules");
if (modules) {
  const select = modules.elements.extno;
  select.value = extno.value;  // none of them when this module is not attached
  select.addEventListener("change", () => {
    if (mayLeave(form)) modules.submit();
    else select.value = extno.value;
  });
  modules.querySelector("button").hidden = true;
}

document.getElementById("restore")?.addEventListener("submit", (event) => {
  if (confirm(t("Restore all programmable keys as they were delivered?"))) {
    form.reset();  // what was not saved is given up with it
    sessionStorage.setItem("saved", document.body.dataset.page);
  } else {
    event.preventDefault();
  }
});
