// The line above the page's content that tells what happened; a screen reader reads it out.
// kind: "success", "warning" or "error". An empty text takes the line away.
export function message(text, kind = "success") {
  const line = document.getElementById("message");
  if (line.textContent === text) return;
  line.textContent = text;
  line.dataset.kind = kind;
}
