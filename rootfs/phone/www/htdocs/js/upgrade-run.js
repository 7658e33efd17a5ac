// An upgrade from the question whether it may begin to the phone's return.
import { ask, SessionEnded } from "./poll.js";

const page = "/servlet?p=settings-upgrade";
const prepareLimit = 10 * 60 * 1000;  // the phone leaves its servers first, as long as it is set to
const askSeconds = 2;
const settleSeconds = 30;  // a phone that still answers so long after it was to restart does not do it
const rememberedFor = 30 * 60 * 1000;

// What is on its way: {before, version, phase, begun}. It outlasts a reload and the login after the phone's restart.
export const remember = (upgrade) => sessionStorage.setItem("upgrade", JSON.stringify(upgrade));
export const forget = () => sessionStorage.removeItem("upgrade");
export function remembered() {
  const upgrade = JSON.parse(sessionStorage.getItem("upgrade"));
  return upgrade && Date.now() - upgrade.begun < rememberedFor ? upgrade : null;
}

const wait = (seconds) => new Promise((done) => setTimeout(done, seconds * 1000));

// The value as text: it comes escaped for HTML.
const plain = (value) => new DOMParser().parseFromString(value, "text/html").documentElement.textContent;

export const askFirmware = async () => plain(JSON.parse(await ask(`${page}&q=load`, "application/json")).variables.firmware);

export const isTalking = async () => (await ask(`${page}&q=ask`)).trim() === "true";

// Ends what runs on the phone; false when the phone is not ready for its image then.
export async function prepare() {
  try {
    const response = await fetch(`${page}&q=beforeupgrade`, { method: "POST", signal: AbortSignal.timeout(prepareLimit) });
    return response.ok && (await ask(`${page}&q=askUpgrade`)).trim() === "true";
  } catch {
    return false;
  }
}

// Sends the image; `progress` is told the part that is sent, 0 to 1. False when the phone took none of it; a connection
// that was lost tells nothing about that.
export function send(file, progress) {
  return new Promise((done) => {
    const body = new FormData();
    body.append("upgradeFile", file, "firmware.img");  // the phone keeps little of a part's head
    const request = new XMLHttpRequest();
    request.upload.addEventListener("progress", ({ loaded, total }) => progress(loaded / total));
    request.addEventListener("loadend", () => {
      done([0, 200].includes(request.status) && !request.responseURL.includes("p=login"));
    });
    request.open("POST", `${page}&q=upgrade`);
    request.send(body);
  });
}

// Waits until the phone has come back or has another firmware, and gives its firmware; `tell` hears the seconds. A phone
// that wants a login has restarted: the login leads back to this page.
export async function waitForFirmware(upgrade, tell) {
  const begin = Date.now();
  for (let wasAway = false; ; await wait(askSeconds)) {
    const seconds = Math.round((Date.now() - begin) / 1000);
    tell(seconds);
    try {
      const firmware = await askFirmware();
      if (firmware !== upgrade.before || wasAway || seconds >= settleSeconds) return firmware;
    } catch (error) {
      if (error instanceof SessionEnded) {
        remember({ ...upgrade, phase: "back" });
        location.replace(`${page}&q=load`);
        return new Promise(() => {});
      }
      wasAway = true;
    }
  }
}

// Restarts the phone in safe mode and goes to the login once it is back.
export async function restartInSafeMode(tell) {
  await fetch(`${page}&q=rebootbeforeupgrade`, { method: "POST" });
  const begin = Date.now();
  for (let wasAway = false, isBack = false; !isBack;) {
    await wait(askSeconds);
    const seconds = Math.round((Date.now() - begin) / 1000);
    tell(seconds);
    try {
      await ask("/servlet?p=login&q=loginForm");
      isBack = wasAway || seconds >= settleSeconds;
    } catch {
      wasAway = true;
    }
  }
  location.replace("/servlet?p=login&q=loginForm&jumpto=settings-upgrade");
}
