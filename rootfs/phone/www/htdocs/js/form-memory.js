// What a form remembers beyond its page: after a save the values that were stored before, to take it back, and what was
// entered when a save did not take place, to go on with. Secrets and files are neither kept nor taken back.
import { partsOf } from "./changed.js";
import { hasChanges, mayLeave, sendAsIs } from "./form.js";
import { t } from "./i18n.js";
import { saved } from "./left.js";
import { message } from "./message.js";
import { drop, read, take, write } from "./store.js";

const { page, identity } = document.body.dataset;
const isSame = (one, other) => JSON.stringify(one) === JSON.stringify(other);

// Hidden fields that tell what the form is about: an account, a page of keys. Not those of scripts and lists.
const subjectOf = (form) => [...form.querySelectorAll(":scope input[type=hidden][name]:not([data-stored], .items *)")]
  .filter(({ name }) => form.elements[name].type === "hidden")
  .map(({ name, value }) => [name, value]);

const openPartsOf = (form) => partsOf(form).filter((part) => !part.isSecret());
const partsByKey = (form) => new Map(openPartsOf(form).map((part) => [part.key, part]));

const takenBack = new WeakSet();

// --- When the page is left

// fields: what was stored before, what was entered where that is something else, and how the page calls it. secrets: the
// names of those that were entered.
function recordOf(form, subject, isSave) {
  const parts = openPartsOf(form);
  return {
    page, identity, isSave,
    address: location.pathname + location.search,
    subject,
    secrets: partsOf(form).filter((part) => part.isSecret() && part.isChanged()).map((part) => part.label()),
    fields: parts.map((part) => ({
      key: part.key, label: part.label(), before: part.stored(), ...part.isChanged() && { entered: part.now() },
    })),
  };
}

const enteredIn = ({ fields }) => fields.filter((field) => "entered" in field);

function rememberWhenLeft(form, subject) {
  let isSent = false;
  form.addEventListener("submit", (event) => {
    if (event.defaultPrevented) return;
    isSent = true;
    drop("kept");
    if (!takenBack.has(form)) write("left", recordOf(form, subject, true));
  });
  window.addEventListener("pagehide", () => { if (!isSent && hasChanges(form)) write("left", recordOf(form, subject, false)); });
  window.addEventListener("pageshow", ({ persisted }) => { if (persisted) isSent = false; });
}

// --- Going on with what was entered

function fillIn(form, kept) {
  const parts = partsByKey(form);
  const lost = enteredIn(kept).filter(({ key, entered }) => !parts.has(key) || parts.get(key).write(entered) === false);
  const names = [...lost.map(({ label }) => label), ...kept.secrets];
  const done = t("Taken over. Nothing is saved yet.");
  message(names.length ? `${done} ${t("Not taken over: %1.", names.join(", "))}` : done, names.length ? "warning" : "success");
}

function offerKept(form, subject, refresh) {
  const kept = read("kept");
  if (kept?.page !== page) return;
  const parts = partsByKey(form);
  const isHere = isSame(kept.subject, subject);
  const goOn = () => {
    drop("kept");
    fillIn(form, kept);
    refresh();
  };
  const openAndGoOn = () => {
    write("kept", { ...kept, isWanted: true });
    location.assign(kept.address);
  };
  const giveUp = () => {
    drop("kept");
    message("");
  };
  const isThere = isHere && enteredIn(kept).every(({ key, entered }) => isSame(parts.get(key)?.now(), entered));
  if (isThere || !enteredIn(kept).length) drop("kept");
  else if (kept.isWanted && isHere) goOn();
  else message(t("Your changes were not saved. Take them over?"), "warning", [[t("Take over"), isHere ? goOn : openAndGoOn], [t("Discard"), giveUp]]);
}

// --- Taking a save back

// What the save has changed: the fields that were entered, and what the phone changed along with them.
function differencesOf(form, record) {
  const parts = partsByKey(form);
  return record.fields.filter(({ key, before }) => parts.has(key) && !isSame(parts.get(key).stored(), before))
    .map((field) => ({ ...field, after: parts.get(field.key).stored() }));
}

function offerTakingBack(form, subject) {
  const fields = isSame(saved.subject, subject) ? differencesOf(form, saved) : [];
  if (!enteredIn({ fields }).length) return;
  const begin = () => {
    if (!mayLeave(form)) return;
    write("take-back", { ...saved, fields });
    location.replace(saved.address);
  };
  const line = document.getElementById("message");
  message(line.textContent || t("Saved."), line.dataset.kind, [[t("Take back"), begin]]);
}

// A field of a mode that is not chosen is posted as well: it, too, is to be as it was.
function enable({ inputs }) {
  for (const input of inputs) {
    input.disabled = false;
    if (input.getAttribute("role") !== "switch") continue;
    [...input.form.elements[input.name]].find(({ type }) => type === "hidden").disabled = input.checked;
  }
}

const shownValue = (part) => part?.say?.(part.stored()) || "–";

// Posts the values that were stored before, if those that were saved then are stored still. What the phone had changed
// along with them is left alone where it is not.
function takeBack(form, subject, record) {
  const parts = partsByKey(form);
  const isStill = ({ key, after }) => isSame(parts.get(key)?.stored(), after);
  const isHere = isSame(record.subject, subject);
  const others = enteredIn(record).filter((field) => !isHere || !isStill(field));
  if (others.length) {
    const texts = others.map(({ key, label }) => t("%1: %2", label, shownValue(parts.get(key))));
    message(t("Not taken back. It has been changed since: %1.", texts.join("; ")), "warning");
    return;
  }
  const lost = record.fields.filter(isStill).filter(({ key, before }) => parts.get(key).write(before) === false);
  for (const { key } of record.fields.filter(isStill)) enable(parts.get(key));
  const names = [...lost.map(({ label }) => label), ...record.secrets];
  takenBack.add(form);
  sendAsIs(form, names.length ? t("Taken back. This stays as it was saved: %1.", names.join(", ")) : t("Taken back."));
  takenBack.delete(form);
}

// `refresh` counts the changes anew.
export function rememberForm(form, refresh) {
  const begin = () => {
    const subject = subjectOf(form);
    const wanted = take("take-back");
    rememberWhenLeft(form, subject);
    if (wanted?.page === page && wanted.identity === identity) takeBack(form, subject, wanted);
    else if (saved) offerTakingBack(form, subject);
    else offerKept(form, subject, refresh);
    refresh();
  };
  // Scripts of the page fill parts of the form first, and so does a browser that goes back to it.
  if (document.readyState === "complete") begin();
  else window.addEventListener("load", begin, { once: true });
}
