// The dial plan: rules that are added, edited and deleted, numbers that are tried, and the row of its pages.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import test from "node:test";
import { answerDialogs, assertErrors, axe, enter, overflow, phone, press, save } from "./phone.mjs";

const file = (name) => join(phone.root, "config/data", name);
const store = (name, ...rules) => writeFileSync(file(name), `<any>${rules.map((attributes) => `<Data ${attributes}/>`).join("")}</any>`);
const attributes = (name) => [...readFileSync(file(name), "utf8").matchAll(/ (?!version)\w+=["']([^"']*)/g)].map(([, value]) => value).join(" ");
const rows = (page) => page.locator("tbody tr").evaluateAll((all) => all.map((row) => [...row.cells].slice(1, -1).map((cell) => cell.textContent).join("|")));
const told = async (page, text) => { await page.locator("#message", { hasText: text }).waitFor(); };
// A save reloads the page, which may tell of an earlier one until then.
const saveRule = async (page) => {
  const loaded = page.waitForEvent("load");
  await press(page, "Save");
  await loaded;
  await page.waitForSelector("html:not(.starting)");
  await told(page, "Saved.");
};
const tried = async (page, number, account = "1") => {
  await page.fill("#try-number", "");
  await enter(page, { "try-account": account, "try-number": number });
  await page.locator("#try-result li").first().waitFor();
  return (await page.locator("#try-result li").allTextContents()).map((text) => text.replace(/[\u2066\u2069]/g, ""));
};

test("rules are added, edited and deleted, with errors at their fields, and refusals in the dialog", async () => {
  const page = await phone.openAs("admin", "settings-dialplan");
  const questions = answerDialogs(page, false, true);
  assert.ok(await page.isVisible("#no-rules") && await page.isHidden("table"));
  for (const [prefix, replacement, accounts] of [["00", "+", ""], ["9(xx)", "0571$1", "1,2"], ["[1,2", "", ""]]) {
    await press(page, "Add a rule");
    await enter(page, { editPrefix: prefix, editReplace: replacement, editAccount: accounts });
    if (prefix === "[1,2") await press(page, "Save");
    else await saveRule(page);
  }
  assert.deepEqual(await axe(page), []);
  await assertErrors(page, [
    ["editPrefix", "Each [ needs a ].", ["[1", "x]"], "[1,2]", "(xx).", "+*#"],
    ["editPrefix", "This field is required.", ""],
    ["editPrefix", "Enter digits, letters, *, #, + and the signs of rules only, without spaces.", ["1 2", "0-9"], "9(x)"],
    ["editReplace", "Enter digits, letters, *, #, + and $1 to $9 only, without spaces.", ["1 2", "$0", "$"], "", "5$1"],
    ["editReplace", "$2 stands for a group in parentheses, which the prefix does not have.", "$1$2"],
    ["editAccount", "Enter account numbers separated by commas, such as 1,2.", ["a", "1,"], "1,2"],
  ]);
  await phone.state({ talking: true });
  await enter(page, { editPrefix: "7", editReplace: "8" });
  await press(page, "Save");
  await page.getByRole("alert").getByText("A call is in progress").waitFor();
  assert.equal(await page.inputValue("#editPrefix"), "7");
  await phone.state({ talking: false });
  await saveRule(page);
  assert.deepEqual(await rows(page), ["1|00|+|All", "2|9(xx)|0571$1|1,2", "3|7|8|1,2"]);

  await press(page, "Edit: 00");
  assert.equal(await page.inputValue("#editReplace"), "+");
  await enter(page, { editReplace: "\"<b>" });
  await page.keyboard.press("Escape");  // asked and refused: the dialog stays
  await enter(page, { editReplace: "" });
  await saveRule(page);
  await page.getByLabel("Select: 00").check();
  await page.getByLabel("Select: 7").check();
  await press(page, "Delete");
  await told(page, "Deleted: 2");
  assert.deepEqual(questions, ["Discard the unsaved changes?", "Delete the 2 selected rules?"]);
  assert.equal(attributes("DialPlan.xml"), "9(xx) 0571$1 1,2");
});

test("what somebody else changed meanwhile is neither deleted nor overwritten", async () => {
  store("DialNow.xml", "DialNowRule='[2-8]xx' LineID=''", "DialNowRule='1-2' LineID='2'");
  const page = await phone.openAs("admin", "settings-dialnow");
  answerDialogs(page, true);
  assert.deepEqual(await rows(page), ["1|[2-8]xx|All", "2|1-2This fits no number.|2"]);
  store("DialNow.xml", "DialNowRule='new' LineID=''", "DialNowRule='[2-8]xx' LineID=''");
  await page.getByLabel("Select all").check();
  await press(page, "Delete");
  await told(page, "The rules have been changed meanwhile.");
  await press(page, "Edit: 1-2");
  await enter(page, { editRule: "12" });
  await press(page, "Save");
  await page.getByRole("alert").getByText("The rules have been changed meanwhile.").waitFor();
  assert.equal(attributes("DialNow.xml"), "new  [2-8]xx ");
});

test("a full list takes no rule, and phones with one account have no column of it", async () => {
  store("DialNow.xml", ...Array.from({ length: 100 }, (_, index) => `DialNowRule='${index}' LineID=''`));
  const page = await phone.openAs("admin", "settings-dialnow");
  assert.ok(await page.getByRole("button", { name: "Add a rule" }).isDisabled());
  assert.equal(await page.textContent("#full"), "The list is full. It takes 100 rules.");
  await phone.state({ phoneType: 19 });
  await phone.go(page, "settings-dialnow");
  assert.deepEqual((await rows(page)).slice(-1), ["100|99"]);
  await press(page, "Edit: 99");
  assert.deepEqual(await page.locator("dialog label").allTextContents(), ["Rule"]);
  await phone.state({ phoneType: 46 });
});

test("a number is tried on all rules, stored or still being typed", async () => {
  store("DialPlan.xml", "Prefix='00' Replace='+' LineID=''", "Prefix='9(x.)' Replace='$1' LineID='2'");
  store("DialNow.xml", "DialNowRule='4xx' LineID=''");
  store("DialBlock.xml", "rule='+900.' lines=''");
  await phone.configure({ AreaCode: "0571", AreaCodeMinLen: "4", AreaCodeMaxLen: "6", AreaCodeAccount: "1" });
  const page = await phone.openAs("admin", "settings-dialplan");
  assert.deepEqual(await tried(page, "00 49-1"), ["Replace rule 1 makes it +491.", "Dialled: +491"]);
  assert.deepEqual(await page.locator("tr.taking th").allTextContents(), ["1"]);
  assert.deepEqual(await tried(page, "91234", "2"), ["Replace rule 2 makes it 1234.", "Dialled: 1234"]);
  assert.deepEqual(await tried(page, "45678"), ["Dial-now rule 1 dials as soon as 456 is typed, without 78.", "Dialled: 456"]);
  assert.deepEqual(await tried(page, "009001"), ["Replace rule 1 makes it +9001.", "Not dialled: +9001 is blocked by entry 1."]);
  assert.deepEqual(await tried(page, "5555"), ["The area code makes it 05715555.", "Dialled: 05715555"]);
  assert.deepEqual(await tried(page, "411"), ["Dial-now rule 1 dials it at once.", "Dialled: 411"]);
  assert.deepEqual(await tried(page, "123"), ["No rule changes it.", "Dialled: 123"]);
  assert.deepEqual(await axe(page), []);
  await phone.go(page, "settings-blackout");
  await enter(page, { BlackOut_2: "123", Account_2: "1" });
  assert.deepEqual(await tried(page, "123"), ["No rule changes it.", "Not dialled: 123 is blocked by entry 2."]);
  await save(page);
  await told(page, "Saved.");
  assert.ok(page.url().includes("q=load"));
  assert.equal(attributes("DialBlock.xml"), `+900.  123 1${"  ".repeat(8)}`);
  await phone.go(page, "settings-areacode");
  await enter(page, { AreaCode: "030", AreaCodeMinLen: "3" });
  assert.deepEqual(await tried(page, "555"), ["The area code makes it 030555.", "Dialled: 030555"]);
  await page.setViewportSize({ width: 360, height: 740 });
  assert.ok(await overflow(page) <= 0);
});

test("the pages stand in a row under one entry of the menu, as far as one may see them", async () => {
  phone.expectProblems("403");
  await phone.configure({ "settings-dialplan": "1", "replace-rule": "1", "dial-now": "2", "area-code": "0", "block-out": "3" });
  const shown = async (user, name) => {
    const page = await phone.openAs(user, name);
    const [current, row] = await Promise.all([page.locator("nav [aria-current]:visible").allTextContents(), page.locator("main [data-tab]:visible").allTextContents()]);
    return [current, row, await page.locator("main [aria-current]:visible").allTextContents(), await page.textContent("#message")];
  };
  const all = ["Replace rules", "Dial-now rules", "Area code"];
  const above = "Your user level may not see this page.";
  assert.deepEqual(await shown("admin", "settings-dialnow"), [["Settings", "Dial plan"], all, ["Dial-now rules"], ""]);
  assert.deepEqual(await shown("admin", "settings-blackout"), [["Settings", "Dial plan"], all, [], above]);
  assert.deepEqual(await shown("var", "settings-dialplan"), [["Settings", "Dial plan"], all.slice(0, 2), ["Replace rules"], ""]);
  assert.deepEqual(await shown("user", "settings-dialnow"), [["Settings"], ["Dial-now rules"], ["Dial-now rules"], above]);
});
