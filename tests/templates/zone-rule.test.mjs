// The phone's answer on a time zone: a rule, or nothing that could be run or shown.
import assert from "node:assert/strict";
import test from "node:test";
import { readZoneRule } from "../../rootfs/phone/www/htdocs/js/zone-rule.js";

test("rules are read, and nothing else is", () => {
  const rows = [
    ["{Type:3}", { kind: "3" }],
    ["{Type:'0',sMonth:'3',sDay:'25',sHour:'2',eMonth:'10',eDay:'28',eHour:'',offset:'-60'}",
      { kind: "0", start: { month: "3", day: "25", hour: "2" }, end: { month: "10", day: "28", hour: "" }, shift: "-60" }],
    ["{Type:'1',sMonth:'3',sWeek:'5',sDay:'7',sHour:'2',eMonth:'10',eWeek:'1',eDay:'6',eHour:'3',offset:''}",
      { kind: "1", start: { month: "3", week: "5", day: "7", hour: "2" }, end: { month: "10", week: "1", day: "6", hour: "3" }, shift: "" }],
    ...["", "{Type:3},alert(1)", "<!DOCTYPE html>", "{Type:'0'}", "{Type:'2',offset:''}",
      "{Type:'0',sMonth:'3'+alert(1)+'',sDay:'25',sHour:'2',eMonth:'10',eDay:'28',eHour:'3',offset:'60'}",
      "{Type:'1',sMonth:'3',sDay:'25',sHour:'2',eMonth:'10',eDay:'28',eHour:'3',offset:'60'}"].map((answer) => [answer, null]),
  ];
  for (const [answer, rule] of rows) assert.deepEqual(readZoneRule(answer), rule, answer);
});
