// One key of the page: its hidden fields, which are posted, and its row, which says what they mean.
import { compose, noteChange } from "./changed.js";
import { t } from "./i18n.js";
import { choiceText, describe, placeText } from "./key-words.js";

export const parameters = ["value", "line", "label", "ext"];
const typeWithPin = "55";
const fieldNames = { value: "memValue", line: "selLine", label: "memLabel", ext: "memExt" };

const addText = (parent, className, text) => {
  const element = document.createElement("span");
  element.className = className;
  element.textContent = text;
  element.translate = false;
  parent.append(element);
  return element;
};

export class KeyRecord {
  // typeName(number): the name of a type in the page's words; placeOf(index): the name of the key.
  constructor(item, { typeName, placeOf }) {
    this.item = item;
    this.button = item.querySelector("button");
    this.typeName = typeName;
    const field = (name) => item.querySelector(`input[name^="${name}_"]`);
    this.fields = Object.fromEntries(parameters.map((name) => [name, field(fieldNames[name])]));
    this.fields.type = field("selType");
    this.index = Number(this.fields.type.name.split("_")[1]);
    for (const input of Object.values(this.fields)) input.dataset.stored = input.value;
    const choicesOf = (name) => [...item.querySelectorAll(`datalist[data-choices="${name}"] > option`)];
    this.shape = Object.fromEntries(parameters.map((name) => [name, {
      enabled: this.fields[name].dataset.enabled === "true",
      choices: choicesOf(name).map(({ value, label }) => ({ value, text: label })),
    }]));
    this.storedShape = this.shape;
    const place = this.button.querySelector(".place");
    place.textContent = placeOf ? placeOf(this.index) : placeText(place.textContent);
    this.place = place.textContent;
    this.draw();
    this.tellChanges();
  }

  // A state is the values of the fields and, for another type than the stored one, what such a key has.
  tellChanges() {
    const fields = Object.values(this.fields);
    const shapeOf = ([, shape]) => shape ?? this.storedShape;
    compose(this.item.closest("form"), {
      inputs: fields,
      label: () => /^\d+$/.test(this.place) ? t("Key %1", this.place) : this.place,
      isSecret: () => [this.fields.type.value, this.fields.type.dataset.stored].includes(typeWithPin),
      stored: () => [fields.map((input) => input.dataset.stored)],
      now: () => [fields.map((input) => input.value), ...this.shape === this.storedShape ? [] : [this.shape]],
      say: (state) => this.words(Object.fromEntries(Object.keys(this.fields).map((name, index) => [name, state[0][index]])), shapeOf(state)).filter(Boolean).join(", "),
      write: (state) => {
        fields.forEach((input, index) => { input.value = state[0][index]; });
        this.shape = shapeOf(state);
        this.draw();
      },
    });
  }

  get type() { return Number(this.fields.type.value); }
  get isLocked() { return this.item.dataset.lock === "true"; }
  get isChanged() { return Object.values(this.fields).some((input) => input.value !== input.dataset.stored); }
  text(name) { return this.fields[name].value; }

  set(name, text) {
    this.fields[name].value = text;
    this.draw();
  }

  // The choice that the text stands for, as people read it.
  choice(name, text = this.text(name), shape = this.shape) {
    const found = shape[name].choices.find(({ value }) => value === text);
    if (found) return choiceText(found.text);
    return text === "-1" ? t("Automatic") : text;
  }

  // What was stored stays stored: nothing of the key is posted.
  leaveAlone() {
    for (const input of Object.values(this.fields)) input.remove();
  }

  restore() {
    for (const input of Object.values(this.fields)) input.value = input.dataset.stored;
    this.shape = this.storedShape;
    this.draw();
  }

  // Takes over the type and parameters that the phone named. What was entered stays where it means the same.
  change({ type, parameters: answered }) {
    const isStoredType = String(type) === this.fields.type.dataset.stored;
    const isLike = (one, other) => JSON.stringify(one.choices) === JSON.stringify(other.choices);
    for (const name of parameters) {
      const { enabled, text, choices } = answered[name];
      const known = (candidate) => choices.some(({ value }) => value === candidate);
      const stays = this.shape[name].enabled && isLike(this.shape[name], answered[name]);
      if (!enabled || (stays && (!choices.length || known(this.text(name))))) continue;
      this.fields[name].value = !choices.length || (isStoredType && known(text)) ? text : choices[0].value;
    }
    this.fields.type.value = String(type);
    this.shape = answered;
    this.draw();
  }

  // What a key with these texts does, and its label, empty for none.
  words(texts, shape) {
    const { value, line, label } = shape;
    const type = Number(texts.type);
    const shownValue = value.enabled && !value.choices.length ? texts.value : "";
    const shownLine = line.enabled ? this.choice("line", texts.line, shape) : "";
    return [describe({ type, name: this.typeName(type), value: shownValue, line: shownLine }), label.enabled ? texts.label : ""];
  }

  draw() {
    const texts = Object.fromEntries(Object.entries(this.fields).map(([name, input]) => [name, input.value]));
    const [what, label] = this.words(texts, this.shape);
    const lines = this.button.querySelector(".lines");
    lines.replaceChildren();
    addText(lines, "what", what);
    if (label) addText(lines, "hint", label);
    if (this.isLocked) addText(lines, "hint", t("Locked on all pages"));
    if (this.isChanged) addText(lines, "hint changed", t("Not saved yet"));
    this.item.classList.toggle("idle", this.type === 0);
    noteChange(this.item.closest("form"));
  }
}
