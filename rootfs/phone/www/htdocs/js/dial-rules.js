// The notation of the dial plan's rules, and what becomes of a number that is dialled.
//
//   x       one digit                       .      one or more characters of any kind
//   [1,5-7] one of these characters         (...)  a group, which $1 to $9 stand for in a replacement
// Any other character stands for itself.
const literal = /^[\dA-Za-z*#+]$/;

class Fault extends Error {}

const kindOf = (sign) => ["0-9", "a-z", "A-Z"].find((range) => new RegExp(`^[${range}]$`).test(sign));

// "1,3,5-7" as a list of characters from and to.
function rangesOf(text) {
  return text.split(",").map((item) => {
    const [, first, last = first] = /^(.)(?:-(.))?$/.exec(item) ?? [];
    const isRange = first !== last;
    if (!first || !literal.test(first) || !literal.test(last)) throw new Fault("set");
    if (isRange && (!kindOf(first) || kindOf(first) !== kindOf(last) || first > last)) throw new Fault("set");
    return [first, last];
  });
}

// The parts of a rule: {fits} for one character, {more}, {open} and {close}. Throws a Fault that names what is wrong.
function partsOf(rule) {
  const parts = [];
  let group = -1;
  for (let at = 0; at < rule.length; ++at) {
    const sign = rule[at];
    if (sign === "x" || sign === "X") {
      parts.push({ fits: (one) => /^\d$/.test(one) });
    } else if (sign === ".") {
      parts.push({ more: true });
    } else if (sign === "[") {
      const end = rule.indexOf("]", at);
      if (end < 0) throw new Fault("bracket");
      const ranges = rangesOf(rule.slice(at + 1, end));
      parts.push({ fits: (one) => ranges.some(([first, last]) => first <= one && one <= last) });
      at = end;
    } else if (sign === "(") {
      if (group >= 0) throw new Fault("group");
      group = parts.push({ open: true });
    } else if (sign === ")") {
      if (group < 0 || group === parts.length) throw new Fault("group");
      parts.push({ close: true });
      group = -1;
    } else if (literal.test(sign)) {
      parts.push({ fits: (one) => one === sign });
    } else {
      throw new Fault(sign === "]" ? "bracket" : "sign");
    }
  }
  if (group >= 0) throw new Fault("group");
  return parts;
}

// "bracket", "group", "set" or "sign" for a rule that is not in the notation, "" for one that is.
export function faultOf(rule) {
  try {
    partsOf(rule);
    return "";
  } catch (error) {
    if (error instanceof Fault) return error.message;
    throw error;
  }
}

export const groupsOf = (rule) => (faultOf(rule) ? 0 : partsOf(rule).filter(({ open }) => open).length);

// Where a part that begins at a position of the number may end; as far on as it can first.
function endsOf(part, number, at) {
  if (part.fits) return at < number.length && part.fits(number[at]) ? [at + 1] : [];
  if (part.more) return Array.from({ length: number.length - at }, (_, back) => number.length - back);
  return [at];
}

// The text that a rule fits and those of its groups; null when it does not fit. It fits all of the number, or, with
// `isPrefix`, its beginning.
function match(rule, number, isPrefix = false) {
  if (!rule || faultOf(rule)) return null;
  const parts = partsOf(rule);
  const tried = new Set();  // without which rules with many dots would take for ever
  // Where the parts from one on begin, and where the last one ends.
  const walk = (index, at) => {
    if (index === parts.length) return isPrefix || at === number.length ? [at] : null;
    const place = index * (number.length + 1) + at;
    if (tried.has(place)) return null;
    tried.add(place);
    for (const end of endsOf(parts[index], number, at)) {
      const rest = walk(index + 1, end);
      if (rest) return [at, ...rest];
    }
    return null;
  };
  const places = walk(0, 0);
  if (!places) return null;
  const closing = (index) => places[parts.findIndex(({ close }, other) => close && other > index)];
  const groups = parts.flatMap(({ open }, index) => open ? [number.slice(places[index], closing(index))] : []);
  return { text: number.slice(0, places.at(-1)), groups };
}

// "" stands for all accounts, "1,3" for some.
const isFor = (accounts = "", account) => !accounts.trim() || accounts.split(",").some((one) => one.trim() === account);

const rank = (index) => index < 0 ? null : index + 1;

// The first digits that a dial-now rule fits are dialled at once.
function dialNow(number, account, rules) {
  for (let length = 1; length <= number.length; ++length) {
    const typed = number.slice(0, length);
    const rule = rank(rules.findIndex((one) => isFor(one.accounts, account) && match(one.rule, typed)));
    if (rule) return { rule, number: typed, rest: number.slice(length) };
  }
  return null;
}

// The first rule whose prefix fits is used; what follows the prefix stays.
function replaced(number, account, rules) {
  const rule = rank(rules.findIndex((one) => isFor(one.accounts, account) && match(one.prefix, number, true)));
  if (!rule) return null;
  const { prefix, replacement } = rules[rule - 1];
  const { text, groups } = match(prefix, number, true);
  const filled = replacement.replace(/\$([1-9])/g, (mark, group) => groups[group - 1] ?? mark);
  return { rule, number: filled + number.slice(text.length) };
}

function withAreaCode(number, account, { code, shortest, longest, accounts }) {
  const isLocal = /^\d+$/.test(number) && number.length >= shortest && number.length <= longest;
  return code && isLocal && isFor(accounts, account) ? { number: code + number } : null;
}

// What the phone makes of a number that is typed for an account (a text): `dialNow` {rule, number, rest}, `replaced`
// {rule, number}, `areaCode` {number} and `blocked` {rule}, each null when it does nothing, and the `number` in the end.
// Rules are named by their numbers, from 1. plan: {dialNow: [{rule, accounts}], replace: [{prefix, replacement, accounts}],
// areaCode: {code, shortest, longest, accounts}, blocked: [{rule, accounts}]}.
export function dial(typed, account, plan) {
  const steps = { dialNow: dialNow(typed, account, plan.dialNow) };
  let number = steps.dialNow?.number ?? typed;
  steps.replaced = replaced(number, account, plan.replace);
  number = steps.replaced?.number ?? number;
  steps.areaCode = withAreaCode(number, account, plan.areaCode);
  number = steps.areaCode?.number ?? number;
  const rule = rank(plan.blocked.findIndex((one) => isFor(one.accounts, account) && match(one.rule, number)));
  return { ...steps, blocked: rule && { rule }, number };
}
