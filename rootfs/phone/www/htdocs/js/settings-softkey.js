// The soft keys of a call state: words for states and keys, the two lists, and the keys as the screen will show them.
import { mayLeave } from "./form.js";
import { t } from "./i18n.js";
import { orderLists } from "./ordered-lists.js";

const places = 4;  // for keys on the screen
const gap = "Empty";

const stateNames = new Map(Object.entries({
  CallFailed: t("Call failed"), CallIn: t("Incoming call"), Conference: t("Conference"), Connecting: t("Connecting"),
  Dialing: t("Dialling"), Hold: t("On hold"), OnTalk: t("Talking"), RingBack: t("Ringing at the other side"),
  Transfer: t("Transferring"),
}));
const keyNames = new Map(Object.entries({
  Answer: t("Answer"), Cancel: t("Cancel"), Conference: t("Conference"), Delete: t("Delete"), Directory: t("Directory"),
  Emergcy: t("Emergency"), Empty: t("Empty place"), EndCall: t("End call"), Forward: t("Forward"), Gpark: t("Group park"),
  History: t("Call history"), Hold: t("Hold"), IME: t("Input method"), NewCall: t("New call"), Park: t("Park"),
  PriHold: t("Private hold"), Reject: t("Reject"), Resume: t("Resume"), Retrieve: t("Retrieve"), Send: t("Send"),
  Silence: t("Silence"), Split: t("Split"), Swap: t("Swap"), Trace: t("Trace"), Transfer: t("Transfer"),
}));

const settings = document.getElementById("layout");
const select = document.getElementById("callStates");
const keys = document.getElementById("keys");
const screen = document.getElementById("screen");
const lists = [...keys.querySelectorAll(".items")];
const shown = settings.elements.callStates.value;

for (const option of select.options) option.textContent = stateNames.get(option.textContent) ?? option.textContent;
for (const item of keys.querySelectorAll("li")) {
  const span = item.querySelector("span");
  span.textContent = keyNames.get(item.dataset.entry) ?? span.textContent;
}

// What stands on the screen, place by place: with more keys than places, the last place leads to further ones.
function screensOf(entries) {
  if (entries.length <= places) return [entries];
  const screens = [];
  for (let first = 0; first < entries.length; first += places - 1) {
    const some = entries.slice(first, first + places - 1);
    while (some.length < places - 1) some.push({ gap: true });
    screens.push([...some, { gap: false, name: t("More") }]);
  }
  return screens;
}

function draw() {
  const entries = [...lists[0].children].map((item) =>
    ({ gap: item.dataset.entry === gap, name: item.querySelector("span").textContent }));
  const screens = screensOf(entries);
  screen.replaceChildren(...screens.map((keysOfScreen, index) => {
    const row = document.createElement("ol");
    row.className = "softkeys";
    row.dir = "ltr";  // as they stand on the phone
    row.setAttribute("aria-label", t("Screen %1 of %2", index + 1, screens.length));
    for (let place = 0; place < places; ++place) {
      const key = document.createElement("li");
      const name = document.createElement("span");
      const isGap = keysOfScreen[place]?.gap ?? true;
      name.textContent = isGap ? keyNames.get(gap) : keysOfScreen[place].name;
      name.className = isGap ? "only-read" : "";
      key.append(name);
      row.append(key);
    }
    return row;
  }));
}

orderLists(lists, [t("Remove"), t("Use")], { spare: gap, changed: draw });

if (!shown) {
  keys.hidden = true;
  select.selectedIndex = -1;
  document.getElementById("no-state").textContent =
    select.options.length ? t("Choose a call state.") : t("The phone has no layout for this call state.");
}

select.addEventListener("change", () => {
  if (mayLeave(settings)) select.form.submit();
  else select.value = shown;
});
document.querySelector("button[form=state]").hidden = true;

document.getElementById("restore").addEventListener("submit", (event) => {
  if (confirm(t("Put the keys of this call state back as they were delivered?"))) {
    settings.reset();  // what was not saved is given up with it
    sessionStorage.setItem("saved", document.body.dataset.page);
  } else {
    event.preventDefault();
  }
});
