// What the web server lets others than the administrator see, store and do, from outside: nothing that a page would hide.
import assert from "node:assert/strict";
import test from "node:test";
import { pages, phone } from "./phone.mjs";

const users = ["var", "user"];
const mayUse = (user, code) => code === "2" || (code === "1" && user === "var");
const levelsIn = (text) => new Map([...text.matchAll(/([\w-]+)=([^&$]*)/g)].map(([, key, code]) => [key, code]));
const secretOf = (name) => `hidden-${name}`;

async function ask(page, address, options = {}) {
  const response = await page.context().request.fetch(`${phone.origin}/servlet?${address}`, { maxRedirects: 0, ...options });
  return { status: response.status(), text: await response.text() };
}

// The page as the administrator's browser has it: its tab's key, its keys, its fields with the keys around each.
async function declared(page, { name, query }) {
  await phone.go(page, query);
  return page.evaluate((own) => {
    const keysOf = (element) => {
      const keys = [];
      for (let at = element.closest("[data-level]"); at; at = at.parentElement.closest("[data-level]")) keys.push(at.dataset.level);
      return keys;
    };
    const tabs = [...document.querySelectorAll("nav [data-tab], main [data-tab]")].filter((tab) => tab.dataset.page.split(" ").includes(own) &&
      (!tab.dataset.form || document.querySelector(`main [name="${tab.dataset.form.split("=")[0]}"]`)?.value === tab.dataset.form.split("=")[1]));
    const fields = [...document.querySelectorAll("main form[action$='q=write'] [name]")].map((field) => [field.name, keysOf(field)]);
    return { showLevel: document.body.dataset.showLevel, tabs: tabs.map((tab) => tab.dataset.tab), fields };
  }, name);
}

// The names of fields that a user sees nowhere on the page.
function hiddenFields(user, { showLevel, fields }) {
  const levels = levelsIn(showLevel);
  const shows = (keys) => keys.every((key) => mayUse(user, levels.get(key)));
  return [...new Set(fields.map(([name]) => name))].filter((name) => !fields.some(([other, keys]) => other === name && shows(keys)));
}

const stored = async (name, account) =>
  (await phone.control("GET", `config?key=${name}${account === undefined ? "" : `&account=${account}`}`)).value;

async function checkPage(admin, visitors, form) {
  const { name, query } = form;
  const page = await declared(admin, form);
  const isAccount = name.startsWith("account-");
  const fields = [...new Set(page.fields.map(([field]) => field))].filter((field) => /^\w+$/.test(field));
  const keys = fields.map((field) => isAccount ? `${field}@0` : field);
  await phone.configure(Object.fromEntries(keys.map((key) => [key, secretOf(key.split("@")[0])])));
  const levels = levelsIn(page.showLevel);
  for (const [user, visitor] of Object.entries(visitors)) {
    const label = `${user}: ${name}`;
    const isOpen = page.tabs.every((key) => mayUse(user, levels.get(key)));
    const hidden = isOpen ? hiddenFields(user, page).filter((field) => fields.includes(field)) : fields;
    const answers = [await ask(visitor, query), await ask(visitor, query, { headers: { Accept: "application/json" } })];
    assert.deepEqual(answers.map(({ status }) => status), isOpen ? [200, 200] : [403, 403], label);
    for (const { text } of answers) assert.deepEqual(hidden.filter((field) => new RegExp(`hidden-${field}\\b`).test(text)), [], label);

    const form1 = { p: name, q: "write", ...(isAccount && { var_accountID: "0" }), ...Object.fromEntries(fields.map((field) => [field, "posted"])) };
    for (const options of [{ method: "POST", form: form1 }, { method: "POST", multipart: form1 }, { method: "GET" }]) {
      const address = options.method === "GET" ? `${new URLSearchParams(form1)}` : `p=${name}`;
      const { status } = await ask(visitor, address, options);
      if (!isOpen) assert.equal(status, 403, label);
      const changed = [];
      for (const field of hidden) if (await stored(field, isAccount ? 0 : undefined) !== secretOf(field)) changed.push(field);
      assert.deepEqual(changed, [], `${label}, ${options.method}`);
    }
    await phone.configure(Object.fromEntries(keys.map((key) => [key, secretOf(key.split("@")[0])])));
  }
  return page;
}

const forms = pages.filter(({ name }) => !["login", "security", "hidden"].includes(name));

test("nothing hidden is shown or stored, with the delivered levels", async () => {
  phone.expectProblems("403");
  const admin = await phone.openAs("admin");
  const visitors = Object.fromEntries(await Promise.all(users.map(async (user) => [user, await phone.openAs(user)])));
  let guarded = 0;
  for (const form of forms) guarded += (await checkPage(admin, visitors, form)).fields.filter(([, keys]) => keys.length).length;
  assert.ok(forms.length > 40 && guarded > 200, `${forms.length} pages, ${guarded} fields`);
});

test("nor with any level of a tab and of a field", async () => {
  phone.expectProblems("403");
  const admin = await phone.openAs("admin");
  const visitors = Object.fromEntries(await Promise.all(users.map(async (user) => [user, await phone.openAs(user)])));
  for (const [name, ...keys] of [["features-acd", "features-acd", "FeaturesACDAutoAvailableTimer"], ["settings-voice", "settings-voice", "PhoneJitterBuffer"]]) {
    for (const code of ["", "0", "1", "2", "9", "2 "]) {
      for (const key of keys) {
        await phone.configure({ ...Object.fromEntries(keys.map((other) => [other, "2"])), [key]: code });
        await checkPage(admin, visitors, forms.find((form) => form.name === name));
      }
    }
    await phone.configure(Object.fromEntries(keys.map((key) => [key, "3"])));
    assert.equal((await ask(admin, `p=${name}&q=load`)).status, 403);
    await phone.configure(Object.fromEntries(keys.map((key) => [key, "2"])));
  }
});

test("what a hidden button does is not done", async () => {
  const journal = async () => (await phone.control("GET", "journal")).entries.length;
  for (const user of users) {
    const visitor = await phone.openAs(user);
    for (const [page, ...actions] of [
      ["settings-upgrade", "reset", "reboot", "upgrade", "beforeupgrade", "rebootbeforeupgrade", "startcapture", "exportcapture"],
      ["settings-config", "export", "import", "importFactory", "delFactory", "exportsyslog", "write"],
      ["trusted-cert", "upload", "delete", "write"], ["server-cert", "upload", "delete", "write"], ["network-adv", "upload", "uploadCaFile", "write"],
    ]) {
      for (const action of actions) {
        const before = await journal();
        const answers = [await ask(visitor, `p=${page}&q=${action}`), await ask(visitor, `p=${page}`, { method: "POST", form: { q: action, reboot: "true" } })];
        assert.deepEqual([answers.map(({ status }) => status), await journal() - before], [[403, 403], 0], `${user}: ${page} ${action}`);
      }
    }
  }
});
