// A phone of its own for a test file: the web server on a fresh root and a browser to look at it.
import { spawn } from "node:child_process";
import { once } from "node:events";
import { mkdirSync, mkdtempSync, readFileSync, rmSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { createInterface } from "node:readline";
import assert from "node:assert/strict";
import { chromium } from "playwright-core";

const top = new URL("../../", import.meta.url).pathname;
const program = process.env.PHONE_WEB_HOST ?? join(top, "build/phone-web-host");
const screenshots = process.env.PHONE_WEB_SCREENSHOTS ?? join(top, "build/screenshots");
const axeSource = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
const chromiumFlags = ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
  "--disable-component-update", "--disable-sync"];

export async function startPhone() {
  const root = mkdtempSync(join(tmpdir(), "phone-web-"));
  const host = spawn(program, ["--root", root, "--listen", "127.0.0.1:0"], { stdio: ["ignore", "pipe", "pipe"] });
  let log = "";
  host.stderr.on("data", (text) => { log = (log + text).slice(-2000); });
  const [line] = await Promise.race([
    once(createInterface(host.stdout), "line"),
    once(host, "exit").then(([code]) => { throw new Error(`the host ended with ${code}: ${log}`); }),
  ]);
  const browser = await chromium.launch({ executablePath: "/usr/bin/chromium", args: chromiumFlags });
  return new Phone(root, host, browser, /http:\S+/.exec(line)[0]);
}

class Phone {
  problems = [];  // console errors, refused content and requests to elsewhere, of all pages

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
  async open(options = {}) {
    const context = await this.browser.newContext({ viewport: { width: 1200, height: 800 }, ...options });
    const page = await context.newPage();
    page.on("console", (message) => { if (message.type() === "error") this.problems.push(message.text()); });
    page.on("pageerror", (error) => this.problems.push(error.message));
    page.on("request", (request) => { if (!request.url().startsWith(this.origin)) this.problems.push(request.url()); });
    page.setDefaultTimeout(10_000);
    return page;
  }

  // The same, with somebody logged in and the page opened.
  async openAs(user, query, options) {
    const page = await this.open(options);
    await this.go(page, query);
    await this.logIn(page, user, user);
    return page;
  }

  go(page, query) { return page.goto(`${this.origin}/servlet?${query}`); }

  async logIn(page, user, password) {
    await page.fill("#username", user);
    await page.fill("#pwd", password);
    await page.click("button[type=submit]");
    await page.waitForURL((url) => !url.search.includes("p=login"));
    await page.waitForSelector("html:not(.starting)");
  }

  // Nothing but what is named (part of its text) went wrong in the browser since the last look.
  assertNoProblems(...expected) {
    assert.deepEqual(this.problems.splice(0).filter((text) => !expected.some((part) => text.includes(part))), []);
  }

  async control(method, path, body) {
    const answer = await fetch(`${this.origin}/simulator/${path}`, { method, body: body && JSON.stringify(body) });
    assert.ok(answer.ok, `${method} ${path}: ${answer.status}`);
    return answer.json();
  }

  state(patch) { return this.control("PATCH", "state", patch); }
  configure(global, accounts = {}) { return this.control("PUT", "config", { global, accounts }); }

  async config(key, account) {
    return (await this.control("GET", `config?key=${key}${account === undefined ? "" : `&account=${account}`}`)).value;
  }

  // The messages that the pages sent while `action` ran, as "thread 0xMESSAGE wParam lParam".
  async messagesDuring(action) {
    await this.control("DELETE", "journal");
    await action();
    const { entries } = await this.control("GET", "journal?since=0");
    return entries.filter(({ kind }) => kind === "post" || kind === "broadcast")
      .map(({ thread, message, wParam, lParam }) => `${thread} 0x${message.toString(16)} ${wParam} ${lParam}`.trim());
  }
}

// Faults in accessibility, as "rule: elements".
export async function axe(page) {
  await page.evaluate(axeSource);
  const { violations } = await page.evaluate(() => globalThis.axe.run(document, { resultTypes: ["violations"] }));
  return violations.map(({ id, nodes }) => `${id}: ${nodes.map(({ target }) => target.join(" ")).join(", ")}`);
}

export async function screenshot(page, name) {
  mkdirSync(screenshots, { recursive: true });
  const size = page.viewportSize();
  const height = await page.evaluate(() => document.documentElement.scrollHeight);
  await page.setViewportSize({ width: size.width, height: Math.max(size.height, height) });
  await page.screenshot({ path: join(screenshots, `${name}.png`) });
  await page.setViewportSize(size);
}

export const overflow = (page) => page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
