// Asks the phone again and again, as long as somebody looks: a hidden tab asks nothing, and after ten minutes without a
// key or a click the questions stop, so that the phone can log an unattended browser out.
const idleLimit = 10 * 60 * 1000;
const answerLimit = 15 * 1000;  // the phone waits for its applications, up to 3 s each

export class SessionEnded extends Error {}

// The phone's answer as text; throws SessionEnded when it asks for a login, another error when it does not answer.
export async function ask(address, accept = "text/html") {
  const response = await fetch(address, {
    headers: { Accept: accept }, cache: "no-store", signal: AbortSignal.timeout(answerLimit),
  });
  if (response.redirected) throw new SessionEnded();
  if (!response.ok) throw new Error(`status ${response.status}`);
  return response.text();
}

// Calls `round` (async) every `seconds`, from its end to its next start. {pause(), resume()}.
export function poll(seconds, round) {
  let timer = 0;
  let running = false;
  let paused = false;
  let lastUse = Date.now();
  const next = async () => {
    if (running || paused || document.hidden || Date.now() - lastUse > idleLimit) return;
    running = true;
    try {
      await round();
    } finally {
      running = false;
      clearTimeout(timer);
      timer = setTimeout(next, seconds * 1000);
    }
  };
  const used = () => {
    const slept = Date.now() - lastUse > idleLimit;
    lastUse = Date.now();
    if (slept) next();
  };
  for (const kind of ["pointerdown", "pointermove", "keydown"]) window.addEventListener(kind, used, { passive: true });
  document.addEventListener("visibilitychange", () => { used(); next(); });
  timer = setTimeout(next, seconds * 1000);
  return {
    pause() { paused = true; clearTimeout(timer); },
    resume() { paused = false; next(); },
  };
}
