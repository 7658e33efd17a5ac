// Plays rings: a select with data-rings gets a button for the rings that are files, the phone's and its users' own.
import { t } from "./i18n.js";

const folder = "/media/sound/";
const userFolder = "/media/user/sound/";
const player = new Audio();
let playing = null;  // the button whose ring is heard

const builtIn = "default-ring.wav";  // a ring that is no file

// A ring is named by its source and file ("Resource:Ring1.wav") or by the file alone. Empty for what is no file.
function addressOf(value, files) {
  const file = value.slice(value.indexOf(":") + 1);
  if (files.has(file) && !value.startsWith("Config:")) return folder + encodeURIComponent(file);
  const isUsers = value.startsWith("Config:") || (value === file && file !== builtIn && /\.wav$/i.test(file));
  return isUsers ? userFolder + encodeURIComponent(file) : "";
}

function stop() {
  player.pause();
  if (playing) playing.textContent = t("Play");
  playing = null;
}

function play(button, address) {
  stop();
  player.src = address;
  player.play().catch(stop);
  playing = button;
  button.textContent = t("Stop");
}

function addButton(select, files) {
  const button = document.createElement("button");
  button.type = "button";
  button.textContent = t("Play");
  button.addEventListener("click", () => playing === button ? stop() : play(button, addressOf(select.value, files)));
  const row = document.createElement("div");
  row.className = "choices";
  select.replaceWith(row);
  row.append(select, button);
  const show = () => {
    if (playing === button) stop();
    button.hidden = !addressOf(select.value, files);
    button.setAttribute("aria-label", t("Play: %1", select.selectedOptions[0]?.textContent ?? ""));
  };
  select.addEventListener("change", show);
  select.form.addEventListener("reset", () => setTimeout(show));
  show();
}

player.addEventListener("ended", stop);
const answer = await fetch(`${folder}list.json`);
const files = new Set(answer.ok ? await answer.json() : []);
for (const select of document.querySelectorAll("select[data-rings]")) addButton(select, files);
