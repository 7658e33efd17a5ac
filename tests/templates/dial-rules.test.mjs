// What the rules of the dial plan make of a number.
import assert from "node:assert/strict";
import test from "node:test";
import { dial, faultOf, groupsOf } from "../../rootfs/phone/www/htdocs/js/dial-rules.js";

const nothing = { dialNow: [], replace: [], areaCode: { code: "", shortest: 1, longest: 15 }, blocked: [] };

test("a replace rule takes what its prefix fits, and the first that fits is used", () => {
  const rows = [
    // prefix, replacement, number, what is dialled; nothing for a rule that does not fit
    ["00", "+", "0049", "+49"], ["00", "+", "0149"], ["9", "", "9123", "123"], ["9", "", "9", ""],
    ["x", "5", "123", "523"], ["x", "5", "*23"], ["X", "5", "1", "5"],
    ["0.", "7", "0123", "7"], ["0.", "7", "0"], [".", "9", "a*#+", "9"],
    ["[1,5-7]x", "0", "629", "09"], ["[1,5-7]x", "0", "429"], ["[a-c,*]", "0", "*1", "01"], ["[5]", "0", "5", "0"],
    ["9(xxx)", "0571$1", "91234", "05711234"], ["(x)(.)", "$2$1", "123", "231"], ["(x)(.)(1)", "$3$2$1$4", "12121", "12121$4"],
    ["0(.)0(.)", "$1-$2", "01020", "1-20"], ["*12", "5", "*12", "5"], ["a.c", "1", "abc", "1"], ["", "5", "1"], ["(", "5", "("],
    ["1", "2", "+1"], ["..", "7", "1"], ["..", "7", "12", "7"],
  ];
  for (const [prefix, replacement, number, dialled] of rows) {
    const { replaced } = dial(number, "1", { ...nothing, replace: [{ prefix, replacement, accounts: "" }] });
    assert.deepEqual(replaced, dialled === undefined ? null : { rule: 1, number: dialled }, `${prefix} ${replacement} ${number}`);
  }
  const replace = [["1", "a", "2"], ["12", "b", "1, 3"], ["1", "c", ""]].map(([prefix, replacement, accounts]) => ({ prefix, replacement, accounts }));
  assert.deepEqual(["1", "2", "3", "4"].map((account) => dial("12", account, { ...nothing, replace }).number), ["b", "a2", "b", "c2"]);
});

test("a dial-now rule dials the first digits that it fits; then the other rules have their turn", () => {
  const plan = {
    dialNow: [{ rule: "112", accounts: "2" }, { rule: "[2-4]xx", accounts: "" }, { rule: "2x", accounts: "3" }],
    replace: [{ prefix: "3", replacement: "9", accounts: "" }],
    areaCode: { code: "0571", shortest: 2, longest: 3, accounts: "1" },
    blocked: [{ rule: "0571.", accounts: "2" }, { rule: "0571xx", accounts: "" }, { rule: "911", accounts: "1" }],
  };
  const rows = [
    ["112", "1", { areaCode: { number: "0571112" }, number: "0571112" }],
    ["1129", "2", { dialNow: { rule: 1, number: "112", rest: "9" }, number: "112" }],
    ["311", "1", { dialNow: { rule: 2, number: "311", rest: "" }, replaced: { rule: 1, number: "911" }, areaCode: { number: "0571911" }, number: "0571911" }],
    ["31145", "2", { dialNow: { rule: 2, number: "311", rest: "45" }, replaced: { rule: 1, number: "911" }, number: "911" }],
    ["222", "3", { dialNow: { rule: 3, number: "22", rest: "2" }, number: "22" }],
    ["22", "1", { areaCode: { number: "057122" }, blocked: { rule: 2 }, number: "057122" }],
    ["5", "1", { number: "5" }], ["5555", "1", { number: "5555" }], ["*55", "1", { number: "*55" }],
  ];
  for (const [number, account, steps] of rows) {
    assert.deepEqual(dial(number, account, plan), { dialNow: null, replaced: null, areaCode: null, blocked: null, ...steps }, `${number} by ${account}`);
  }
});

test("faults in rules are named; rules with many dots take no time", () => {
  const rows = [
    ["", "0", "x.", "*#+a", "[1]", "[1,2-4,*]", "[a-f,A-F]", "(x)(.)", "([1])"],
    ["bracket", "[", "[1", "1]", "([1)"],
    ["group", "(", ")", "()", "((x))", "(x", "x)", "(x))"],
    ["set", "[]", "[,]", "[1,]", "[12]", "[3-1]", "[1-a]", "[a-Z]", "[1-]", "[x.]", "[ ]", "[(]"],
    ["sign", " ", "1 2", "1-2", "1,2", "$1", "<", "é", "\n", "1\0"],
  ];
  for (const [fault, ...rules] of rows) for (const rule of rules) assert.equal(faultOf(rule), fault, rule);
  assert.deepEqual(["(x)(.)", "x", "(x"].map(groupsOf), [2, 0, 0]);
  const rule = "1.".repeat(2000);
  assert.equal(dial(`${"1".repeat(63)}2`, "1", { ...nothing, blocked: [{ rule: ".1".repeat(25), accounts: "" }, { rule, accounts: "" }] }).blocked, null);
});
