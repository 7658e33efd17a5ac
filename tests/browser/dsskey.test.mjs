// The pages of keys: rows in words, the type picker, fields that follow the type, locks, modules and the delivered keys.
import assert from "node:assert/strict";
import test from "node:test";
import { answerDialogs, axe, enter, overflow, phone, press } from "./phone.mjs";

const lose = "Discard the unsaved changes?";
const rows = (page) => page.locator(".keys .lines").evaluateAll((all) => all.map((one) => [...one.children].map((part) => part.textContent).join("; ")));
const openKey = (page, index) => page.locator(`#key-${index} > button`).click();
const visibleEditor = (page) => page.locator("#key-editor .field:visible label").allTextContents();

async function chooseType(page, word) {
  await page.fill("#key-type", word);
  await page.keyboard.press("Enter");
  await page.locator("#key-editor:not([aria-busy])").waitFor();
}

test("a key's type is found by typing, its fields follow, and the row says what it does", async () => {
  const page = await phone.openAs("admin", "p=dsskey&q=load&model=1");
  await openKey(page, 8);
  assert.deepEqual(await visibleEditor(page), ["Function"]);
  await page.fill("#key-type", "blf list xyz");
  assert.equal(await page.textContent(".options"), "Nothing matches.");
  await page.fill("#key-type", "BLF");
  assert.deepEqual(await axe(page), []);
  assert.deepEqual(await page.locator(".options li").allTextContents(), ["Monitored line (BLF)"]);
  await page.keyboard.press("Escape");
  assert.equal(await page.inputValue("#key-type"), "Not used");
  await chooseType(page, "blf");
  assert.deepEqual(await visibleEditor(page), ["Function", "Number", "Line", "Label", "Pickup code"]);
  await enter(page, { "key-value": "10%1", "key-line": "1", "key-label": "<b>Bob" });
  await chooseType(page, "speed");
  assert.deepEqual(await visibleEditor(page), ["Function", "Number", "Line", "Label"]);
  assert.equal((await rows(page))[7], "Speed dial 10%1 on Line 2; <b>Bob; Not saved yet");
  await page.keyboard.press("Escape");
  assert.equal(await page.evaluate(() => document.activeElement.parentElement.id), "key-8");
  const questions = answerDialogs(page, false);
  await page.click("text=Page 2: keys 10 to 18").catch(() => {});
  assert.deepEqual(questions, ["beforeunload"]);
  await press(page, "Cancel");
  assert.equal((await rows(page))[7], "Not used");
  await openKey(page, 8);
  await chooseType(page, "speed");
  await enter(page, { "key-value": "10%1", "key-line": "1", "key-label": "<b>Bob" });
  await enter(page, { EnablePageTips: true });
  await phone.assertSaves(page, { EnablePageTips: "1" });
  assert.equal((await rows(page))[7], "Speed dial 10%1 on Line 2; <b>Bob");
});

test("a locked key shows on the other pages, and is changed on the first one", async () => {
  const page = await phone.openAs("admin", "p=dsskey&q=load&model=1", { viewport: { width: 360, height: 740 } });
  await openKey(page, 3);
  assert.ok(await overflow(page) <= 0);
  await enter(page, { "key-mode": "2" });
  await phone.assertSaves(page, {});
  assert.equal((await rows(page))[2], "Line 3; Locked on all pages");
  await page.click("text=Page 2: keys 10 to 18");
  await page.locator("#key-12").waitFor();
  assert.deepEqual(await axe(page), []);
  assert.equal((await rows(page))[2], "Line 3; Locked: change it on page 1");
  await phone.assertSaves(page, {});
  await page.click("#key-12 a");
  await page.waitForURL(/linepage=1/);
  assert.equal(await page.locator("[aria-current=page]").last().textContent(), "Page 1: keys 1 to 9");
  await openKey(page, 3);
  await enter(page, { "key-mode": "0" });
  await phone.assertSaves(page, {});
  await phone.go(page, "p=dsskey&q=load&model=1&linepage=3");
  assert.equal((await rows(page))[2], "Not used");
});

test("an answer that cannot be read reloads the page, but for changes that the reader keeps", async () => {
  const page = await phone.openAs("admin", "p=dsskey&q=load&model=1");
  const questions = answerDialogs(page, false);
  await openKey(page, 1);
  await enter(page, { "key-line": "5" });
  let answer = { body: "{controller:{}}" };
  await page.route("**/*typeChanged*", (route) => (answer ? route.fulfill(answer) : route.abort()));
  await chooseType(page, "dtmf");
  assert.deepEqual([questions, await page.inputValue("#key-type"), (await rows(page))[0]], [[lose], "Line", "Line 6; Not saved yet"]);
  answer = null;
  phone.expectProblems("net::");
  await chooseType(page, "dtmf");
  assert.equal(await page.textContent("#message"), "The phone does not answer. Please try again.");
  await press(page, "Cancel");
  answer = { body: "" };
  await openKey(page, 1);
  const reloaded = page.waitForEvent("load");
  await page.fill("#key-type", "dtmf");
  await page.keyboard.press("Enter");
  await reloaded;
  assert.equal(questions.length, 1);
});

test("programmable keys have names and can be restored; modules are chosen, or the page says how to attach one", async () => {
  const page = await phone.openAs("admin", "p=dsskey&q=load&model=2");
  assert.equal(await page.locator("nav [aria-current=page]").textContent(), "Programmable keys");
  assert.deepEqual((await page.locator(".place").allTextContents()).slice(3, 6), ["Soft key 4", "Up", "Down"]);
  const [before] = await rows(page);
  await openKey(page, 1);
  await chooseType(page, "do not");
  await phone.assertSaves(page, {});
  assert.equal((await rows(page))[0], "Do not disturb");
  const questions = answerDialogs(page, false, true);
  await press(page, "Restore the delivered keys");
  await press(page, "Restore the delivered keys");
  await page.getByText("Saved.", { exact: true }).waitFor();
  assert.deepEqual([questions.length, (await rows(page))[0]], [2, before]);

  await phone.state({ expansionModules: [] });
  await phone.go(page, "p=dsskey&q=load&model=3");
  assert.equal(await page.locator("h2:visible").textContent(), "No module is attached");
  assert.equal(await page.locator(".bar").isVisible(), false);
  await phone.state({ expansionModules: [{ type: 1, hardware: "1", firmware: "2" }, { type: 1, hardware: "1", firmware: "2" }] });
  await phone.go(page, "p=dsskey&q=load&model=3");
  await openKey(page, 0);
  await chooseType(page, "record");
  await phone.assertSaves(page, {});
  assert.equal((await rows(page))[0], "Record");
  await page.selectOption("#extno", "2");
  await page.waitForURL(/extno=2/);
  assert.deepEqual([(await rows(page)).length, (await rows(page))[0]], [40, "Not used"]);
});
