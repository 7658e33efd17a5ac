// Checks of what is typed into the fields of the dial plan.
import { checks, relations } from "./checks.js";
import { faultOf, groupsOf } from "./dial-rules.js";
import { t } from "./i18n.js";

const faults = new Map([
  ["bracket", t("Each [ needs a ].")],
  ["group", t("Each ( needs a ), with something in between.")],
  ["set", t("Enter characters or ranges separated by commas between [ and ], such as [1,5-7].")],
  ["sign", t("Enter digits, letters, *, #, + and the signs of rules only, without spaces.")],
]);

checks.dialRule = (text) => faults.get(faultOf(text)) ?? "";
checks.replacement = (text) => /^(?:[\dA-Za-z*#+.]|\$[1-9])+$/.test(text) ? "" : t("Enter digits, letters, *, #, + and $1 to $9 only, without spaces.");

// data-groups-of: the field of the rule whose groups are used.
relations.groupsOf = (input, fields, name) => {
  const groups = groupsOf(fields[name].value);
  const missing = [...input.value.matchAll(/\$([1-9])/g)].map(([, number]) => Number(number)).find((number) => number > groups);
  return missing && !faultOf(fields[name].value) ? t("$%1 stands for a group in parentheses, which the prefix does not have.", missing) : "";
};
