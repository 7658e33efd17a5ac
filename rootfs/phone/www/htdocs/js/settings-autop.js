// The days of the weekly update: boxes that make up the field's digits, 0 for Sunday to 6.
import { compose } from "./changed.js";

const field = document.getElementById("days");
const mask = field.querySelector("input[type=hidden]");
const boxes = [...field.querySelectorAll("input[type=checkbox]")];

const show = () => { for (const box of boxes) box.checked = mask.value.includes(box.value); };
const digits = () => boxes.filter((box) => box.checked).map((box) => box.value).sort().join("");

show();
mask.value = digits();
mask.dataset.stored = mask.value;
compose(mask.form, {
  inputs: [mask],
  say: ([value]) => boxes.filter((box) => value.includes(box.value)).map((box) => box.labels[0].textContent.trim()).join(", "),
  write([value]) {
    mask.value = value;
    show();
  },
});
field.addEventListener("change", () => { mask.value = digits(); });
mask.form.addEventListener("reset", () => setTimeout(show));  // the form has given the field its first value back
