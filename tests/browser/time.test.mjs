// Date and time: zones that are searched, their rules, a clock that is set by hand. Text messages.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import test from "node:test";
import { enter, overflow, phone, press, save } from "./phone.mjs";

const setClocks = async () => (await phone.control("GET", "journal?since=0")).entries.filter(({ call }) => call === "setClock").map(({ text }) => text);
const ruleLines = (page) => page.locator("#zone-rule span").allTextContents();

async function choose(page, words) {
  await page.fill("#TimeZoneAndName", words);
  const found = await page.locator(".options [data-value]").allTextContents();
  await page.keyboard.press("Enter");
  return found;
}

test("zones are found by name and offset, their rules are told, and the one that is chosen is saved", async () => {
  const page = await phone.openAs("var", "settings-datetime");
  await page.getByText("Begins: last Sunday of March, 01:00").waitFor();
  assert.deepEqual(await choose(page, "reunion"), ["+4 Réunion"]);
  assert.deepEqual(await choose(page, "utc+05:30"), ["+5:30 India (New Delhi, Mumbai)", "+5:30 Sri Lanka (Colombo)"]);
  await page.getByText("This time zone has no daylight saving time.").waitFor();
  assert.deepEqual(await choose(page, "eastern"), ["-5 United States (Eastern, New York)"]);
  await page.getByText("Begins: second Sunday of March, 02:00").waitFor();
  assert.deepEqual(await ruleLines(page), ["Begins: second Sunday of March, 02:00", "Ends: first Sunday of November, 02:00",
    "The clock is put forward by 60 minutes."]);
  await phone.assertSaves(page, { CurrentTimeZoneTime: "-5", CurrentTimeZoneZone: "United States (Eastern, New York)", LocalTimeDaylightSaving: "2" });
  assert.equal(await page.inputValue("#TimeZoneAndName"), "-5 United States (Eastern, New York)");
  await choose(page, "cairo");
  await page.getByText(/^Begins: \d+ April, 00:00$/).waitFor();
  await press(page, "Cancel");
  await page.getByText("Begins: second Sunday of March, 02:00").waitFor();
  assert.equal(await page.inputValue("#TimeZoneAndName"), "-5 United States (Eastern, New York)");
});

test("an own rule begins as that of the zone, offers days that there are, and is saved when it is whole", async () => {
  const page = await phone.openAs("admin", "settings-datetime");
  await choose(page, "berlin");
  await page.getByText("Begins: last Sunday of March, 02:00").waitFor();
  await page.getByLabel("Own rule").check();
  await enter(page, { sWeekSHour: "4" });
  await phone.assertSaves(page, { LocalTimeDaylightSaving: "1", DSTTimeType: "1", DSTStartTime: "3/5/7/4", DSTEndTime: "10/5/7/3", DSTOffSetTime: "60" });
  await page.getByLabel("On a date").check();
  await enter(page, { sDateSMonth: "3", sDateSDay: "31", sDateSHour: "0", sDateEMonth: "10", sDateEDay: "1" });
  await enter(page, { sDateSMonth: "2" });
  assert.equal(await page.inputValue("#sDateSDay"), "29");
  await save(page);
  assert.equal(await page.textContent("#dateE-error"), "Choose all parts.");
  await enter(page, { sDateEHour: "23" });
  await phone.assertSaves(page, { DSTTimeType: "0", DSTStartTime: "2/29/0", DSTEndTime: "10/1/23" });
  assert.deepEqual([await page.inputValue("#sDateSDay"), await page.getByLabel("On a date").isChecked()], ["29", true]);
});

test("a zone that the list does not hold, and a list with hostile names, stay as they are", async () => {
  const list = join(phone.root, "config/data/AutoDST.xml");
  const zones = readFileSync(list, "utf8");
  writeFileSync(list, "<z><z szTime='+1' szZone='\"&lt;img src=x onerror=alert(1)&gt;'/></z>");
  await phone.configure({ CurrentTimeZoneTime: "+9:59", CurrentTimeZoneZone: "Atlantis", LocalTimeDaylightSaving: "0" });
  const page = await phone.openAs("admin", "settings-datetime");
  await phone.assertSaves(page, { CurrentTimeZoneTime: "+9:59", CurrentTimeZoneZone: "Atlantis" });
  assert.deepEqual(await choose(page, "img"), ['+1 "<img src=x onerror=alert(1)>']);
  await phone.assertSaves(page, { CurrentTimeZoneTime: "+1", CurrentTimeZoneZone: '"<img src=x onerror=alert(1)>' });
  writeFileSync(list, zones);
});

test("a clock set by hand runs with the computer's until it is changed", async () => {
  await phone.state({ clockOffset: 0 });
  const page = await phone.openAs("admin", "settings-datetime", { timed: true, timezoneId: "Asia/Tokyo" });
  const shown = () => page.evaluate(() => [document.getElementById("date").value, document.getElementById("time").value].join(" "));
  const before = await page.textContent("#phone-time");
  await page.getByLabel("By hand").check();
  await page.clock.fastForward(120_000);
  assert.ok(Math.abs(await page.evaluate((text) => new Date(text) - Date.now(), await shown())) < 5000);
  assert.notEqual(await page.textContent("#phone-time"), before);
  await enter(page, { date: "2101-01-01", time: "04:05:06" });
  await save(page);
  assert.equal(await page.textContent("#date-error"), "Enter a date from 2000-01-01 to 2099-12-31.");
  await enter(page, { date: "2030-02-28" });
  await page.clock.fastForward(5000);
  assert.equal(await shown(), "2030-02-28 04:05:06");
  await phone.assertSaves(page, { LocalTimeType: "0" });
  assert.deepEqual(await setClocks(), ["2030-02-28 04:05:06"]);
  await page.getByText("28 February 2030").waitFor();
  await enter(page, { date: "2031-01-01" });
  await press(page, "Take the time of this computer");
  await save(page);
  await page.getByText("Saved.", { exact: true }).waitFor();
  assert.ok(Math.abs(new Date(`${(await setClocks())[1]} GMT+9`) - await page.evaluate(() => Date.now())) < 30_000);
  await phone.configure({ LocalTimeType: "1" });
});

test("a message is completed, counted and sent; one that fails or does not fit keeps its text", async () => {
  await phone.configure({ "AccountEnable@0": "1", "AccountUserName@0": "1000" });
  const page = await phone.openAs("user", "features-sms");
  const sent = async () => (await phone.control("GET", "journal?since=0")).entries.filter(({ message }) => message === 0x4000b).map(({ data }) => data);
  await enter(page, { editMsgTarget: "sip:1002", editMsgTxt: "Grüße 🙂" });
  assert.equal(await page.inputValue("#editMsgTarget"), "1002@sip.example.com");
  assert.equal(await page.textContent("#room"), `${1023 - 12 - 24} bytes left.`);
  await press(page, "Send message");
  await page.getByText("The message has been sent.").waitFor();
  assert.deepEqual([await sent(), await page.inputValue("#editMsgTxt")], [["Grüße 🙂sip:1002@sip.example.com"], ""]);
  await enter(page, { editMsgTarget: "a b@c", editMsgTxt: "x".repeat(1020) });
  await press(page, "Send message");
  assert.equal(await page.textContent("#editMsgTarget-error"), "Enter a SIP address such as 1002@sip.example.");
  assert.equal(await page.textContent("#editMsgTxt-error"), "The message is too long by 6 bytes.");
  await phone.state({ answers: { "app_sipClient0 0x4000b": -1 } });
  await enter(page, { editMsgTarget: "1002@pbx", editMsgTxt: "<b>" });
  await press(page, "Send message");
  await page.getByText("The phone could not send the message.").waitFor();
  assert.equal(await page.inputValue("#editMsgTxt"), "<b>");
  writeFileSync(join(phone.root, "config/data/text_message_list.xml"), "");
  await press(page, "Send message");
  await page.getByText("The phone could not do this. Reload the page and try again.").waitFor();
  await phone.state({ registration: [4] });
  await page.getByText("Not registered").waitFor();
  await page.fill("#editMsgTxt", "");
  await phone.go(page, "features-sms");
  await page.getByText("No account is registered, so no message can be sent.").waitFor();
  assert.equal(await overflow(page), 0);
});
