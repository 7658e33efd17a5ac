// The pages of the keys: the soft keys of a call state, their order, and the picture of the screen.
import assert from "node:assert/strict";
import test from "node:test";
import { answerDialogs, axe, enter, phone, press, values } from "./phone.mjs";

const talk = "p=settings-softkey&q=load&callStates=OnTalk.xml:OnTalk";
const lose = "Discard the unsaved changes?";

test("soft keys are arranged, shown as on the screen, saved and restored; a gap can be used again and again", async () => {
  const page = await phone.openAs("admin", talk);
  const questions = answerDialogs(page, false, true, false, true);
  const lists = () => page.locator(".items").evaluateAll((all) => all.map((list) => [...list.children].map((item) => item.dataset.entry).join(" ")));
  const screens = () => page.locator(".softkeys").evaluateAll((all) => all.map((one) => [...one.children].map((key) => key.textContent).join(", ")));
  const delivered = ["Transfer Hold Conference EndCall", "Empty NewCall Swap Line Directory"];
  assert.deepEqual(await lists(), delivered);
  assert.deepEqual(await screens(), ["Transfer, Hold, Conference, End call"]);

  await press(page, "Remove: Hold");
  await press(page, "Use: Empty place");
  assert.deepEqual(await lists(), ["Transfer Conference EndCall Empty", "Empty NewCall Swap Line Directory Hold"]);
  await press(page, "Use: Empty place");
  await page.keyboard.press("Alt+ArrowUp");
  await press(page, "Use: Line selection");
  assert.deepEqual(await screens(), ["Transfer, Conference, End call, More", "Empty place, Empty place, Line selection, More"]);
  assert.deepEqual(await axe(page), []);
  await enter(page, { callStates: "Hold.xml:Hold" });
  assert.deepEqual(await values(page, "callStates"), ["OnTalk.xml:OnTalk"]);
  await enter(page, { CustomSoftkeySwitch: true });
  await phone.assertSaves(page, { CustomSoftkeySwitch: "1" });
  const arranged = ["Transfer Conference EndCall Empty Empty Line", "Empty NewCall Swap Directory Hold"];
  assert.deepEqual(await lists(), arranged);
  await press(page, "Remove: Transfer");
  await page.locator(".items").first().getByRole("button", { name: "Remove: Empty place" }).first().click();
  assert.deepEqual(await lists(), ["Conference EndCall Empty Line", "NewCall Swap Directory Hold Transfer Empty"]);
  await press(page, "Cancel");
  assert.deepEqual(await lists(), arranged);

  await press(page, "Remove: Transfer");
  await enter(page, { callStates: "Hold.xml:Hold" });
  await page.waitForURL(/callStates=Hold.xml/);
  assert.deepEqual(await screens(), ["Transfer, Resume, New call, End call"]);
  await phone.go(page, talk);
  await press(page, "Restore the delivered keys");
  assert.deepEqual(await lists(), arranged);
  await press(page, "Remove: Transfer");
  await press(page, "Restore the delivered keys");
  await page.getByText("Saved.", { exact: true }).waitFor();
  assert.deepEqual(await lists(), [delivered[0], "Empty Line NewCall Swap Directory"]);
  const restore = "Put the keys of this call state back as they were delivered?";
  assert.deepEqual(questions, [lose, lose, restore, restore]);
  await phone.assertStored({ CustomSoftkeySwitch: "1" });
});

test("without a state that is shown, the switch alone is saved; keys of services stay out of sight", async () => {
  const page = await phone.openAs("admin", "p=settings-softkey&q=load&callStates=OnTalk.xml");
  assert.equal(await page.textContent("#no-state"), "Choose a call state.");
  assert.equal(await page.locator("#keys:visible").count(), 0);
  await enter(page, { CustomSoftkeySwitch: false });
  await phone.assertSaves(page, { CustomSoftkeySwitch: "0" });
  assert.equal(await page.textContent("#no-state"), "The phone has no layout for this call state.");
  assert.deepEqual(await axe(page), []);
  await phone.configure({ BSFTActive: "1" });
  await phone.go(page, talk);
  const off = await page.locator(".items").nth(1).textContent();
  for (const name of ["Park", "Group park", "Retrieve"]) assert.ok(off.includes(name), name);
});
