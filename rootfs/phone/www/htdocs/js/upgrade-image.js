// What a firmware file says of itself, before the phone gets it.
import { t } from "./i18n.js";

const maxMegabytes = 64;  // that the phone takes, with what a browser puts around them
const formSize = 4096;
const headLimit = 512;
const head = /^PHONE-FIRMWARE 1\nversion: ([\w.-]{1,31})\nsize: (\d{1,9})\nsha256: [\da-f]{64}\n\n/i;

export const megabytes = (bytes) => (bytes / 1024 / 1024).toFixed(1);

// {version} of a file that the phone may take, or {fault}, a text.
export async function examine(file) {
  if (!file) return { fault: t("Choose a file first.") };
  if (file.size > maxMegabytes * 1024 * 1024 - formSize) {
    return { fault: t("This file is too large: the phone takes up to %1 MB.", maxMegabytes) };
  }
  const found = head.exec(new TextDecoder("latin1").decode(await file.slice(0, headLimit).arrayBuffer()));
  if (!found) return { fault: t("This file holds no firmware for the phone.") };
  const [text, version, size] = found;
  if (file.size !== text.length + Number(size)) return { fault: t("This file is damaged: it is not as long as its firmware. Get it again.") };
  return { version };
}
