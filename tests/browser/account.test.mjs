// The account pages: the state of an account, its password, the selector, and the codecs with their order.
import assert from "node:assert/strict";
import test from "node:test";
import { answerDialogs, axe, enter, phone, press, save, values } from "./phone.mjs";

const lose = "Discard the unsaved changes?";

test("an account's stored password is kept unless another is typed, and its state is followed", async () => {
  await phone.configure({ "AccountPassword@1": "kept-secret", "AccountEnable@1": "0" });
  const page = await phone.openAs("admin", "p=account-register&q=load&acc=1", { timed: true });
  assert.equal(await page.textContent("#AccountStatus"), "Disabled");
  assert.doesNotMatch(await page.content(), /kept-secret/);
  await enter(page, { AccountEnable: true, AccountUserName: "2001", AccountTransport: "2" });
  await phone.assertSaves(page, { "AccountEnable@1": "1", "AccountTransport@1": "2", "AccountPassword@1": "kept-secret" });
  await phone.state({ registration: [2, 3] });
  await page.clock.fastForward(5000);
  await page.locator('#AccountStatus[data-state="Register Failed"]').waitFor();
  assert.equal(await page.textContent("#AccountStatus"), "Registration failed");
  await enter(page, { AccountPassword: "new-one" });
  await phone.assertSaves(page, { "AccountPassword@1": "new-one" });
});

test("the selector opens another account, and asks before changes are lost", async () => {
  const page = await phone.openAs("admin", "p=account-adv&q=load&acc=1");
  await enter(page, { MessageVoiceNumber: "900" });
  await phone.assertSaves(page, { "AccountVoiceMailNumber@1": "900" });
  const questions = answerDialogs(page, false, true);
  await enter(page, { MessageVoiceNumber: "901", acc: "0" });
  assert.deepEqual(await values(page, "acc", "MessageVoiceNumber"), ["1", "901"]);
  await enter(page, { acc: "0" });
  await page.waitForURL(/p=account-adv&q=load&acc=0/);
  assert.deepEqual([questions, await page.inputValue("#MessageVoiceNumber")], [[lose, lose], ""]);
});

test("codecs are put in order by buttons, keys and dragging; none at all is refused, and Cancel takes changes back", async () => {
  const page = await phone.openAs("admin", "p=account-codec&q=load&acc=2");
  const questions = answerDialogs(page);
  const list = (name) => page.locator(`[data-field=${name}] > li > span`).allTextContents();
  const assertOrder = async (...names) => assert.deepEqual(await list("enabled"), names);
  await assertOrder("G722", "PCMU", "PCMA", "G729");
  await press(page, "Move up: PCMU");
  await assertOrder("PCMU", "G722", "PCMA", "G729");
  assert.equal(await page.textContent("main [role=status].only-read"), "PCMU: In use, 1 of 4");
  assert.equal(await page.evaluate(() => document.activeElement.ariaLabel), "Move down: PCMU");  // nothing is above
  await page.keyboard.press("ArrowDown");
  await page.keyboard.press("Alt+ArrowDown");
  await assertOrder("PCMU", "PCMA", "G722", "G729");
  await page.keyboard.press("Alt+ArrowRight");
  await assertOrder("PCMU", "PCMA", "G729");
  assert.equal((await list("disabled")).at(-1), "G722");
  await page.getByText("iLBC").dragTo(page.getByText("PCMA"), { targetPosition: { x: 5, y: 2 } });
  await assertOrder("PCMU", "iLBC", "PCMA", "G729");
  assert.deepEqual(await axe(page), []);
  await phone.assertSaves(page, { "AccountAudio10Switch@2": "1", "AccountAudio10Priority@2": "2", "AccountAudio2Switch@2": "0" });
  await assertOrder("PCMU", "iLBC", "PCMA", "G729");

  for (const name of await list("enabled")) await press(page, `Remove: ${name}`);
  await save(page);
  assert.equal(await page.textContent("#message"), "Not saved. At least one codec must be in use.");
  await enter(page, { acc: "1" });
  assert.deepEqual(questions, [lose]);
  await press(page, "Cancel");
  await assertOrder("PCMU", "iLBC", "PCMA", "G729");
  await enter(page, { acc: "1" });
  await page.waitForURL(/acc=1/);
  assert.deepEqual(questions, [lose]);
});
