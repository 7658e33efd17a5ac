// Every page: accessible in light and dark, in every language, for everybody, on a telephone's screen, and light to load.
import assert from "node:assert/strict";
import { mkdirSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import test, { before } from "node:test";
import { axe, overflow, pages, phone, press, save, screenshot } from "./phone.mjs";

const forms = pages.filter(({ name }) => name !== "login");

// A phone with something to show.
before(async () => {
  await phone.state({
    registration: [2, 3, 1, 0, 4, 2],
    network: { localIPv6: "2001:db8::20", gatewayIPv6: "2001:db8::1" },
    expansionModules: [{ type: 1, hardware: "1.0", firmware: "2.3" }],
  });
  await phone.configure(Object.assign({}, ...pages.map(({ settings }) => settings)));
  for (const [path, text] of pages.flatMap(({ files = {} }) => Object.entries(files))) {
    mkdirSync(dirname(join(phone.root, path)), { recursive: true });
    writeFileSync(join(phone.root, path), text);
  }
});

// Look, colour scheme, width, whether the colours alone are checked.
const looks = [["light", "light", 1200, false], ["dark", "dark", 1200, true], ["narrow", "light", 360, true]];

// In the light, in the dark, where the colours alone differ, and on a telephone's screen, where the menu folds.
async function checkLooks(page, name) {
  for (const [look, colorScheme, width, isColourOnly] of looks) {
    await page.emulateMedia({ colorScheme });
    await page.setViewportSize({ width, height: 800 });
    assert.deepEqual(await axe(page, isColourOnly && ["color-contrast"]), [], `${name}, ${look}`);
    assert.ok(await overflow(page) <= 0, `${name}, ${look}, is wider than the screen`);
    await screenshot(page, `${name}-${look}`);
  }
}

test("every page is accessible and fits, in light and dark and on a narrow screen, where the menu folds", async () => {
  assert.ok(forms.length >= 27);
  await checkLooks(await phone.open("p=login&q=loginForm"), "login");
  const page = await phone.openAs("admin", "");
  for (const { name, query } of forms) {
    await phone.go(page, query);
    await checkLooks(page, name);
  }
  await phone.state({ talking: true });
  await phone.go(page, "features-acd");
  await save(page);
  await page.waitForSelector("#notice");
  await phone.state({ talking: false });
  assert.deepEqual(await axe(page), [], "notice");
  await screenshot(page, "notice-light");

  await page.emulateMedia({ colorScheme: "dark" });  // the width is still the narrow one
  await phone.go(page, "network");
  const link = page.getByRole("link", { name: "PC port" });
  assert.equal(await link.isVisible(), false);
  await press(page, "Menu");
  assert.deepEqual(await axe(page), []);
  await link.click();
  await page.waitForURL(/p=network-pcport/);
});

test("the phone's language is the page's; without its file a page works in English", async () => {
  const rows = [
    ["German", "de", "ltr", "Netzwerk", "Konto 1", "Angehalten"],
    ["Arabic", "ar", "rtl", "الشبكة", "الحساب 1", "متوقف"],
    ["English", "en", "ltr", "Network", "Account 1", "Stopped"],
  ];
  const page = await phone.openAs("admin", "", { viewport: { width: 360, height: 740 } });
  await phone.configure({ NetworkLanEnableDHCP: "0" });
  for (const [language, code, direction, title, account, stopped] of rows) {
    await phone.configure({ LanguageWebLang: language });
    const texts = { network: ["h1", title], "account-register": ["#acc option >> nth=0", account], status: ['[data-var="DHCPstatus"]', stopped] };
    for (const { name, query } of language === "English" ? forms.filter((form) => form.name in texts) : forms) {
      await phone.go(page, query);
      assert.deepEqual(await page.evaluate(() => [document.documentElement.lang, document.documentElement.dir]), [code, direction]);
      assert.ok(await overflow(page) <= 0, `${language} ${name}`);
      if (!(name in texts)) continue;
      const [selector, text] = texts[name];
      assert.equal(await page.textContent(selector), text);
      await screenshot(page, `${name}-${language}`);
    }
    assert.deepEqual(await axe(page), []);
  }
  phone.expectProblems("net::");
  await phone.configure({ LanguageWebLang: "German" });
  await page.route("**/language/*", (route) => route.abort());
  await phone.go(page, "network");
  assert.equal(await page.textContent("h1"), "Network");
  await phone.configure({ LanguageWebLang: "English" });
});

test("every page opens for others than admin, with settings or the reason why there are none, and hostile text stays text", async () => {
  const hostile = "\"'><img src=x onerror=alert(1)><script>alert(2)</script>{{User}} &amp; Saved.";
  const keys = ["DevtypeLoginNote", "PhoneFirmware", "NetworkWanStaticIp", "NetworkPppoeUser", "NetworkLanRouterIP", "ACDAutoAvailableTime",
    "AccountLabel@0", "AccountUserName@0", "AccountDisplayName@0", "AccountTransport@0"];
  await phone.configure({ ...Object.fromEntries(keys.map((key) => [key, hostile])), StatusVersion: "2\"><b>", "features-acd": "0$<b>" });
  phone.expectProblems("403");
  for (const user of ["var", "user"]) {
    const page = await phone.openAs(user);
    page.on("dialog", () => assert.fail("a script of the stored text ran"));
    for (const { name, query } of forms) {
      await phone.go(page, query);
      assert.equal(await page.locator("main [src=x], main script, .top img").count(), 0, name);
      const shown = await page.locator("main .field:visible, main dl:visible, main table:visible").count();
      const refused = await page.textContent("#message") === "Your user level may not see this page.";
      assert.notEqual(shown > 0, refused, `${user}: ${name}`);
    }
  }
});

test("the first page weighs at most 50 KB, in every language", async () => {
  const { cookies } = await (await phone.openAs("admin")).context().storageState();
  const entries = [["p=login&q=loginForm"], ["p=status&q=load", { cookies, origins: [] }]];
  for (const [language, [query, storageState]] of ["English", "German", "Arabic"].flatMap((name) => entries.map((one) => [name, one]))) {
    await phone.configure({ LanguageWebLang: language });
    const page = await phone.open("", { storageState });
    const sizes = [];
    page.on("requestfinished", (request) => sizes.push(request.sizes().then((size) => size.responseBodySize)));
    await page.goto(`${phone.origin}/servlet?${query}`, { waitUntil: "networkidle" });
    const sum = (await Promise.all(sizes)).reduce((total, size) => total + size, 0);
    console.log(`${language}, ${query}: ${sizes.length} requests, ${sum} bytes`);
    assert.ok(sizes.length > 5 && sum > 5_000 && sum <= 50_000, `${language}, ${query}: ${sum} bytes`);
  }
});
