// Shows the value of each slider beside it. A stored value that is not on its scale is shown and stays, until the
// slider is moved: without a name the slider is not posted.
function prepare(slider) {
  const { name, min, max, defaultValue } = slider;
  const value = slider.parentElement.querySelector("output");
  const isOnScale = /^\d+$/.test(defaultValue) && Number(defaultValue) >= Number(min) && Number(defaultValue) <= Number(max);
  const show = (isKept) => {
    slider.name = isKept ? "" : name;
    value.textContent = isKept ? defaultValue || "–" : slider.value;
    slider.setAttribute("aria-valuetext", value.textContent);
  };
  slider.addEventListener("input", () => show(false));
  slider.addEventListener("putback", () => show(!isOnScale));
  slider.form.addEventListener("reset", () => setTimeout(() => show(!isOnScale)));
  show(!isOnScale);
}

for (const slider of document.querySelectorAll("input[type=range]")) prepare(slider);
