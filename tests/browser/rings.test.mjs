// Distinctive rings and multicast paging: tables of ten rows.
import assert from "node:assert/strict";
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import test, { after, before } from "node:test";
import { startPhone } from "./phone.mjs";

let phone;
before(async () => { phone = await startPhone(); });
after(() => phone?.stop());

const save = async (page) => {
  await page.locator(".bar .primary").click();
  await page.getByText("Saved.").waitFor();
};

test("each text gets its ring; the phone's rings can be played, users' own cannot", async () => {
  mkdirSync(join(phone.root, "data/userdata/sound"), { recursive: true });
  writeFileSync(join(phone.root, "data/userdata/sound/Own.wav"), "x");
  const page = await phone.openAs("admin", "p=settings-ring&q=load");
  const play = page.locator("tr").nth(3).getByRole("button");
  assert.equal(await play.isVisible(), false);
  await page.selectOption("#Ringer3", "Ring2.wav");
  assert.equal(await play.getAttribute("aria-label"), "Play: Ring2.wav");
  const sound = page.waitForResponse(/Ring2\.wav/);
  await play.click();
  assert.match((await sound).headers()["content-type"], /audio\/wav/);
  await page.selectOption("#Ringer3", "Own.wav");
  assert.equal(await play.isVisible(), false);
  await page.fill("#Text3", "internal");
  await page.fill("#Text10", `"<b>`);
  assert.deepEqual(await phone.messagesDuring(() => save(page)), ["0x10007 57 0"]);
  assert.deepEqual(await Promise.all(["AlertInfo2Text", "AlertInfo2Ringer", "AlertInfo9Text", "AlertInfo9Ringer"].map((key) => phone.config(key))),
    ["internal", "5", `"<b>`, "0"]);
  assert.deepEqual([await page.inputValue("#Ringer3"), await page.inputValue("#Ringer10"), await page.inputValue("#Text10")], ["Own.wav", "default-ring.wav", `"<b>`]);
  phone.assertNoProblems();
});

test("the rings that browsers can play are those that the phone comes with", async () => {
  const media = join(phone.root, "phone/www/htdocs/media/sound");
  for (const name of JSON.parse(readFileSync(join(media, "list.json"), "utf8"))) {
    assert.deepEqual(readFileSync(join(media, name)), readFileSync(join(phone.root, "phone/resource/sysdata/sound", name)), name);
  }
});

test("paging addresses are checked and saved", async () => {
  const page = await phone.openAs("admin", "p=contacts-multicastIP&q=load");
  const wrong = "Enter a multicast address such as 224.0.1.75:5010.";
  for (const [text, error] of [["192.168.1.1:5010", wrong], ["224.0.1.75:0", wrong], ["240.0.0.1", wrong], ["224.0.1", wrong], ["239.255.255.255:65535", ""], ["224.0.1.75", ""]]) {
    await page.fill("#ListenAddress7IPAddress", text);
    await page.locator("#ListenAddress7IPAddress").dispatchEvent("change");
    assert.equal(await page.textContent("#ListenAddress7IPAddress-error"), error, text);
  }
  await page.fill("#ListenAddress7Label", "Hall");
  assert.deepEqual(await phone.messagesDuring(() => save(page)), ["0x10007 42 0"]);
  assert.deepEqual(await Promise.all(["ListenAddress7IPAddress", "ListenAddress7Label", "ReceivePriority"].map((key) => phone.config(key))), ["224.0.1.75", "Hall", "10"]);
  assert.deepEqual(await phone.messagesDuring(() => save(page)), []);
  phone.assertNoProblems();
});
