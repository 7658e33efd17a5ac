// The search over all settings, with the keyboard alone.
import assert from "node:assert/strict";
import test from "node:test";
import { answerDialogs, axe, enter, overflow, phone, screenshot, visibleFields } from "./phone.mjs";

// Types into the search and waits for what it says of it.
async function search(page, text) {
  if (!await page.locator("#settings-search:focus").count()) {
    await page.evaluate(() => document.activeElement.blur());
    await page.keyboard.press("/");
  }
  await page.keyboard.press("Control+A");
  await page.keyboard.insertText(text);
  await page.waitForFunction(() => document.getElementById("settings-count").textContent);
}

const groups = (page) => page.locator("#settings-found [role=group]").evaluateAll((all) =>
  all.map((one) => [...one.children].map((part) => (part.querySelector("b") ?? part).textContent)));
const marked = (page) => page.locator("#settings-found [aria-selected=true] b").textContent();
const focused = (page) => page.evaluate(() => document.activeElement.id || document.activeElement.name || "");

// Opens what is marked; what is shown to the reader then.
async function open(page) {
  await page.keyboard.press("Enter");
  await page.waitForSelector(".arrived");
  await page.waitForSelector("html:not(.starting)");
  assert.ok(await page.locator(".arrived").evaluate((one) => {
    const { top, bottom } = one.getBoundingClientRect();
    return top >= 0 && top < window.innerHeight && (bottom <= window.innerHeight || one.matches(".card, .key-editor"));
  }));
  return [page.url().replace(/.*\?/, ""), await focused(page)];
}

test("settings of all pages are found as one types, and opened where they stand", async () => {
  const page = await phone.openAs("admin", "status");
  const index = page.waitForResponse("**/settings.json");
  await search(page, "dial tone");
  const { responseBodySize } = await (await index).request().sizes();
  console.log(`the settings: ${responseBodySize} bytes`);
  assert.ok(responseBodySize > 5_000 && responseBodySize <= 40_000);
  assert.deepEqual((await groups(page))[0], ["Settings › Tones", "Dial tone", "Recall dial tone", "Stutter tone"]);
  assert.deepEqual(await page.locator(".marked mark").allTextContents(), ["Dial", "tone", "tone"]);
  assert.deepEqual(await axe(page), []);
  for (const [key, label] of [["ArrowDown", "Recall dial tone"], ["ArrowUp", "Dial tone"], ["ArrowUp", "Voice mail tone"],
    ["ArrowDown", "Dial tone"], ["End", "Voice mail tone"], ["Home", "Dial tone"]]) {
    await page.keyboard.press(key);
    assert.equal(await marked(page), label, key);
    assert.equal(await page.getAttribute("#settings-search", "aria-activedescendant"), await page.getAttribute(".marked", "id"));
  }
  assert.deepEqual(await open(page), ["p=settings-tones&q=load#ToneDial", "ToneDial"]);
  await page.waitForSelector(".arrived", { state: "detached" });
  const rows = [
    // what is typed, where it leads, what has the focus there
    ["srtp", "p=account-adv&q=load&acc=0#AccountSrtpEncryption", "AccountSrtpEncryption"],
    ["forwarding settings for", "p=features-forward&q=load#ForwardMode", "ForwardMode"],
    ["mac address", "p=status&q=load#MACAddress", ""],
    ["firmware", "p=status&q=load#firmware", ""],
    ["text rings", "p=settings-ring&q=load#Text", "Text1"],
    ["pickup code line keys", "p=dsskey&q=load&model=1#key-ext", "key-type"],
    ["delivered keys", "p=dsskey&q=load&model=2#Delivered%20keys", ""],
    ["user name call log", "p=contacts-calllog&q=load&z=0#UserName", "UserName"],
    ["$active_host", "p=features-actionurl&q=load#%24active_host", ""],
    ["directory menu", "p=contacts-favorite&q=load#Directory%20menu", ""],
  ];
  for (const [text, address, field] of rows) {
    await search(page, text);
    assert.deepEqual(await open(page), [address, field], text);
  }
});

test("a setting of the open page is shown without a reload, or the one that brings it", async () => {
  const page = await phone.openAs("admin", "p=account-register&q=load&acc=2");
  const questions = answerDialogs(page, false, true);
  await enter(page, { AccountLabel: "kept" });
  await search(page, "stun port");
  assert.deepEqual(await open(page), ["p=account-register&q=load&acc=2#AccountSTUNPort", "AccountStunSwitch"]);
  assert.equal(await page.textContent(".arrived .outcome"), "“STUN port” appears once you change this setting.");
  await page.keyboard.press("Space");
  assert.ok((await visibleFields(page)).includes("AccountSTUNPort"));
  assert.equal(await page.locator(".outcome").count(), 0);
  await search(page, "stun port");
  assert.deepEqual(await open(page), ["p=account-register&q=load&acc=2#AccountSTUNPort", "AccountSTUNPort"]);
  assert.equal(await page.inputValue("#AccountLabel"), "kept");
  await search(page, "registration");
  assert.equal(await marked(page), "Registration");
  await page.keyboard.press("Enter");
  await page.waitForFunction(() => document.activeElement.id === "main");
  // What is not saved keeps its reader.
  for (const isLost of [false, true]) {
    await search(page, "watchdog");
    await page.keyboard.press("Enter");
    if (isLost) await page.waitForURL(/#EnableWatchDog$/);
  }
  assert.deepEqual(questions, ["beforeunload", "beforeunload"]);
});

test("the search stays out of the way, takes any text, and says when it cannot answer", async () => {
  const page = await phone.openAs("var", "features-general");
  await page.focus("#CallNumFilter");
  await page.keyboard.type("/");
  assert.equal(await focused(page), "CallNumFilter");
  page.on("dialog", () => assert.fail("a script of the text ran"));
  for (const text of ["<img src=x onerror=alert(1)>", "\"><script>alert(1)</script>", "((((", "[^", "\\", "設定", "إعداد", "\u{1F600}", "%41", "constructor", "toString", "tr069"]) {
    await search(page, text);
    assert.equal(await page.textContent("#settings-count"), "Nothing matches.", text);
    assert.equal(await page.locator("#settings-found :is(img, script)").count(), 0);
  }
  assert.deepEqual(await axe(page), []);
  await page.keyboard.press("Enter");
  for (const [hidden, value] of [[true, "tr069"], [true, ""]]) {
    await page.keyboard.press("Escape");
    assert.deepEqual([await page.isHidden("#settings-found"), await page.inputValue("#settings-search")], [hidden, value]);
  }
  assert.equal(await focused(page), "");
  const other = await phone.openAs("user", "status");
  await other.context().clearCookies();
  phone.expectProblems("403");
  await search(other, "tone");
  assert.equal(await other.textContent("#settings-found"), "You have been logged out. Reload the page to log in.");
});

test("each language searches its own words, on a telephone's screen too", async () => {
  const rows = [
    ["German", "wählton", "Einstellungen › Töne", "Wählton"],
    ["Arabic", "نغمه الاتصال", "الإعدادات › النغمات", "نغمة الاتصال"],
  ];
  for (const [language, text, path, label] of rows) {
    await phone.configure({ LanguageWebLang: language });
    const page = await phone.openAs("admin", "status", { viewport: { width: 360, height: 740 } });
    assert.ok(await page.locator(".finder").evaluate((finder) => finder.offsetWidth) < 10);
    await page.locator(".find").focus();
    await page.keyboard.press("Enter");
    await search(page, text);
    assert.deepEqual((await groups(page))[0].slice(0, 2), [path, label]);
    assert.ok(await overflow(page) <= 0);
    assert.ok(await page.locator("#settings-search").evaluate((input) => input.getBoundingClientRect().width) > 300);
    assert.deepEqual(await axe(page), []);
    await screenshot(page, `search-${language}`);
    assert.deepEqual(await open(page), ["p=settings-tones&q=load#ToneDial", "ToneDial"]);
  }
  await phone.configure({ LanguageWebLang: "English" });
});
