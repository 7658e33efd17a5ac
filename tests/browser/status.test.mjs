// The status page keeps itself up to date; the service settings, which are in no menu.
import assert from "node:assert/strict";
import test from "node:test";
import { axe, enter, phone, press } from "./phone.mjs";

const refreshMs = 4000;
const open = () => phone.openAs("admin", "status", { timed: true });

test("what changes on the phone changes on the page without a reload, and new parts of the page appear", async () => {
  await phone.configure({ NetworkIPAddressMode: "2", "AccountEnable@0": "1", "AccountUserName@0": "a&lt;b" });
  const page = await open();
  const shown = async (name, text) => {
    await page.clock.fastForward(refreshMs);
    await page.locator(`[data-var="${name}"]`).filter({ hasText: text }).first().waitFor();
  };
  await page.evaluate(() => { globalThis.sameDocument = true; });
  await phone.state({ registration: [3, 2], network: { cableConnected: false, localIPv4: "192.0.2.7", localIPv6: "2001:db8::7" } });
  await shown("wanIPAddress", "192.0.2.7");
  await shown("NetworkIPv6WanIP", "2001:db8::7");
  const badge = page.locator('[data-var="status"]').first();
  assert.deepEqual([await badge.textContent(), await badge.getAttribute("data-state")], ["Registration failed", "Register Failed"]);
  assert.equal(await page.textContent('[data-var="linkStatus"]'), "Not connected");
  await phone.configure({ "AccountUserName@0": "<i>7" });
  await shown("number", "<i>7");
  assert.equal(await page.evaluate(() => globalThis.sameDocument), true);
  await phone.state({ expansionModules: [{ type: 1, hardware: "1.0", firmware: "2.3" }, { type: 1, hardware: "1.1", firmware: "2.4" }] });
  await shown("extName", "XMOD2");
  assert.equal(await page.locator('[data-loop="extLoop"] tr').count(), 2);
  await phone.configure({ NetworkIPAddressMode: "1" });
  await page.clock.fastForward(refreshMs);
  await page.locator('[data-var="wanIPAddress"]').waitFor({ state: "detached" });
});

test("the reader stops and resumes it; it says when the phone is away, and asks for a login when the session has ended", async () => {
  phone.expectProblems("ERR_FAILED", "net::");
  const page = await open();
  const requests = [];
  page.on("request", (request) => requests.push(request.url()));
  await press(page, "Pause");
  await page.getByText("Paused").waitFor();
  requests.length = 0;
  await page.clock.fastForward(10 * refreshMs);
  await page.evaluate(() => fetch("/img/icon.svg"));
  assert.deepEqual(requests, [`${phone.origin}/img/icon.svg`]);
  await Promise.all([page.waitForResponse(/p=status/), press(page, "Resume")]);
  await page.getByText("Live", { exact: true }).waitFor();

  await page.route("**/servlet?*", (route) => route.abort());
  await page.clock.fastForward(refreshMs);
  await page.getByText("The phone does not answer.").waitFor();
  await page.unroute("**/servlet?*");
  await page.clock.fastForward(refreshMs);
  await page.locator("#message", { hasText: /^$/ }).waitFor({ state: "attached" });
  await page.context().clearCookies();
  await page.clock.fastForward(refreshMs);
  await page.waitForURL(/p=login&q=loginForm&jumpto=status/);
});

test("the hidden page saves, restarts and pushes a document to the screen", async () => {
  phone.expectProblems("inline style");  // of the browser's own report on a broken document, which nobody sees
  const page = await phone.openAs("admin", "hidden");
  await enter(page, { DndForbidden: true });
  await phone.assertSaves(page, { DndForbidden: "1" }, "Save only");
  const push = async (text, answer) => {
    await enter(page, { editPushXML: text });
    await press(page, "Show on the phone");
    await page.locator("#push-result, #editPushXML-error").getByText(answer).waitFor();
  };
  await push("<a><b></a>", "This is not a complete XML document.");
  assert.deepEqual(await axe(page), []);
  await push("<text>Hello & bye</text>", "This is not a complete XML document.");
  await push("<text>Hello</text>", "Refused. Your computer is not one of this phone's push servers.");
  await phone.configure({ PushXMLServerIP: "10.9.8.7, 127.0.0.1" });
  await push("<text>Hello</text>", "The phone now shows the page.");
  await phone.state({ talking: true });
  await push("<text>Again</text>", "A call is in progress");
  await phone.state({ talking: false });
});
