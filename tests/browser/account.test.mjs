// The account pages: their selector, the settings, the codecs and their order.
import assert from "node:assert/strict";
import test from "node:test";
import { answerDialogs, assertErrors, axe, phone, save, values } from "./phone.mjs";

const list = (page, name) => page.locator(`[data-field=${name}] > li > span`).allTextContents();
const lose = "Discard the unsaved changes?";

test("an account is registered, its stored password kept, its state followed", async () => {
  await phone.configure({ "AccountPassword@1": "kept-secret", "AccountEnable@1": "0" });
  const page = await phone.openTimed("admin", "p=account-register&q=load&acc=1");
  assert.equal(await page.textContent("#AccountStatus"), "Disabled");
  assert.doesNotMatch(await page.content(), /kept-secret/);
  await page.check("#AccountEnable");
  await page.fill("#AccountUserName", "2001");
  await assertErrors(page, [
    ["server1", "not a host", "Enter a host name or an IP address."], ["server1", "sip2.example.com", ""],
    ["port2", "70000", "Enter a whole number from 0 to 65535."], ["port2", "5061", ""],
  ]);
  await page.selectOption("#AccountTransport", "2");
  await phone.assertSaves(page, ["0x10007 3 1"], { "AccountEnable@1": "1", "AccountUserName@1": "2001", "AccountSIPServerHost@1": "sip2.example.com",
    "AccountTransport@1": "2", "AccountPassword@1": "kept-secret" });
  assert.deepEqual(await values(page, "port2", "AccountTransport"), ["5061", "2"]);
  await phone.state({ registration: [2, 3] });
  await page.clock.fastForward(5000);
  await page.locator('#AccountStatus[data-state="Register Failed"]').waitFor();
  assert.equal(await page.textContent("#AccountStatus"), "Registration failed");
  await page.fill("#AccountPassword", "new-one");
  await phone.assertSaves(page, ["0x10007 3 1"], { "AccountPassword@1": "new-one" });
});

test("each account page saves the account it shows, and its selector asks before changes are lost", async () => {
  const page = await phone.openAs("admin", "p=account-basic&q=load&acc=1");
  await page.check("#AccountAutoAnswerSwitch");
  await assertErrors(page, [["AccountAnonymousCallOnCode", "* 31", "Enter a number or name without spaces."], ["AccountAnonymousCallOnCode", "*31", ""]]);
  await page.selectOption("#AccountRing", "Resource:Ring2.wav");
  await phone.assertSaves(page, ["app_hostapp 0x10007 13 0", "0x10007 3 1"],
    { "AccountAutoAnswerSwitch@1": "1", "AccountAnonymousCallOnCode@1": "*31", "AccountRing@1": "Resource:Ring2.wav" });
  assert.deepEqual(await values(page, "AccountRing", "acc"), ["Resource:Ring2.wav", "1"]);

  await phone.go(page, "p=account-adv&q=load&acc=1");
  await page.fill("#MessageVoiceNumber", "900");
  await assertErrors(page, [["AccountDefaultT1", "0.05", "Enter a number from 0.1 to 10."], ["AccountDefaultT1", "0.7", ""],
    ["AccountMinRTPPort", "12000", ""], ["AccountMaxRTPPort", "12000", "Enter a number above 12000."], ["AccountMaxRTPPort", "12100", ""]]);
  await page.selectOption("#AccountDTMFType", "2");
  await page.selectOption("#AccountDTMFInfoType", "1");
  assert.equal(await page.isVisible("#AccountDTMFPayload"), false);
  await phone.assertSaves(page, ["0x10007 2 0", "0x10007 3 1"], { "AccountVoiceMailNumber@1": "900", "AccountDefaultT1@1": "0.7",
    "AccountMaxRTPPort@1": "12100", "AccountDTMFInfoType@1": "1", "AccountDTMFPayload@1": "101" });

  const questions = answerDialogs(page, false, true);
  await page.fill("#MessageVoiceNumber", "901");
  await page.selectOption("#acc", "0");
  assert.deepEqual(await values(page, "acc", "MessageVoiceNumber"), ["1", "901"]);
  await page.selectOption("#acc", "0");
  await page.waitForURL(/p=account-adv&q=load&acc=0/);
  assert.deepEqual([questions, await page.inputValue("#MessageVoiceNumber")], [[lose, lose], ""]);
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
  await phone.assertSaves(page, ["0x10007 3 2"], { "AccountAudio10Switch@2": "1", "AccountAudio10Priority@2": "2", "AccountAudio2Switch@2": "0",
    "AccountAudio2Priority@2": "1" });
  assert.deepEqual(await list(page, "enabled"), ["PCMU", "iLBC", "PCMA", "G729"]);
});

test("a change of the codecs is not lost without a warning, Cancel takes it back, and none at all is refused", async () => {
  const page = await phone.openAs("admin", "p=account-codec&q=load&acc=0");
  const questions = answerDialogs(page);
  for (const name of ["G722", "PCMU", "PCMA", "G729"]) await page.getByRole("button", { name: `Remove: ${name}` }).click();
  await save(page);
  assert.equal(await page.textContent("#message"), "Not saved. At least one codec must be in use.");
  await page.selectOption("#acc", "1");
  assert.deepEqual(questions, [lose]);
  await page.getByRole("button", { name: "Cancel" }).click();
  assert.deepEqual(await list(page, "enabled"), ["G722", "PCMU", "PCMA", "G729"]);
  await page.selectOption("#acc", "1");
  await page.waitForURL(/acc=1/);
  assert.deepEqual(questions, [lose]);
});
