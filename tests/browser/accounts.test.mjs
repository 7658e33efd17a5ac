// The account pages: their selector, the basic and advanced settings, the codecs and their order.
import assert from "node:assert/strict";
import test, { after, before } from "node:test";
import { axe, startPhone } from "./phone.mjs";

let phone;
before(async () => { phone = await startPhone(); });
after(() => phone?.stop());

const save = async (page) => {
  await page.locator(".bar .primary").click();
  await page.getByText("Saved.").waitFor();
};
const stored = (account, ...keys) => Promise.all(keys.map((key) => phone.config(key, account)));
const list = (page, name) => page.locator(`[data-field=${name}] > li > span`).allTextContents();

test("each account page saves the account it shows, and its selector asks before changes are lost", async () => {
  const page = await phone.openAs("admin", "p=account-basic&q=load&acc=1");
  await page.check("#AccountAutoAnswerSwitch");
  await page.fill("#AccountAnonymousCallOnCode", "* 31");
  await page.getByText("Enter a number or name without spaces.").waitFor();
  await page.fill("#AccountAnonymousCallOnCode", "*31");
  await page.selectOption("#AccountRing", "Resource:Ring2.wav");
  assert.deepEqual(await phone.messagesDuring(() => save(page)), ["app_hostapp 0x10007 13 0", "0x10007 3 1"]);
  assert.deepEqual(await stored(1, "AccountAutoAnswerSwitch", "AccountAnonymousCallOnCode", "AccountRing"), ["1", "*31", "Resource:Ring2.wav"]);
  assert.deepEqual([await page.inputValue("#AccountRing"), await page.inputValue("#acc")], ["Resource:Ring2.wav", "1"]);

  await phone.go(page, "p=account-adv&q=load&acc=1");
  await page.fill("#MessageVoiceNumber", "900");
  await page.fill("#AccountDefaultT1", "0.05");
  await page.getByText("Enter a number from 0.1 to 10.").waitFor();
  await page.fill("#AccountDefaultT1", "0.7");
  await page.fill("#AccountMinRTPPort", "12000");
  await page.locator(".bar .primary").click();
  assert.equal(await page.textContent("#AccountMaxRTPPort-error"), "Enter a number above 12000.");
  await page.fill("#AccountMaxRTPPort", "12100");
  await page.selectOption("#AccountDTMFType", "2");
  await page.selectOption("#AccountDTMFInfoType", "1");
  assert.equal(await page.isVisible("#AccountDTMFPayload"), false);
  assert.deepEqual(await phone.messagesDuring(() => save(page)), ["0x10007 2 0", "0x10007 3 1"]);
  assert.deepEqual(await stored(1, "AccountVoiceMailNumber", "AccountDefaultT1", "AccountMaxRTPPort", "AccountDTMFInfoType", "AccountDTMFPayload"),
    ["900", "0.7", "12100", "1", "101"]);

  const questions = [];
  page.on("dialog", (dialog) => { questions.push(dialog.message()); return questions.length > 1 ? dialog.accept() : dialog.dismiss(); });
  await page.fill("#MessageVoiceNumber", "901");
  await page.selectOption("#acc", "0");
  assert.equal(await page.inputValue("#acc"), "1");
  await page.selectOption("#acc", "0");
  await page.waitForURL(/p=account-adv&q=load&acc=0/);
  assert.deepEqual([questions, await page.inputValue("#MessageVoiceNumber")], [Array(2).fill("The changes are not saved. Leave them?"), ""]);
  phone.assertNoProblems();
});

test("codecs are put in order by buttons, keys and dragging", async () => {
  const page = await phone.openAs("admin", "p=account-codec&q=load&acc=2");
  assert.deepEqual(await list(page, "enabled"), ["G722", "PCMU", "PCMA", "G729"]);
  await page.getByRole("button", { name: "Move up: PCMU" }).click();
  assert.deepEqual(await list(page, "enabled"), ["PCMU", "G722", "PCMA", "G729"]);
  assert.equal(await page.textContent("main [role=status].only-read"), "PCMU: In use, 1 of 4");
  assert.equal(await page.evaluate(() => document.activeElement.ariaLabel), "Move down: PCMU");  // nothing is above
  await page.keyboard.press("ArrowDown");
  await page.keyboard.press("Alt+ArrowDown");
  assert.deepEqual(await list(page, "enabled"), ["PCMU", "PCMA", "G722", "G729"]);
  await page.keyboard.press("Alt+ArrowRight");
  assert.deepEqual([await list(page, "enabled"), (await list(page, "disabled")).at(-1)], [["PCMU", "PCMA", "G729"], "G722"]);
  await page.getByText("iLBC").dragTo(page.getByText("PCMA"), { targetPosition: { x: 5, y: 2 } });
  assert.deepEqual(await list(page, "enabled"), ["PCMU", "iLBC", "PCMA", "G729"]);
  assert.deepEqual(await axe(page), []);
  assert.deepEqual(await phone.messagesDuring(() => save(page)), ["0x10007 3 2"]);
  assert.deepEqual(await list(page, "enabled"), ["PCMU", "iLBC", "PCMA", "G729"]);
  assert.deepEqual(await stored(2, "AccountAudio10Switch", "AccountAudio10Priority", "AccountAudio2Switch", "AccountAudio2Priority"), ["1", "2", "0", "1"]);
  phone.assertNoProblems();
});

test("a change of the codecs is not lost without a warning, Cancel takes it back, and none at all is refused", async () => {
  const page = await phone.openAs("admin", "p=account-codec&q=load&acc=0");
  const warnings = [];
  page.on("dialog", (dialog) => { warnings.push(dialog.type()); dialog.dismiss(); });
  for (const name of ["G722", "PCMU", "PCMA", "G729"]) await page.getByRole("button", { name: `Remove: ${name}` }).click();
  await page.locator(".bar .primary").click();
  assert.equal(await page.textContent("#message"), "Not saved: at least one codec must be in use.");
  await page.selectOption("#acc", "1");
  assert.deepEqual(warnings, ["confirm"]);
  await page.getByRole("button", { name: "Cancel" }).click();
  assert.deepEqual(await list(page, "enabled"), ["G722", "PCMU", "PCMA", "G729"]);
  await page.selectOption("#acc", "1");
  await page.waitForURL(/acc=1/);
  assert.deepEqual(warnings, ["confirm"]);
});

test("without scripts a save of the codecs loses nothing", async () => {
  const { cookies } = await (await phone.openAs("admin", "p=status&q=load")).context().storageState();
  const page = await phone.open({ javaScriptEnabled: false, storageState: { cookies, origins: [] } });
  await phone.go(page, "p=account-codec&q=load&acc=3");
  await page.locator(".bar .primary").click();
  assert.deepEqual(await list(page, "enabled"), ["G722", "PCMU", "PCMA", "G729"]);
});
