// Every page: accessible in light and dark, in every language, on a telephone's screen, and light to load.
import assert from "node:assert/strict";
import test, { after, before } from "node:test";
import { axe, overflow, screenshot, startPhone } from "./phone.mjs";

const pages = {
  status: "p=status&q=load",
  "account-register": "p=account-register&q=load&acc=0",
  network: "p=network&q=load",
  "network-pcport": "p=network-pcport&q=load",
  "features-acd": "p=features-acd&q=load",
  "features-general": "p=features-general&q=load",
  "features-audio": "p=features-audio&q=load",
  "features-intercom": "p=features-intercom&q=load",
  "features-transfer": "p=features-transfer&q=load",
  "features-callpickup": "p=features-callpickup&q=load",
  "features-remotecontrl": "p=features-remotecontrl&q=load",
  "features-phonelock": "p=features-phonelock&q=load",
  "features-actionurl": "p=features-actionurl&q=load",
  "features-bluetooth": "p=features-bluetooth&q=load",
  "settings-voice": "p=settings-voice&q=load",
  "settings-tones": "p=settings-tones&q=load",
  "settings-areacode": "p=settings-areacode&q=load",
  hidden: "p=hidden",
  "account-basic": "p=account-basic&q=load&acc=0",
  "account-codec": "p=account-codec&q=load&acc=0",
  "account-adv": "p=account-adv&q=load&acc=0",
  "features-forward": "p=features-forward&q=load",
  "features-forward-accounts": "p=features-forward&q=load&ForwardMode=1&DndMode=1",
  security: "p=security&q=load",
  "settings-ring": "p=settings-ring&q=load",
  "settings-autop": "p=settings-autop&q=load",
  "settings-tr069": "p=settings-tr069&q=load",
  "contacts-multicastIP": "p=contacts-multicastIP&q=load",
};

let phone;
before(async () => {
  phone = await startPhone();
  // A phone with something to show.
  await phone.state({
    registration: [2, 3, 1, 0, 4, 2],
    network: { localIPv6: "2001:db8::20", gatewayIPv6: "2001:db8::1" },
    expansionModules: [{ type: 1, hardware: "1.0", firmware: "2.3" }],
  });
  await phone.configure({ NetworkIPAddressMode: "2", NetworkWanType: "2", NetworkIPv6WANType: "1", NetworkLanType: "0" },
    { 0: { AccountEnable: "1", AccountOutboundSwitch: "1", AccountStunSwitch: "1" } });
});
after(() => phone?.stop());

async function talkingNotice(page) {
  await phone.state({ talking: true });
  await phone.go(page, pages["features-acd"]);
  await page.click(".primary");
  await page.waitForSelector("#notice");
  await phone.state({ talking: false });
}

for (const [look, options] of Object.entries({
  light: { colorScheme: "light" }, dark: { colorScheme: "dark" }, narrow: { viewport: { width: 360, height: 740 } },
})) {
  test(`every page is accessible and fits: ${look}`, async () => {
    const page = await phone.open(options);
    await phone.go(page, "p=login&q=loginForm");
    const check = async (name) => {
      await page.waitForSelector("html:not(.starting)");
      assert.deepEqual(await axe(page), [], name);
      assert.ok(await overflow(page) <= 0, `${name} is wider than the screen`);
      await screenshot(page, `${name}-${look}`);
    };
    await check("login");
    await phone.logIn(page, "admin", "admin");
    for (const [name, query] of Object.entries(pages)) {
      await phone.go(page, query);
      await check(name);
    }
    await talkingNotice(page);
    await check("notice");
    if (look === "narrow") {
      await phone.go(page, pages.network);
      assert.equal(await page.getByRole("link", { name: "PC port" }).isVisible(), false);
      await page.getByRole("button", { name: "Menu" }).click();
      await page.getByRole("link", { name: "PC port" }).click();
      await page.waitForURL(/p=network-pcport/);
    }
    phone.assertNoProblems();
  });
}

test("the phone's language is the page's", async () => {
  const rows = [
    ["German", "de", "ltr", "Netzwerk", "Konto 1", "Angehalten"],
    ["Arabic", "ar", "rtl", "الشبكة", "الحساب 1", "متوقف"],
    ["English", "en", "ltr", "Network", "Account 1", "Stopped"],
  ];
  const page = await phone.openAs("admin", pages.network, { viewport: { width: 360, height: 740 } });
  await phone.configure({ NetworkLanEnableDHCP: "0" });
  for (const [name, code, direction, title, account, stopped] of rows) {
    await phone.configure({ LanguageWebLang: name });
    for (const query of Object.values(pages)) {
      await phone.go(page, query);
      assert.deepEqual(await page.evaluate(() => [document.documentElement.lang, document.documentElement.dir]), [code, direction]);
      assert.ok(await overflow(page) <= 0, `${name} ${query}`);
    }
    assert.deepEqual(await axe(page), []);
    await phone.go(page, pages.network);
    assert.equal(await page.textContent("h1"), title);
    await phone.go(page, pages["account-register"]);
    assert.equal(await page.textContent("#acc option >> nth=0"), account);
    await screenshot(page, `account-register-${name}`);
    await phone.go(page, pages.status);
    assert.equal(await page.textContent('[data-var="DHCPstatus"]'), stopped);
    await screenshot(page, `status-${name}`);
  }
  phone.assertNoProblems();
});

test("without its language file a page works in English", async () => {
  await phone.configure({ LanguageWebLang: "German" });
  const page = await phone.open();
  await page.route("**/language/*", (route) => route.abort());
  await phone.go(page, pages.network);
  await phone.logIn(page, "admin", "admin");
  assert.equal(await page.textContent("h1"), "Network");
  await phone.configure({ LanguageWebLang: "English" });
  phone.assertNoProblems("net::");
});

test("hostile text stays text", async () => {
  const hostile = `"'><img src=x onerror=alert(1)><script>alert(2)</script>{{User}} &amp; Saved.`;
  const short = `"><img src=x onerror=alert(3)>`;
  const page = await phone.openAs("admin", pages.status);
  page.on("dialog", () => assert.fail("a script of the stored text ran"));
  await phone.configure({ DevtypeLoginNote: hostile, PhoneFirmware: hostile, NetworkWanStaticIp: hostile, NetworkPppoeUser: hostile,
    NetworkLanRouterIP: hostile, ACDAutoAvailableTime: hostile, StatusVersion: `2"><b>`, "features-acd": `0$<b>` },
  { 0: { AccountLabel: hostile, AccountUserName: short, AccountDisplayName: hostile, AccountTransport: hostile } });
  const shown = { status: '[data-var="number"] >> nth=0', "account-register": "#AccountLabel", network: "#NetworkWanStaticIp", "network-pcport": "#NetworkLanRouterIP" };
  const one = hostile.replace("&amp;", "&");  // the pages give values escaped or not, and one level is taken off
  for (const [name, selector] of Object.entries(shown)) {
    await phone.go(page, pages[name]);
    const text = await page.locator(selector).evaluate((element) => element.value ?? element.textContent);
    assert.ok([hostile, one, short].includes(text), `${name}: ${text}`);
    assert.equal(await page.locator("main img, main script, .top img").count(), 0);
  }
  await phone.go(page, pages["features-acd"]);
  await page.waitForSelector("h1");
  phone.assertNoProblems();
});

test("the first page weighs at most 50 KB", async () => {
  for (const query of ["p=login&q=loginForm", pages.status]) {
    const page = query === pages.status ? await phone.openAs("admin", pages.network) : await phone.open();
    const context = query === pages.status ? await phone.browser.newContext({ storageState: await page.context().storageState() }) : page.context();
    const fresh = await context.newPage();
    const sizes = [];
    fresh.on("requestfinished", (request) => sizes.push(request.sizes().then((size) => size.responseBodySize)));
    await fresh.goto(`${phone.origin}/servlet?${query}`, { waitUntil: "networkidle" });
    const sum = (await Promise.all(sizes)).reduce((total, size) => total + size, 0);
    console.log(`${query}: ${sizes.length} requests, ${sum} bytes`);
    assert.ok(sizes.length > 5 && sum > 5_000 && sum <= 50_000, `${query}: ${sum} bytes`);
  }
});
