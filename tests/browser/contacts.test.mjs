// The local directory: contacts added, changed and found, chosen ones deleted, files compared and mapped before they count.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { join } from "node:path";
import { before, test } from "node:test";
import { answerDialogs, axe, enter, overflow, phone, press, values } from "./phone.mjs";

const list = "p=contactsbasic&q=load&num=1&group=0";
const names = (page) => page.locator(".people tbody tr").evaluateAll((all) => all.map(({ dataset }) => dataset.name));
const told = (page, text, id = "message") => page.locator(`#${id}`).getByText(text).waitFor();
const fileOf = (name, text) => ({ name, mimeType: "text/plain", buffer: Buffer.from(text) });

async function checkAccess(page) {
  for (const [colorScheme, width] of [["dark", 360], ["light", 1200]]) {
    await page.emulateMedia({ colorScheme });
    await page.setViewportSize({ width, height: 800 });
    assert.deepEqual(await axe(page), []);
    assert.ok(await overflow(page) <= 0);
  }
}

before(async () => {
  const { request } = (await phone.openAs("admin")).context();
  const post = (q, form) => request.post(`${phone.origin}/servlet?p=contactsbasic&q=${q}`, { form, maxRedirects: 0 });
  await post("addgroup", { GroupInfo: "Friends", GroupRing: "Auto" });
  for (let i = 1; i <= 23; ++i) await post("add", { DisplayName: `Person ${i}`, OfficeNum: `+49 30${i}`, ConGroup: i % 2 ? "2" : "0" });
  await post("add", { DisplayName: "0 & <b>", OtherNum: "sip:x@y", ConGroup: "0", varAccount: "1" });
});

test("a contact is added: a refusal loses nothing that was typed, the list then shows the contact", async () => {
  const page = await phone.openAs("admin", `${list}#new?number=%2B49%20(0)40-1&name=Person%203`);
  const questions = answerDialogs(page, false);
  await page.locator("#contact").getByLabel("Mobile number").fill("0171 - 5");
  await checkAccess(page);
  await press(page, "Save");
  await told(page, "A contact with this name exists already.", "contact-result");
  await page.keyboard.press("Escape");
  assert.deepEqual(questions, ["Discard the unsaved changes?"]);
  await enter(page, { DisplayName: " Zoë " });
  await press(page, "Save");
  await page.waitForURL(/num=3&group=0$/);
  await told(page, "Saved.");
  assert.equal(await page.locator("tr.marked").getAttribute("data-name"), "Zoë");
  await press(page, "Edit: Zoë");
  assert.deepEqual(await values(page, "DisplayName", "OfficeNum", "MobileNumber"), ["Zoë", "+49401", "01715"]);
});

test("a photo goes to the phone and away again while the rest of the contact is still being typed", async () => {
  const page = await phone.openAs("admin", `${list}#new?name=Face`);
  const buffer = readFileSync(join(phone.root, "phone/resource/sysdata/contact-image/Contact1.png"));
  await page.setInputFiles("#uploadPhoto", { name: "a: b.jpeg", mimeType: "image/png", buffer });
  await press(page, "Upload");
  await told(page, "The photo has been uploaded.", "photo-result");
  assert.deepEqual(await values(page, "DisplayName", "Photo"), ["Face", "Config:a- b.jpg"]);
  await page.click("#photo-delete");
  await page.click("#question-yes");
  await told(page, "The photo has been deleted.", "photo-result");
  assert.deepEqual(await values(page, "DisplayName", "Photo"), ["Face", "Default:default_contact_image.png"]);
});

test("a search covers the whole group; chosen hits are deleted over pages, or not when the list is another by now", async () => {
  const page = await phone.openAs("admin", list);
  await phone.state({ talking: true });
  await enter(page, { search: "x@Y" });
  await told(page, /A call is in progress/, "search-result");
  await phone.state({ talking: false });
  await enter(page, { search: "<B>" });
  await told(page, "Found: 1", "search-result");
  await press(page, "Edit: 0 & <b>");
  await page.waitForSelector("#contact[open]");
  assert.equal(await page.inputValue("#varAccount"), "1");
  await page.keyboard.press("Escape");
  await enter(page, { search: "person 2" });
  await told(page, "Found: 6", "search-result");
  await page.getByLabel("Select: Person 2", { exact: true }).focus();
  for (const key of ["Enter", "ArrowDown", "ArrowDown", "Space", "ArrowDown", "Space"]) await page.keyboard.press(key);
  await page.click("#delete-chosen");
  await checkAccess(page);
  assert.deepEqual(await page.locator("#question li").allTextContents(), ["Person 2", "Person 20", "Person 21"]);
  await page.click("#question-yes");
  await told(page, "Deleted: 3");
  assert.deepEqual(await names(page), ["Person 12", "Person 22", "Person 23"]);
  const form = { record: "1", group: "0" };
  await page.context().request.post(`${phone.origin}/servlet?p=contactsbasic&q=delete`, { form, maxRedirects: 0 });
  await page.getByLabel("Select: Person 12").check();
  await page.selectOption("#move-target", { label: "Blacklist" });
  await press(page, "Move");
  await page.click("#question-yes");
  await told(page, /^The directory has been changed meanwhile/);
  await enter(page, { search: "" });
  await page.getByText("Contacts: 21", { exact: true }).waitFor();
});

test("an XML file is refused for what is wrong in it, or compared with the directory and then takes its place", async () => {
  const page = await phone.openAs("admin", list);
  phone.expectProblems("inline style");  // the browser's own report on broken XML
  const choose = async (text) => {
    await page.setInputFiles("#frameUploadXMLFile", fileOf("a.xml", text));
    await press(page, "Compare");
    await page.waitForSelector("#question[open]");
    return page.locator("#question-details").evaluate((details) => details.textContent);
  };
  const refused = [
    ["<root_contact><contact", "This is not an XML file, or a part of it is missing."],
    ["<root_group/>", "This file holds no contacts: it begins with root_group instead of root_contact."],
    ['<root_contact><contact/><contact display_name="a"/><contact display_name="a"/></root_contact>', "Contacts without a name: 1This contact is there twice: a"],
  ];
  for (const [text, fault] of refused) {
    assert.equal(await choose(text), fault);
    await press(page, "Close");
  }
  const contacts = '<contact display_name="Person 3" office_number="1" group_id_name="Choir"/><contact display_name="New" group_id_name="Choir"/>';
  assert.match(await choose(`<root_contact>${contacts}</root_contact>`),
    /^New contacts: 1NewChanged contacts: 1Person 3 – Office number: \+49 303 → 1; Group: Friends → ChoirContacts that will be deleted: 20.*New groups: 1ChoirGroups that will be deleted: 1Friends$/);
  await page.click("#question-yes");
  await told(page, "Imported.");
  assert.deepEqual(await names(page), ["Person 3", "New"]);
});

test("the columns of a CSV file are guessed and checked before its import, which tells of its success alone", async () => {
  const page = await phone.openAs("admin", list);
  const upload = async (text) => {
    await page.setInputFiles("#frameUploadCVSFile", fileOf("a.csv", text));
    await press(page, "Continue");
    await page.waitForURL(/contacts-preview/);
    await page.waitForSelector("html:not(.starting)");
    await page.waitForFunction(() => document.forms.mapping.elements.arrcol.value);
  };
  const rows = Array.from({ length: 60 }, (_, row) => `Guest ${row},+49 ${row},a@b.example,Hall`);
  await upload(`Full name,Phone,E-mail,Group\n${rows.join("\n")}\nGuest 1,=1+1,,Hall\n`);
  const findings = () => page.locator("#findings li").allTextContents();
  assert.equal(await page.inputValue("[name=arrcol]"), "1,2,0,7");
  assert.deepEqual([await page.locator("tbody tr").count(), await page.isEnabled(".bar .primary")], [50, false]);
  assert.deepEqual(await findings(), ["A name is there twice. Rows: 61", "Office number: letters in a number. Rows: 61",
    "The import adds these groups: Hall", "A spreadsheet would run a cell that begins with =, +, - or @. Check where the file comes from. Rows: 61"]);
  await checkAccess(page);
  await enter(page, { col1: "0", col3: "2" });
  assert.deepEqual((await findings()).slice(0, 2), ["Two columns hold the same: Office number.", "No column holds the name."]);
  await phone.go(page, list);
  await upload(`Name,Number\n${rows.join("\n")}\n`);
  await phone.state({ directory: { busy: true } });
  await press(page, "Import");
  await page.waitForSelector("#notice");
  await phone.state({ directory: { busy: false } });
  await phone.go(page, list);
  assert.equal(await page.textContent("#message"), "");
  await upload(`Name,Number\n${rows.join("\n")}\n`);
  const questions = answerDialogs(page, true);
  await page.getByLabel("Delete them").check();
  await press(page, "Import");
  await told(page, "Imported.");
  assert.deepEqual(questions, ["Delete all contacts of the phone and import the file?"]);
  await page.getByText("Contacts: 60").waitFor();
});
