// Runs in the head, after the language file and before the first paint: names the language, has the texts of the page's
// section fetched, and keeps the page unseen until app.js has translated it and hidden what the user may not see.
{
  const { code = "en", direction = "ltr", sections = {} } = window.phoneLanguage ?? {};
  const page = new URLSearchParams(location.search).get("p") ?? "";
  const section = Object.keys(sections).find((name) => page.startsWith(name));
  if (section) window.phoneLanguage.more = import(sections[section]).then((file) => file.default, () => ({}));
  Object.assign(document.documentElement, { lang: code, dir: direction, className: "script starting" });
}
