// Plays rings: a select with data-rings gets a button for those rings that browsers can load.
import { t } from "./i18n.js";

const folder = "/media/sound/";
const player = new Audio();
let playing = null;  // the button whose ring is heard

// A ring is named by its source and file ("Resource:Ring1.wav") or by the file alone; users' own rings stay on the phone.
const fileOf = (value) => value.startsWith("Config:") ? "" : value.slice(value.indexOf(":") + 1);

function stop() {
  player.pause();
  if (playing) playing.textContent = t("Play");
  playing = null;
}

function play(button, file) {
  stop();
  player.src = folder + encodeURIComponent(file);
  player.play().catch(stop);
  playing = button;
  button.textContent = t("Stop");
}

function addButton(select, files) {
  const button = document.createElement("button");
  button.type = "button";
  button.textContent = t("Play");
  button.addEventListener("click", () => playing === button ? stop() : play(button, fileOf(select.value)));
  const row = document.createElement("div");
  row.className = "choices";
  select.replaceWith(row);
  row.append(select, button);
  const show = () => {
    if (playing === button) stop();
    button.hidden = !files.has(fileOf(select.value));
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
