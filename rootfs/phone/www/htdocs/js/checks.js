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

export const checks = {
  ipv4: (text) => ipv4Bytes(text) ? "" : t("Enter an IPv4 address such as 192.168.1.20."),
  ipv6: (text) => isIPv6(text) ? "" : t("Enter an IPv6 address such as 2001:db8::20."),
  netmask: (text) => isNetmask(text) ? "" : t("Enter a subnet mask such as 255.255.255.0."),
  host: (text) => {
    const right = /^[\d.]+$/.test(text) ? ipv4Bytes(text) : isHostName(text) || isIPv6(text.replace(/^\[(.*)\]$/, "$1"));
    return right ? "" : t("Enter a host name or an IP address.");
  },
};

// For the elements of a form by name: what one field must be to another.
export const relations = {
  sameNetwork: (input, fields, names) => {
    const [addressField, maskField] = names.split(" ");
    const [own, other, mask] = [input.value, fields[addressField].value, fields[maskField].value].map(ipv4Number);
    const known = own !== null && other !== null && isNetmask(fields[maskField].value);
    return !known || (own & mask) === (other & mask) ? "" : t("This address is in another network than %1.", fields[addressField].value);
  },
  notBelow: (input, fields, name) => {
    const [last, first] = [ipv4Number(input.value), ipv4Number(fields[name].value)];
    return last === null || first === null || last >= first ? "" : t("The last address comes before the first.");
  },
};
