// Notes from one page of this tab to the next. A browser that keeps none, or has no room, does without.

export function read(key) {
  try {
    return JSON.parse(sessionStorage.getItem(key));
  } catch {
    return null;
  }
}

export function drop(key) {
  try {
    sessionStorage.removeItem(key);
  } catch { /* there is none */ }
}

export function write(key, value) {
  try {
    sessionStorage.setItem(key, JSON.stringify(value));
  } catch {
    drop(key);
  }
}

export function take(key) {
  const value = read(key);
  drop(key);
  return value;
}
