// The upgrade page: an upgrade from its first question to the phone's return, restart and reset, captures.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { createHash } from "node:crypto";
import test, { beforeEach } from "node:test";
import { phone, press } from "./phone.mjs";

const old = "46.83.0.120";

// A firmware file of `size` bytes; with `fault`, its last byte is another one than its sum says.
function firmware(version, size = 1000, fault = "") {
  const body = Buffer.alloc(size, "x");
  const sum = createHash("sha256").update(body).digest("hex");
  if (fault) body[size - 1] = 0;
  const head = `PHONE-FIRMWARE 1\nversion: ${version}\nsize: ${size}\nsha256: ${sum}\n\n`;
  return { name: "phone.img", mimeType: "application/octet-stream", buffer: Buffer.concat([Buffer.from(head), body]) };
}

const choose = (page, file) => page.setInputFiles("#upgradeFile", file);
async function upgrade(page, file) {
  await choose(page, file);
  await press(page, "Upgrade");
  await page.locator("#upgrade-begin").click();
}
const calls = async (call) => (await phone.control("GET", "journal")).entries.filter((entry) => entry.call === call).map(({ text }) => text);

beforeEach(async () => {
  await phone.state({ rebootSeconds: 0, talking: false, answers: { "app_hostapp 0x10101": null } });
  await phone.configure({ PhoneFirmware: old });
  await phone.control("DELETE", "journal");
});

test("a file that is no firmware is refused before anything happens; a call holds the upgrade off", async () => {
  const page = await phone.openAs("admin", "settings-upgrade");
  const cut = firmware("46.84.0.1");
  cut.buffer = cut.buffer.subarray(0, -1);
  for (const [file, text] of [[{ ...cut, buffer: Buffer.from("#!/bin/sh") }, "holds no firmware"], [cut, "is damaged"], [[], "Choose a file"]]) {
    await choose(page, file);
    await press(page, "Upgrade");
    await page.getByText(text).waitFor();
  }
  await phone.state({ talking: true });
  await upgrade(page, firmware("46.84.0.1"));
  await page.getByText("A call is in progress").waitFor();
  assert.deepEqual(await calls("kill"), []);
});

test("an upgrade goes step by step, and the page shows the new firmware", async () => {
  const page = await phone.openAs("admin", "settings-upgrade");
  await choose(page, firmware("46.84.0.1", 3 << 20));
  await page.getByText("Version 46.84.0.1, 3.0 MB").waitFor();
  await upgrade(page, firmware("46.84.0.1", 3 << 20));
  await page.getByText("The phone now has firmware 46.84.0.1.").waitFor();
  assert.equal(await page.textContent("#firmware"), "46.84.0.1");
  assert.deepEqual(await calls("upgrade"), ["46.84.0.1"]);
  assert.equal((await calls("kill")).length, 6);
  await phone.assertStored({ PhoneFirmware: "46.84.0.1" });
});

test("the page waits for a phone that restarts, and tells what became of the upgrade behind the login", async () => {
  for (const [file, text] of [[firmware("46.84.0.2"), "The phone now has firmware 46.84.0.2."], [firmware("46.84.0.3", 1000, "fault"), "The upgrade failed. The phone still has firmware 46.84.0.2."]]) {
    await phone.state({ rebootSeconds: 2 });
    const page = await phone.openAs("admin", "settings-upgrade");
    phone.expectProblems("503");
    await upgrade(page, file);
    await page.getByText("Waiting for the phone").waitFor();
    await page.waitForURL(/p=login/);
    await phone.logIn(page, "admin", "admin");
    await page.getByText(text).waitFor();
    await page.reload();
    await page.waitForSelector("html:not(.starting)");
    assert.equal(await page.getByText(text).count(), 0);
  }
});

test("a page that is opened again finds out what happened to its upgrade", async () => {
  const page = await phone.openAs("admin", "settings-upgrade", { timed: true });
  const open = async (record) => {
    await page.evaluate((value) => sessionStorage.setItem("upgrade", JSON.stringify({ before: "46.83.0.120", version: "46.84.0.1", begun: Date.now(), ...value })), record);
    await phone.go(page, "settings-upgrade");
  };
  await open({ phase: "begun" });
  await page.getByText("The upgrade was broken off").waitFor();
  await open({ phase: "sent" });
  await page.getByText("Waiting for the phone").waitFor();
  await phone.configure({ PhoneFirmware: "46.84.0.1" });
  await page.clock.fastForward(3000);
  await page.getByText("The phone now has firmware 46.84.0.1.").waitFor();
  await open({ phase: "sent", before: "46.84.0.1", version: "46.84.0.9" });
  await page.getByText("Waiting for the phone").waitFor();
  await page.clock.fastForward(40_000);
  await page.getByText("The upgrade failed.").waitFor();
});

test("a restart and a reset ask first and wait", async () => {
  const page = await phone.openAs("admin", "settings-upgrade");
  await press(page, "Restart the phone");
  await page.locator("#restart-dialog [data-close]").click();
  assert.deepEqual(await calls("reboot"), []);
  for (const [button, dialog, notice, status] of [["Restart the phone", "restart", "The phone is restarting", "reboot"], ["Reset to the factory settings", "reset", "The phone is being reset", ""]]) {
    await phone.go(page, "settings-upgrade");
    await press(page, button);
    await page.locator(`#${dialog}-dialog [type=submit]`).click();
    await page.getByText(notice).waitFor();
    await phone.assertStored({ UpdateStatus: status });
  }
  assert.deepEqual(await calls("reboot"), ["app_hostapp 0x10101", "factory reset"]);
});

test("a restart in safe mode leads to the login of this page", async () => {
  await phone.state({ rebootSeconds: 3 });
  const page = await phone.openAs("admin", "settings-upgrade");
  phone.expectProblems("503");
  await page.getByText("If upgrades keep failing").click();
  await press(page, "Restart in safe mode");
  await page.locator("#safe-mode-begin").click();
  await page.waitForURL(/p=login.*jumpto=settings-upgrade/);
  assert.equal((await phone.state({})).bootEnvironment.BOOTMODE, "safemode");
  await phone.state({ bootEnvironment: { BOOTMODE: null } });
});

test("a capture starts, stops and is downloaded for tcpdump", async () => {
  const page = await phone.openAs("admin", "settings-upgrade");
  const captured = page.locator("#capture");
  const click = (name) => captured.getByRole("button", { name }).click();
  await click("Download");
  await captured.getByText("There is no capture yet.").waitFor();
  await click("Start");
  await captured.getByText("Running", { exact: true }).waitFor();
  assert.equal(await page.isDisabled("#capture-start"), true);
  await click("Stop");
  await captured.getByText("Stopped", { exact: true }).waitFor();
  const [file] = await Promise.all([page.waitForEvent("download"), click("Download")]);
  assert.match(file.suggestedFilename(), /^46\.83\.0\.120_\d+_\d+_\d+\.pcap$/);
  assert.match(execFileSync("tcpdump", ["-r", await file.path()], { stdio: ["ignore", "pipe", "ignore"] }).toString(), /SIP: OPTIONS/);
});
