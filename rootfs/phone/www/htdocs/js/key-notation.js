// The phone's answer to what a key of another type needs, in a notation of its own:
//
//   {controller:{keyindex:3,dktype:13,bValue:1,bLine:1,bLabel:1,bExt:0},
//    attrvalue:{strvalue:"101",strline:"0",strlabel:"",strext:""},linelist:{keys:["0","1"],values:["Line 1","Line 2"]}}
//
// on one line, with every "%" doubled. Texts stand between the quotes as they are, whatever they hold, so each ends
// where what follows it begins.

const head = /^\{controller:\{keyindex:(-?\d+),dktype:(-?\d+),bValue:([01]),bLine:([01]),bLabel:([01]),bExt:([01])\},attrvalue:\{strvalue:"/;
const listNames = ["valuelist", "labellist", "linelist", "extlist"];
const listStart = (name) => `,${name}:{keys:["`;

class Unreadable extends Error {}

// Where one of the marks comes first; -1 when none does.
const firstOf = (text, marks) => Math.min(...marks.map((mark) => text.indexOf(mark)).filter((at) => at >= 0), Infinity);

// "NUMBER","NUMBER"…"],values:["TEXT","TEXT"…"]} as [{value, text}]
function readChoices(list) {
  const match = /^((?:-?\d+",")*-?\d+)"\],values:\["(.*)"\]\}$/s.exec(list);
  if (!match) throw new Unreadable();
  const keys = match[1].split('","');
  const texts = match[2].split('","');
  if (keys.length !== texts.length) throw new Unreadable();  // a text holds what divides texts
  return keys.map((value, index) => ({ value, text: texts[index] }));
}

// What stands behind the texts: lists in their order, each ended by the next one or by the end.
function readLists(text) {
  const lists = {};
  let rest = text;
  listNames.forEach((name, index) => {
    if (!rest.startsWith(listStart(name))) return;
    const next = listNames.slice(index + 1).map((later) => `"]}${listStart(later)}`);
    const end = Math.min(firstOf(rest, next) + '"]}'.length, rest.length);
    lists[name] = readChoices(rest.slice(listStart(name).length, end));
    rest = rest.slice(end);
  });
  if (rest) throw new Unreadable();
  return lists;
}

function read(answer) {
  const match = head.exec(answer);
  if (!match || !answer.endsWith("}")) throw new Unreadable();
  const [, keyIndex, type, ...flags] = match;
  let rest = answer.slice(match[0].length, -1);
  const until = (marks) => {
    const at = firstOf(rest, marks);
    if (at === Infinity) throw new Unreadable();
    const text = rest.slice(0, at);
    rest = rest.slice(at);
    return text;
  };
  const texts = ['",strline:"', '",strlabel:"', '",strext:"'].map((mark) => {
    const text = until([mark]);
    rest = rest.slice(mark.length);
    return text;
  });
  const listed = firstOf(rest, listNames.map((name) => `"}${listStart(name)}`));
  texts.push(rest.slice(0, Math.min(listed, rest.length - 2)));
  rest = rest.slice(texts[3].length);
  if (!rest.startsWith('"}')) throw new Unreadable();
  const lists = readLists(rest.slice(2));
  const [value, line, label, ext] = [0, 1, 2, 3].map((at) => (
    { enabled: flags[at] === "1", text: texts[at], choices: lists[["valuelist", "linelist", "labellist", "extlist"][at]] ?? [] }));
  return { keyIndex: Number(keyIndex), type: Number(type), parameters: { value, line, label, ext } };
}

// {keyIndex, type, parameters: {value, line, label, ext}}, each parameter {enabled, text, choices: [{value, text}]}.
// Null when the answer is not in that notation, or its texts can be taken in more than one way.
export function readTypeChange(answer) {
  try {
    return read(answer.replaceAll("%%", "%"));
  } catch (error) {
    if (error instanceof Unreadable) return null;
    throw error;
  }
}
