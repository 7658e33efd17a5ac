// The overview of a long page: a link to each of its groups that the user may see.
import "./app.js";  // which hides and translates first

const list = document.querySelector(".overview");
const groups = [...document.querySelectorAll("main .card[id]")].filter((card) => card.checkVisibility() && card.querySelector("h2"));

list.append(...groups.map((card) => {
  const item = document.createElement("li");
  const link = item.appendChild(document.createElement("a"));
  link.href = `#${card.id}`;
  link.textContent = card.querySelector("h2").textContent;
  return item;
}));
list.hidden = groups.length < 2;
