// Pictures that people bring to the phone: which it takes, under which names, and how it will show them.
import { t } from "./i18n.js";

const largest = 5000000;  // bytes of a file that the phone scales
const kinds = /\.(jpe?g|png|bmp)$/i;

// Why the phone would not take the file; empty when it would.
export function pictureFault(file) {
  if (!kinds.test(file.name)) return t("Choose a picture whose name ends in .jpg, .png or .bmp.");
  return file.size > largest ? t("The picture is too large. The phone takes up to 5 MB.") : "";
}

// The phone lists no .jpeg, and a colon would part the name from its source.
export const pictureName = (file) => file.name.replace(/\.jpeg$/i, ".jpg").replace(/[\\/:]/g, "-");

// A function that fills the canvas with the middle of a picture, as the phone does: it takes what gives the picture's
// bytes and tells whether it was drawn. What is drawn last counts: slow pictures come too late.
export function previewOn(canvas) {
  let drawing = null;
  return async (load) => {
    const turn = Symbol("drawing");
    drawing = turn;
    const pen = canvas.getContext("2d");
    const bitmap = await load().then(createImageBitmap).catch(() => null);
    if (drawing !== turn) return false;
    pen.clearRect(0, 0, canvas.width, canvas.height);
    if (!bitmap) return false;
    const scale = Math.max(canvas.width / bitmap.width, canvas.height / bitmap.height);
    const [width, height] = [bitmap.width * scale, bitmap.height * scale];
    pen.drawImage(bitmap, (canvas.width - width) / 2, (canvas.height - height) / 2, width, height);
    return true;
  };
}
