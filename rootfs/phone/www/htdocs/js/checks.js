// Checks of what is typed. Each takes the text and answers an error text, or "" when it is right.
import { t } from "./i18n.js";

const ipv4Bytes = (text) => {
  const parts = text.split(".");
  const right = parts.length === 4 && parts.every((part) => /^(0|[1-9]\d{0,2})$/.test(part) && Number(part) < 256);
  return right ? parts.map(Number) : null;
};

// The address as a number, or null when the text is none.
export const ipv4Number = (text) => ipv4Bytes(text)?.reduce((sum, byte) => sum * 256 + byte, 0) ?? null;

function isIPv6(text) {
  if (!/^[\da-f:.]+$/i.test(text) || text.includes(":::")) return false;
  const halves = text.split("::");
  if (halves.length > 2) return false;
  const words = halves.flatMap((half) => (half ? half.split(":") : []));
  const last = words.at(-1) ?? "";
  const embedded = last.includes(".");
  if (embedded && !ipv4Bytes(last)) return false;
  const plain = embedded ? words.slice(0, -1) : words;
  const count = plain.length + (embedded ? 2 : 0);
  return plain.every((word) => /^[\da-f]{1,4}$/i.test(word)) && (halves.length === 2 ? count < 8 : count === 8);
}

const isHostName = (text) =>
  text.length <= 253 && text.split(".").every((label) => /^[\da-z_]([\da-z_-]{0,61}[\da-z_])?$/i.test(label));

function isNetmask(text) {
  const mask = ipv4Number(text);
  return mask !== null && mask > 0 && /^1+0*$/.test(mask.toString(2).padStart(32, "0"));
}

// A server's address, with or without the protocol.
function isUrl(text) {
  const [, host, port = "1"] = /^(?:(?:https?|t?ftp):\/\/)?(?:[^\s/@]+@)?(\[[^\]]+\]|[^\s/:?#@]+)(?::(\d{1,5}))?(?:[/?#]\S*)?$/i.exec(text) ?? [];
  return host !== undefined && checks.host(host) === "" && Number(port) > 0 && Number(port) < 65536;
}

function isMulticast(text) {
  const [, address, port = "1"] = /^([\d.]+)(?::(\d{1,5}))?$/.exec(text) ?? [];
  const first = address && ipv4Bytes(address)?.[0];
  return first >= 224 && first < 240 && Number(port) > 0 && Number(port) < 65536;
}

// A number without the separators that people put into it, and without the (0) that is not dialled behind a country code.
export const tidyNumber = (text) => /^\s*\+?[\d\s()/*#-]+$/.test(text) ? text.replace(/^(\s*\+.*)\(0\)/, "$1").replace(/[\s()/-]/g, "") : text.trim();

// Ports that browsers refuse to open pages at, as the fetch standard lists them.
const blockedPorts = new Set([1, 7, 9, 11, 13, 15, 17, 19, 20, 21, 22, 23, 25, 37, 42, 43, 53, 69, 77, 79, 87, 95, 101, 102, 103,
  104, 109, 110, 111, 113, 115, 117, 119, 123, 135, 137, 139, 143, 161, 179, 389, 427, 465, 512, 513, 514, 515, 526, 530, 531, 532,
  540, 548, 554, 556, 563, 587, 601, 636, 989, 990, 993, 995, 1719, 1720, 1723, 2049, 3659, 4045, 4190, 5060, 5061, 6000, 6566,
  6665, 6666, 6667, 6668, 6669, 6679, 6697, 10080]);

const isOption = (text) => /^\d{1,3}$/.test(text) && Number(text) > 0 && Number(text) < 255;

const dialled = /^[\d*#+]+$/;
const tonePiece = /^!?\d{1,4}(\+\d{1,4}){0,3}\/\d{1,5}$/;

const isTrusted = (text) => isIPv6(text) || (/^[\d.*]+$/.test(text) && ipv4Bytes(text.replaceAll("*", "1")) !== null);

// $variables may stand anywhere behind "http://"; the phone fills in their values.
function isActionUrl(text) {
  const filled = text.replace(/\$[a-z_]+/gi, "1");
  return /^https?:\/\/[^\s/?#]/i.test(filled) && !/\s/.test(text) && URL.canParse(filled);
}

// user@server, with a port perhaps.
function isSipAddress(text) {
  const [, server, port = "1"] = /^[^\s@<>"]+@(\[[^\]]+\]|[^\s@:]+)(?::(\d{1,5}))?$/.exec(text) ?? [];
  return server !== undefined && checks.host(server) === "" && Number(port) > 0 && Number(port) < 65536;
}

// How many bytes a text message has left: the phone takes 1023 for its text and its address.
const bytesOf = (text) => new TextEncoder().encode(text).length;
export const messageRoom = (text, recipient) => 1023 - bytesOf(text) - bytesOf(`sip:${recipient}`);

// LDAP's: a filter in parentheses, which hold filters again.
function isFilter(text) {
  if (!text.startsWith("(")) return false;
  let depth = 0;
  for (const [index, sign] of [...text].entries()) {
    if (sign === "(") depth += 1;
    else if (sign === ")") depth -= 1;
    if (depth < 0 || (depth === 0 && index + 1 < text.length)) return false;
  }
  return depth === 0;
}

export const checks = {
  ipv4: (text) => ipv4Bytes(text) ? "" : t("Enter an IPv4 address such as 192.168.1.20."),
  ipv6: (text) => isIPv6(text) ? "" : t("Enter an IPv6 address such as 2001:db8::20."),
  netmask: (text) => isNetmask(text) ? "" : t("Enter a subnet mask such as 255.255.255.0."),
  host: (text) => {
    const right = /^[\d.]+$/.test(text) ? ipv4Bytes(text) : isHostName(text) || isIPv6(text.replace(/^\[(.*)\]$/, "$1"));
    return right ? "" : t("Enter a host name or an IP address.");
  },
  sipAddress: (text) => isSipAddress(text) && bytesOf(text) < 256 ? "" : t("Enter a SIP address such as 1002@sip.example."),
  url: (text) => isUrl(text) ? "" : t("Enter an address such as https://server.example/folder."),
  multicast: (text) => isMulticast(text) ? "" : t("Enter a multicast address such as 224.0.1.75:5010."),
  number: (text) => /\s/.test(text) ? t("Enter a number or name without spaces.") : "",
  callable: (text) => checks.number(tidyNumber(text)),
  digits: (text) => /^\d+$/.test(text) ? "" : t("Enter digits only."),
  dial: (text) => dialled.test(text) ? "" : t("Enter digits, *, # and + only."),
  dtmf: (text) => /^[\dA-D*#]+$/i.test(text) ? "" : t("Enter digits, *, # and the letters A to D only."),
  pin: (text) => /^\d{1,15}$/.test(text) ? "" : t("Enter 1 to 15 digits."),
  numberList: (text) => text.split(",").every((item) => dialled.test(item)) ? "" : t("Enter numbers separated by commas, without spaces, such as 112,911."),
  accountList: (text) => text.split(",").every((item) => /^[1-9]\d?$/.test(item)) ? "" : t("Enter account numbers separated by commas, such as 1,2."),
  addressList: (text) => text.split(",").map((item) => item.trim()).every((item) => ipv4Bytes(item) || isIPv6(item)) ? "" : t("Enter IP addresses separated by commas, such as 192.168.1.20,192.168.1.21."),
  trustList: (text) => text.toLowerCase() === "any" || text.split(",").every(isTrusted) ? "" : t("Enter IP addresses separated by commas, without spaces, with * for any part, or the word any."),
  actionUrl: (text) => isActionUrl(text) ? "" : t("Enter an address that begins with http:// or https://, without spaces."),
  tone: (text) => text.split(",").every((piece) => tonePiece.test(piece)) ? "" : t("Enter parts such as 425/480 separated by commas, without spaces."),
  filter: (text) => isFilter(text) ? "" : t("Enter a filter such as (|(cn=%)(sn=%))."),
  webPort: (text) => blockedPorts.has(Number(text)) ? t("Browsers do not open pages at this port.") : "",
  optionList: (text) => text.split(",").every(isOption) ? "" : t("Enter option numbers from 1 to 254 separated by commas."),
  key16: (text) => text.length === 16 ? "" : t("Enter exactly 16 characters."),
};

// For the elements of a form by name: what one field must be to another.
export const relations = {
  sameNetwork: (input, fields, names) => {
    const [addressField, maskField] = names.split(" ");
    const [own, other, mask] = [input.value, fields[addressField].value, fields[maskField].value].map(ipv4Number);
    const known = own !== null && other !== null && isNetmask(fields[maskField].value);
    return !known || (own & mask) === (other & mask) ? "" : t("This address is not in the same network as %1.", fields[addressField].value);
  },
  notBelow: (input, fields, name) => {
    const [last, first] = [ipv4Number(input.value), ipv4Number(fields[name].value)];
    return last === null || first === null || last >= first ? "" : t("The last address must not come before the first.");
  },
  sameAs: (input, fields, name) => input.value === fields[name].value ? "" : t("The passwords do not match."),
  atLeast: (input, fields, name) => {
    const { disabled, value } = fields[name];
    return disabled || !value || Number(input.value) >= Number(value) ? "" : t("Enter at least %1.", value);
  },
  atMost: (input, fields, name) => {
    const { disabled, value } = fields[name];
    return disabled || !value || Number(input.value) <= Number(value) ? "" : t("Enter at most %1.", value);
  },
  differs: (input, fields, name) => {
    const { disabled, value } = fields[name];
    return disabled || Number(value) !== Number(input.value) ? "" : t("Both ports must not be the same.");
  },
  outside: (input, fields, names) => {
    const [value, first, last] = [input, ...names.split(" ").map((name) => fields[name])].map((field) => Number(field.value));
    return value < first || value > last ? "" : t("Enter a number below %1 or above %2.", first, last);
  },
  fitsWith: (input, fields, name) => {
    const room = messageRoom(input.value, fields[name].value);
    return room < 0 ? t("The message is too long by %1 bytes.", -room) : "";
  },
  above: (input, fields, name) => {
    const [value, least] = [input, fields[name]].map((field) => Number(field.value));
    return value > least ? "" : t("Enter a number above %1.", least);
  },
};
