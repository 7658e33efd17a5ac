// The phone's answer on a time zone that was chosen, taken apart:
//   {Type:3}                                                              no daylight saving
//   {Type:'0',sMonth:'3',sDay:'25',sHour:'2',eMonth:…,offset:'60'}         by date
//   {Type:'1',sMonth:'3',sWeek:'5',sDay:'7',sHour:'2',eMonth:…,offset:'60'} by week: 5 is the last one, day 1 Monday
// A part that the phone does not know is empty.
const parts = { 0: ["Month", "Day", "Hour"], 1: ["Month", "Week", "Day", "Hour"] };

const notations = Object.entries(parts).map(([kind, names]) => {
  const fields = ["s", "e"].flatMap((edge) => names.map((name) => `${edge}${name}:'(\\d*)'`));
  return { kind, names, notation: new RegExp(`^\\{Type:'${kind}',${fields.join(",")},offset:'(-?\\d*)'\\}$`) };
});

const boundary = (names, values) => Object.fromEntries(names.map((name, index) => [name.toLowerCase(), values[index]]));

// {kind, start, end, shift}: the kind "0", "1" or "3", the boundaries {month, week, day, hour} as texts. Null when the
// answer is in none of these notations.
export function readZoneRule(answer) {
  if (answer === "{Type:3}") return { kind: "3" };
  for (const { kind, names, notation } of notations) {
    const [, ...values] = notation.exec(answer) ?? [];
    if (!values.length) continue;
    const count = names.length;
    return { kind, start: boundary(names, values), end: boundary(names, values.slice(count)), shift: values[2 * count] };
  }
  return null;
}
