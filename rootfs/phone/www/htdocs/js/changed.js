// What can be changed in a form, in parts that a reader knows: a field, a choice, a switch, a list, a key. A part has
//
//   key            its name in the form, the same each time the page is opened
//   label()        what the page calls it
//   isSecret()     true for what is never shown or kept: passwords, PINs, files
//   isChanged()    true when a save would post another value than the stored one
//   stored(), now()      the stored state and the one that shows, which JSON can carry
//   write(state)   enters a state; false when the page does not take it
//   putBack()      brings the stored state back
//   say(state)     the state in the page's words; nothing where it has none
//   inputs         the fields that are posted for it
import { isChanged } from "./form.js";
import { t } from "./i18n.js";

const tidy = (element) => element?.textContent.trim().replace(/\s+/g, " ") ?? "";
const secretNames = /pass|pwd|pswd|secret|pin$|^pin|aeskey/i;

// --- Fields

const titleOf = (group) => tidy(document.getElementById(group?.getAttribute("aria-labelledby")));

// "Begins · Month" in a group of fields, "3 · Ring" in a table.
function labelOf(control) {
  const group = titleOf(control.closest("[role=radiogroup], [role=group]"));
  if (control.type === "radio") return group;
  const row = tidy(control.closest("tr")?.querySelector("th"));
  const own = control.type === "hidden" ? "" : tidy(control.labels?.[0]) || control.getAttribute("aria-label") || control.name;
  return [group, row, own].filter(Boolean).join(" · ");
}

const touch = (control) => { for (const kind of ["input", "change"]) control.dispatchEvent(new Event(kind, { bubbles: true })); };

const kinds = {
  choice: {
    stored: ([select]) => [...select.options].filter((option) => option.defaultSelected).map(({ value }) => value),
    now: ([select]) => [...select.selectedOptions].map(({ value }) => value),
    write([select], values) {
      const options = values.map((value) => [...select.options].find((option) => option.value === value));
      if (!options.every(Boolean)) return false;
      for (const option of select.options) option.selected = options.includes(option);
      return true;
    },
    say: ([select], values) => values.map((value) => tidy([...select.options].find((option) => option.value === value)) || value).join(", "),
  },
  radios: {
    stored: (radios) => radios.find((radio) => radio.defaultChecked)?.value ?? null,
    now: (radios) => radios.find((radio) => radio.checked)?.value ?? null,
    write(radios, value) {
      const chosen = radios.find((radio) => radio.value === value);
      if (value !== null && !chosen) return false;
      for (const radio of radios) radio.checked = radio === chosen;
      return true;
    },
    say: (radios, value) => tidy(radios.find((radio) => radio.value === value)?.labels[0]) || value,
  },
  box: {
    stored: ([box]) => box.defaultChecked,
    now: ([box]) => box.checked,
    write([box], isOn) { box.checked = isOn; },
    say: (box, isOn) => isOn ? t("On") : t("Off"),
  },
  text: {
    stored: ([input]) => input.defaultValue,
    now: ([input]) => input.value,
    write([input], text) {
      input.value = text;
      return input.value === text;
    },
    say: (input, text) => text,
  },
};

const kindOf = (control) => control.options ? kinds.choice : kinds[{ radio: "radios", checkbox: "box" }[control.type] ?? "text"];

function fieldPart(inputs) {
  const [control] = inputs;
  const kind = kindOf(control);
  return {
    key: control.type === "radio" || !control.id ? control.name : control.id,
    inputs,
    label: () => labelOf(control),
    isSecret: () => ["password", "file"].includes(control.type) || secretNames.test(control.name),
    isChanged: () => inputs.some(isChanged),
    stored: () => kind.stored(inputs),
    now: () => kind.now(inputs),
    say: (state) => kind.say(inputs, state),
    write(state) {
      const isTaken = kind.write(inputs, state) !== false;
      touch(inputs.find((input) => input.checked) ?? control);
      return isTaken;
    },
    putBack() {
      if (control.type === "file") control.value = "";
      else this.write(this.stored());
      control.dispatchEvent(new Event("putback"));
    },
  };
}

// --- What scripts compose in hidden fields, whose data-stored holds the stored values

const composed = new WeakMap();

// A part that a script makes of hidden fields; what it does not say of it is that of its fields. Without say(), a change
// shows as one, and no more.
export function compose(form, { inputs, ...own }) {
  const part = {
    key: inputs[0].name,
    inputs,
    label: () => labelOf(inputs[0]),
    isSecret: () => false,
    isChanged: () => inputs.some((input) => !input.disabled && input.value !== input.dataset.stored),
    stored: () => inputs.map((input) => input.dataset.stored),
    now: () => inputs.map((input) => input.value),
    write(values) { inputs.forEach((input, index) => { input.value = values[index]; }); },
    putBack() { this.write(this.stored()); },
    ...own,
  };
  composed.set(form, [...composed.get(form) ?? [], part]);
}

// To be called when a script has changed what a part holds, which no event tells.
export const noteChange = (form) => form.dispatchEvent(new Event("composed"));

// --- All of a form

const isSeen = ({ inputs: [first] }) => first.isConnected && !first.closest("[hidden]");
// A list that is still to come has nothing stored yet.
const isThere = ({ inputs }) => inputs.every((input) => "stored" in input.dataset);

function fieldParts(form) {
  const groups = new Map();
  for (const control of form.elements) {
    if (!control.name || ["hidden", "submit"].includes(control.type)) continue;
    const group = control.type === "radio" ? control.name : control;
    groups.set(group, [...groups.get(group) ?? [], control]);
  }
  return [...groups.values()].map(fieldPart);
}

// The parts that the reader may see, those of modes that are not chosen among them.
export const partsOf = (form) => [...fieldParts(form), ...(composed.get(form) ?? []).filter(isThere)].filter(isSeen);

const comesAfter = ({ inputs: [one] }, { inputs: [other] }) =>
  one.compareDocumentPosition(other) & Node.DOCUMENT_POSITION_FOLLOWING ? -1 : 1;

// In the order of the page.
export const changedParts = (form) => partsOf(form).filter((part) => part.isChanged()).sort(comesAfter);

// The heading of the group that a part stands in.
export const headingOf = ({ inputs: [first] }) => tidy(first.closest(".card")?.querySelector("h2"));
