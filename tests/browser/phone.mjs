// A phone of its own for a test file: the web server on a fresh root and a browser to look at it.
import { spawn } from "node:child_process";
import { once } from "node:events";
import { mkdirSync, mkdtempSync, readFileSync, rmSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { createInterface } from "node:readline";
import { after, afterEach } from "node:test";
import assert from "node:assert/strict";
import { chromium } from "playwright-core";

const top = new URL("../../", import.meta.url).pathname;
const program = process.env.PHONE_WEB_HOST ?? join(top, "build/release/phone-web-host");
const screenshots = process.env.PHONE_WEB_SCREENSHOTS;  // the folder for pictures of the pages; without it, none are made
const axeSource = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
const chromiumFlags = ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
  "--disable-component-update", "--disable-sync"];

const walkRecords = JSON.parse(readFileSync(join(top, "tests/pages/walk_records.json"), "utf8"));

// The pages with a form of their own: name, address, and the settings under which all of it shows.
export const pages = [...readFileSync(join(top, "rootfs/phone/www/WEB-INFO/pages.conf"), "utf8").matchAll(/^([\w-]+) =/gm)]
  .map(([, name]) => ({ name, record: walkRecords[name] ?? {} })).filter(({ record }) => !record.noForm && !record.upload)
  .map(({ name, record: { settings, files, q = "load", open } }) => ({ name, settings, files, query: `${new URLSearchParams({ p: name, q, ...open })}` }));

async function startPhone() {
  const root = mkdtempSync(join(tmpdir(), "phone-web-"));
  const host = spawn(program, ["--root", root, "--listen", "127.0.0.1:0"], { stdio: ["ignore", "pipe", "pipe"] });
  let log = "";
  host.stderr.on("data", (text) => { log = (log + text).slice(-2000); });
  const browser = chromium.launch({ executablePath: "/usr/bin/chromium", args: chromiumFlags });
  const [line] = await Promise.race([
    once(createInterface(host.stdout), "line"),
    once(host, "exit").then(([code]) => { throw new Error(`the host ended with ${code}: ${log}`); }),
  ]);
  return new Phone(root, host, await browser, /http:\S+/.exec(line)[0]);
}

class Phone {
  problems = [];  // console errors, refused content and requests to elsewhere, of all pages of a test
  expected = [];  // parts of those that are to be

  constructor(root, host, browser, origin) {
    Object.assign(this, { root, host, browser, origin });
  }

  async stop() {
    await this.browser.close();
    this.host.kill("SIGTERM");
    if (this.host.exitCode === null) await once(this.host, "exit");
    rmSync(this.root, { recursive: true, force: true });
  }

  // A window of a browser that holds nothing yet.
  async open(query, options = {}) {
    const context = await this.browser.newContext({ viewport: { width: 1200, height: 800 }, ...options });
    const page = await context.newPage();
    page.on("console", (message) => { if (message.type() === "error") this.problems.push(message.text()); });
    page.on("pageerror", (error) => this.problems.push(error.message));
    page.on("request", (request) => { if (!request.url().startsWith(this.origin)) this.problems.push(request.url()); });
    page.setDefaultTimeout(10_000);
    if (query) await this.go(page, query);
    return page;
  }

  // The same, with somebody logged in and, if `timed`, a clock that the test can move on (page.clock.fastForward).
  async openAs(user, query, { timed, ...options } = {}) {
    const page = await this.open("", options);
    const address = `${this.origin}/servlet?p=login&q=login`;
    await page.context().request.post(address, { form: { username: user, pwd: user }, maxRedirects: 0 });
    if (timed) await page.clock.install();
    if (query) await this.go(page, query);
    return page;
  }

  // A name alone opens the page's form.
  async go(page, query) {
    await page.goto(`${this.origin}/servlet?${query.includes("=") ? query : `p=${query}&q=load`}`);
    await page.waitForSelector("html:not(.starting)");
  }

  async logIn(page, user, password) {
    await enter(page, { username: user, pwd: password });
    await page.click("button[type=submit]");
    await page.waitForURL((url) => !url.search.includes("p=login"));
    await page.waitForSelector("html:not(.starting)");
  }

  // Faults in the browser that are part of the test, by parts of their texts.
  expectProblems(...parts) { this.expected.push(...parts); }

  async endTest() {
    const [problems, expected] = [this.problems.splice(0), this.expected.splice(0)];
    await Promise.all(this.browser.contexts().map((context) => context.close()));
    assert.deepEqual(problems.filter((text) => !expected.some((part) => text.includes(part))), []);
  }

  async control(method, path, body) {
    const answer = await fetch(`${this.origin}/simulator/${path}`, { method, body: body && JSON.stringify(body) });
    assert.ok(answer.ok, `${method} ${path}: ${answer.status}`);
    return answer.json();
  }

  state(patch) { return this.control("PATCH", "state", patch); }

  // Stores values; "AccountLabel@2" is the key of an account.
  configure(values) {
    const body = { global: {}, accounts: {} };
    for (const [name, value] of Object.entries(values)) {
      const [key, account] = name.split("@");
      (account ? (body.accounts[account] ??= {}) : body.global)[key] = value;
    }
    return this.control("PUT", "config", body);
  }

  async assertStored(values) {
    const stored = {};
    for (const name of Object.keys(values)) {
      stored[name] = (await this.control("GET", `config?key=${name.replace("@", "&account=")}`)).value;
    }
    assert.deepEqual(stored, values);
  }

  // Saves the form, by way of the dialog's button if one is named, and expects what is stored then.
  async assertSaves(page, values, dialogButton) {
    await save(page);
    if (dialogButton) await press(page, dialogButton);
    await page.getByText("Saved.", { exact: true }).waitFor();
    await this.assertStored(values);
  }
}

// Presses the form's own button.
export const save = (page) => page.locator(".bar .primary").click();

export const press = (page, name) => page.getByRole("button", { name }).click();

// Changes fields as a reader does, by id or, for radios, by name; a box takes true or false.
export async function enter(page, entries) {
  for (const [name, value] of Object.entries(entries)) {
    const field = page.locator(`#${name}, [name="${name}"][type=radio][value=${JSON.stringify(value)}]`);
    const type = await field.evaluate((element) => element.type);
    if (type === "select-one") await field.selectOption(value);
    else if (["checkbox", "radio"].includes(type)) await field.setChecked(value !== false);
    else await field.fill(value);
  }
}

// Puts texts into fields and expects the errors that show: rows of id, error, texts that bring it, texts that are right.
export async function assertErrors(page, rows) {
  const expected = rows.flatMap(([id, error, wrong, ...right]) =>
    [...[wrong].flat().map((text) => [id, text, error]), ...right.map((text) => [id, text, ""])]);
  const shown = await page.evaluate((all) => all.map(([id, text]) => {
    const field = document.getElementById(id);
    field.value = text;
    field.dispatchEvent(new Event("change", { bubbles: true }));
    return [id, text, document.getElementById(`${id}-error`).textContent];
  }), expected);
  assert.deepEqual(shown, expected);
}

// The names of the fields that show.
export const visibleFields = (page) => page.locator("main .field:visible [name]:visible")
  .evaluateAll((all) => [...new Set(all.map(({ name }) => name))]);

export const values = (page, ...ids) => Promise.all(ids.map((id) => page.inputValue(`#${id}`)));

// Answers a page's questions, with yes as often as told after the first ones; what they were.
export function answerDialogs(page, ...answers) {
  const questions = [];
  page.on("dialog", (dialog) => {
    questions.push(dialog.message() || dialog.type());
    return answers.shift() ? dialog.accept() : dialog.dismiss();
  });
  return questions;
}

// Faults in accessibility, as "rule: elements".
export async function axe(page, rules) {
  await page.evaluate(axeSource);
  const options = { resultTypes: ["violations"], ...(rules && { runOnly: { type: "rule", values: rules } }) };
  const { violations } = await page.evaluate((chosen) => globalThis.axe.run(document, chosen), options);
  return violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ target }) => target.join(" ")).join(", ")}`);
}

export async function screenshot(page, name) {
  if (!screenshots) return;
  mkdirSync(screenshots, { recursive: true });
  const size = page.viewportSize();
  const height = await page.evaluate(() => document.documentElement.scrollHeight);
  await page.setViewportSize({ width: size.width, height: Math.max(size.height, height) });
  await page.screenshot({ path: join(screenshots, `${name}.png`) });
  await page.setViewportSize(size);
}

export const overflow = (page) => page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);

export const phone = await startPhone();
afterEach(() => phone.endTest());
after(() => phone.stop());
