// Runs in the head, after the language file and before the first paint: names the language and keeps the page unseen
// until app.js has translated it and hidden what the user may not see.
{
  const { code = "en", direction = "ltr" } = window.phoneLanguage ?? {};
  Object.assign(document.documentElement, { lang: code, dir: direction, className: "script starting" });
}
