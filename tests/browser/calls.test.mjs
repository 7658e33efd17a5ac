// The call history: lists, search, calls by the phone; the accounts of the network call log.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import test, { before } from "node:test";
import { answerDialogs, axe, enter, overflow, phone, press, screenshot, values } from "./phone.mjs";

const file = (name) => join(phone.root, "config/data", name);
const call = (type, number, server, minute) => `<item type="${type}" local_sip_name="1001" local_sip_server="sip.example.com" `
  + `remote_sip_name="${number}" remote_sip_server="${server}" born_tick="${1795000000 + minute * 60}"/>`;

before(async () => {
  await phone.configure({ "AccountUserName@1": "1001", "AccountUserName@0": "1000", AURILimitIP: "" });
  await phone.state({ answers: { "app_hostapp 0x30006": 2 } });
  writeFileSync(join(phone.root, "config/user/voip/sipAccount1.cfg"), "[sipserver1]\nserver = sip.example.com\n");
  writeFileSync(file("contact_list.xml"), '<root_contact><contact display_name="Ann &amp; Bob" office_number="200"/></root_contact>');
  writeFileSync(file("call_data.xml"), `<root_call>${call(1, 200, "sip.example.com", 1)}${call(1, "*97", "", 2)}`
    + `${call(3, "carol+1", "sip.example.com", 3)}${call(3, 200, "", 4)}${call(2, "%3Cb%3E".repeat(15), "sip.example.com", 5)}</root_call>`);
});

test("the lists are shown one at a time, newest first, and searched", async () => {
  writeFileSync(join(phone.root, "tmp/contact_update_mark.ini"), "[update]\ntype=1\n");
  const page = await phone.openAs("admin", "contacts-callinfo");
  const names = () => page.locator('tbody tr:visible [data-var="Name"]').allTextContents();
  const counts = () => page.locator(".count").allTextContents();
  const choose = (list) => page.getByLabel(list).check();
  assert.deepEqual([await names(), await counts()], [["*97", "Ann & Bob"], ["2", "1", "2", "0"]]);
  await screenshot(page, "calls-placed");
  await choose("Missed");
  assert.deepEqual(await names(), ["Ann & Bob", "carol+1"]);
  await enter(page, { search: "EXAMPLE.com car" });
  assert.deepEqual([await names(), await counts()], [["carol+1"], ["0", "0", "1", "0"]]);
  await press(page, "Refresh");
  await page.waitForSelector("html:not(.starting)");
  assert.deepEqual([await names(), await values(page, "search")], [["carol+1"], ["EXAMPLE.com car"]]);
  const add = page.getByRole("link", { name: "Add to contacts: carol+1" });
  assert.match(await add.getAttribute("href"), /\/servlet\?p=contactsbasic&q=load&num=1&group=0#new\?number=carol%2B1&name=carol%2B1$/);
  await choose("Forwarded");
  assert.equal(await page.getByText("No forwarded calls.").isVisible(), true);
  for (const [colorScheme, width] of [["light", 1200], ["dark", 1200], ["light", 360]]) {
    await page.emulateMedia({ colorScheme });
    await page.setViewportSize({ width, height: 800 });
    await enter(page, { search: "" });
    for (const list of ["Missed", "Received"]) {
      await choose(list);
      assert.deepEqual([await axe(page), await overflow(page) <= 0], [[], true], `${colorScheme} ${width} ${list}`);
      await screenshot(page, `calls-${list}-${colorScheme}-${width}`);
    }
  }
});

test("nothing is dialled before it is asked for, and the phone's answer is shown", async () => {
  const page = await phone.openAs("admin", "contacts-callinfo");
  const dials = async () => (await phone.control("GET", "journal?since=0")).entries
    .filter(({ message }) => message === 0xa0002).map(({ wParam, data }) => [wParam, data]);
  const shown = (text) => page.locator("#dial-result").getByText(text).waitFor();
  await press(page, "Call: Ann & Bob");
  assert.deepEqual([await values(page, "dial-num", "dial-acc"), await page.textContent("#dial-name")], [["200@sip.example.com", "1"], "Ann & Bob"]);
  await screenshot(page, "calls-dial");
  assert.deepEqual([await dials(), await axe(page)], [[], []]);
  const dial = () => page.locator("#dial [type=submit]").click();
  await dial();
  await shown("The phone did not dial.");
  assert.match(await page.locator("#dial-trust a").getAttribute("href"), /p=features-remotecontrl/);
  assert.deepEqual([await dials(), await axe(page)], [[], []]);
  await screenshot(page, "calls-refused");
  await phone.configure({ AURILimitIP: "any" });
  await enter(page, { "dial-num": " 0%s& " });
  await dial();
  await shown("The phone is calling this number.");
  assert.deepEqual([await dials(), await page.isVisible("#dial-trust")], [[[1101, "0%s&"]], false]);
  await press(page, "Hang up");
  await shown("The phone has hung up.");
  await page.keyboard.press("Escape");
  await phone.state({ answers: { "app_hostapp 0x30006": 3 } });
  await page.reload();
  await press(page, "Call: *97");
  await shown("No account is registered");
  assert.equal(await page.locator("#dial [type=submit]").isVisible(), false);
  await page.context().clearCookies();
  await press(page, "Hang up");
  await shown("You have been logged out.");
  await phone.state({ answers: { "app_hostapp 0x30006": 2 } });
});

test("each account of the network call log is edited for itself; one that is not there has no form", async () => {
  const page = await phone.openAs("admin", "contacts-calllog");
  await enter(page, { DisplayName: "Sales", Server: "log.example.com", Port: "443", PassWord: "secret" });
  await screenshot(page, "calllog");
  await phone.assertSaves(page, {});
  const stored = /<item name="Sales" server="log.example.com" port="443" user_name="" password="secret" \/>/;
  assert.match(readFileSync(file("broadsoft_calllog_list.xml"), "utf8"), stored);
  await page.locator("#choice option").nth(2).waitFor({ state: "attached" });
  assert.deepEqual(await page.locator("#choice option").allTextContents(), ["1: Sales", "2", "3"]);
  const questions = answerDialogs(page, true);
  await enter(page, { Port: "444", choice: "1" });
  await page.waitForURL(/z=1/);
  await page.locator("#choice option").nth(2).waitFor({ state: "attached" });
  assert.deepEqual([questions.length, await values(page, "DisplayName", "PassWord", "choice")], [1, ["", "********", "1"]]);
  await phone.go(page, "p=contacts-calllog&q=load&z=3");
  await page.getByText("The phone has no such account for its call log.").waitFor();
  assert.equal(await page.locator("#account").isVisible(), false);
});
