// The phone's answer on a key of another type: texts in it hold what they like.
import assert from "node:assert/strict";
import test from "node:test";
import { readTypeChange } from "../../rootfs/phone/www/htdocs/js/key-notation.js";

const head = "{controller:{keyindex:3,dktype:16,bValue:1,bLine:1,bLabel:0,bExt:1},";
const parameter = (enabled, text, ...texts) => ({ enabled, text, choices: texts.map((one, index) => ({ value: String(index), text: one })) });

test("texts and choices are read, whatever they hold", () => {
  const rows = [
    ['attrvalue:{strvalue:"101",strline:"0",strlabel:"",strext:""}}', "101", "0", "", "", []],
    ['attrvalue:{strvalue:"a"b,c{d}[e]",strline:"%%",strlabel:"50%% ","\\",strext:"",x:""}}', 'a"b,c{d}[e]', "%", '50% ","\\', '",x:"', []],
    ['attrvalue:{strvalue:"%%%%s",strline:"1",strlabel:"<b>",strext:"1"},linelist:{keys:["0","1"],values:["A"]}","B, {C}: 100%%"]}}',
      "%%s", "1", "<b>", "1", ['A"]}', "B, {C}: 100%"]],
  ];
  for (const [rest, value, line, label, ext, choices] of rows) {
    assert.deepEqual(readTypeChange(head + rest), { keyIndex: 3, type: 16, parameters:
      { value: parameter(true, value), line: parameter(true, line, ...choices), label: parameter(false, label), ext: parameter(true, ext) } }, rest);
  }
  const both = readTypeChange(`${head}attrvalue:{strvalue:"2",strline:"0",strlabel:"",strext:""},` +
    'valuelist:{keys:["0","1","2"],values:["default","float","lock"]},linelist:{keys:["0"],values:["Line 1"]}}');
  assert.deepEqual([both.parameters.value, both.parameters.line], [parameter(true, "2", "default", "float", "lock"), parameter(true, "0", "Line 1")]);
});

test("what can be taken in more than one way, or is no answer, is not read", () => {
  const texts = 'attrvalue:{strvalue:"",strline:"",strlabel:"",strext:""}';
  for (const answer of ["", "<!DOCTYPE html>", head, `${head}attrvalue:{strvalue:""}}`, `${head}${texts}`, `${head}${texts},x}`,
    `${head}${texts},linelist:{keys:["0"],values:["A","B"]}}`, `${head}${texts},linelist:{keys:["x"],values:["A"]}}`]) {
    assert.equal(readTypeChange(answer), null, answer);
  }
});
