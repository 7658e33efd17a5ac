// The search over all settings: what a page has of it before its reader wants it. The rest comes with the first focus.
import "./app.js";  // which translates and hides first

const input = document.getElementById("settings-search");
const fields = "input, select, textarea, [contenteditable], dialog[open] *";

input.addEventListener("focus", async () => {
  input.select();
  const { openSearch } = await import("./search-list.js");
  openSearch(input);
});
document.querySelector(".find").addEventListener("click", () => input.focus());

document.addEventListener("keydown", (event) => {
  if (event.key !== "/" || event.ctrlKey || event.altKey || event.metaKey || event.target.matches(fields)) return;
  if (document.querySelector("dialog:modal")) return;
  event.preventDefault();
  input.focus();
});

// The page was opened for one of its settings.
async function arrive() {
  const [{ type } = {}] = performance.getEntriesByType("navigation");
  if (!location.hash || type !== "navigate") return;
  const { showSetting, anchorOf } = await import("./search-arrival.js");
  showSetting(anchorOf(location.hash));
}
if (document.readyState === "complete") arrive();
else window.addEventListener("load", arrive);
