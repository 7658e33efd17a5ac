// Every page: accessible in light and dark, in every language, on a telephone's screen, and light to load.
import assert from "node:assert/strict";
import test, { before } from "node:test";
import { axe, overflow, phone, screenshot } from "./phone.mjs";

// Pages that open otherwise than "p=NAME&q=load".
const queries = {
  hidden: "p=hidden",
  "features-forward-accounts": "p=features-forward&q=load&ForwardMode=1&DndMode=1",
  ...Object.fromEntries(["register", "basic", "codec", "adv"].map((tab) => [`account-${tab}`, `p=account-${tab}&q=load&acc=0`])),
};
const names = ["status", "network", "network-pcport", "features-acd", "features-general", "features-audio", "features-intercom", "features-transfer",
  "features-callpickup", "features-remotecontrl", "features-phonelock", "features-actionurl", "features-bluetooth", "features-forward",
  "settings-voice", "settings-tones", "settings-areacode", "settings-ring", "settings-autop", "settings-tr069", "contacts-multicastIP", "security",
  ...Object.keys(queries)];
const queryOf = (name) => queries[name] ?? `p=${name}&q=load`;

// A phone with something to show.
before(async () => {
  await phone.state({
    registration: [2, 3, 1, 0, 4, 2],
    network: { localIPv6: "2001:db8::20", gatewayIPv6: "2001:db8::1" },
    expansionModules: [{ type: 1, hardware: "1.0", firmware: "2.3" }],
  });
  await phone.configure({ NetworkIPAddressMode: "2", NetworkWanType: "2", NetworkIPv6WANType: "1", NetworkLanType: "0",
    "AccountEnable@0": "1", "AccountOutboundSwitch@0": "1", "AccountStunSwitch@0": "1" });
});

// In the light, in the dark, where the colours alone differ, and on a telephone's screen, where the menu folds.
async function checkLooks(page, name) {
  const fits = async (look) => {
    assert.ok(await overflow(page) <= 0, `${name} is wider than the screen`);
    await screenshot(page, `${name}-${look}`);
  };
  assert.deepEqual(await axe(page), [], name);
  await fits("light");
  await page.emulateMedia({ colorScheme: "dark" });
  assert.deepEqual(await axe(page, ["color-contrast"]), [], `${name} in the dark`);
  await fits("dark");
  await page.emulateMedia({ colorScheme: "light" });
  await page.setViewportSize({ width: 360, height: 740 });
  await fits("narrow");
  await page.setViewportSize({ width: 1200, height: 800 });
}

test("every page is accessible and fits, in light and dark and on a narrow screen", async () => {
  await checkLooks(await phone.open("p=login&q=loginForm"), "login");
  const page = await phone.openAs("admin", "p=status&q=load");
  for (const name of names) {
    await phone.go(page, queryOf(name));
    await checkLooks(page, name);
  }
  await phone.state({ talking: true });
  await phone.go(page, queryOf("features-acd"));
  await page.click(".primary");
  await page.waitForSelector("#notice");
  await phone.state({ talking: false });
  assert.deepEqual(await axe(page), [], "notice");
  await screenshot(page, "notice-light");
});

test("on a narrow screen the menu folds, and open it is accessible", async () => {
  const page = await phone.openAs("admin", queryOf("network"), { viewport: { width: 360, height: 740 }, colorScheme: "dark" });
  assert.deepEqual(await axe(page), []);
  assert.equal(await page.getByRole("link", { name: "PC port" }).isVisible(), false);
  await page.getByRole("button", { name: "Menu" }).click();
  assert.deepEqual(await axe(page), []);
  await page.getByRole("link", { name: "PC port" }).click();
  await page.waitForURL(/p=network-pcport/);
});

test("the phone's language is the page's", async () => {
  const rows = [
    ["German", "de", "ltr", "Netzwerk", "Konto 1", "Angehalten"],
    ["Arabic", "ar", "rtl", "الشبكة", "الحساب 1", "متوقف"],
    ["English", "en", "ltr", "Network", "Account 1", "Stopped"],
  ];
  const page = await phone.openAs("admin", queryOf("network"), { viewport: { width: 360, height: 740 } });
  await phone.configure({ NetworkLanEnableDHCP: "0" });
  for (const [language, code, direction, title, account, stopped] of rows) {
    await phone.configure({ LanguageWebLang: language });
    for (const name of language === "English" ? ["network"] : names) {
      await phone.go(page, queryOf(name));
      assert.deepEqual(await page.evaluate(() => [document.documentElement.lang, document.documentElement.dir]), [code, direction]);
      assert.ok(await overflow(page) <= 0, `${language} ${name}`);
    }
    assert.deepEqual(await axe(page), []);
    for (const [name, selector, text] of [["network", "h1", title], ["account-register", "#acc option >> nth=0", account], ["status", '[data-var="DHCPstatus"]', stopped]]) {
      await phone.go(page, queryOf(name));
      assert.equal(await page.textContent(selector), text);
      await screenshot(page, `${name}-${language}`);
    }
  }
});

test("without its language file a page works in English", async () => {
  phone.expectProblems("net::");
  await phone.configure({ LanguageWebLang: "German" });
  const page = await phone.openAs("admin", queryOf("status"));
  await page.route("**/language/*", (route) => route.abort());
  await phone.go(page, queryOf("network"));
  assert.equal(await page.textContent("h1"), "Network");
  await phone.configure({ LanguageWebLang: "English" });
});

test("hostile text stays text", async () => {
  const hostile = "\"'><img src=x onerror=alert(1)><script>alert(2)</script>{{User}} &amp; Saved.";
  const short = "\"><img src=x onerror=alert(3)>";
  const page = await phone.openAs("admin", queryOf("status"));
  page.on("dialog", () => assert.fail("a script of the stored text ran"));
  await phone.configure({ DevtypeLoginNote: hostile, PhoneFirmware: hostile, NetworkWanStaticIp: hostile, NetworkPppoeUser: hostile,
    NetworkLanRouterIP: hostile, ACDAutoAvailableTime: hostile, StatusVersion: "2\"><b>", "features-acd": "0$<b>",
    "AccountLabel@0": hostile, "AccountUserName@0": short, "AccountDisplayName@0": hostile, "AccountTransport@0": hostile });
  const shown = { status: '[data-var="number"] >> nth=0', "account-register": "#AccountLabel", network: "#NetworkWanStaticIp", "network-pcport": "#NetworkLanRouterIP" };
  const one = hostile.replace("&amp;", "&");  // the pages give values escaped or not, and one level is taken off
  for (const [name, selector] of Object.entries(shown)) {
    await phone.go(page, queryOf(name));
    const text = await page.locator(selector).evaluate((element) => element.value ?? element.textContent);
    assert.ok([hostile, one, short].includes(text), `${name}: ${text}`);
    assert.equal(await page.locator("main img, main script, .top img").count(), 0);
  }
  await phone.go(page, queryOf("features-acd"));
  await page.waitForSelector("h1");
});

test("the first page weighs at most 50 KB, in every language", async () => {
  const { cookies } = await (await phone.openAs("admin", queryOf("network"))).context().storageState();
  const pages = [["p=login&q=loginForm"], [queryOf("status"), { cookies, origins: [] }]];
  for (const [language, [query, storageState]] of ["English", "German", "Arabic"].flatMap((name) => pages.map((one) => [name, one]))) {
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
