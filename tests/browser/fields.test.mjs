// Single fields of the pages: what they refuse, which others a choice brings, and what a save then stores.
import assert from "node:assert/strict";
import test from "node:test";
import { assertErrors, enter, phone, visibleFields } from "./phone.mjs";

const required = "This field is required.";
const url = "Enter an address such as https://server.example/folder.";
const code = "Enter a number or name without spaces.";
const numbers = "Enter numbers separated by commas, without spaces, such as 112,911.";
const trusted = "Enter IP addresses separated by commas, without spaces, with * for any part, or the word any.";
const servers = "Enter IP addresses separated by commas, such as 192.168.1.20,192.168.1.21.";
const event = "Enter an address that begins with http:// or https://, without spaces.";
const multicast = "Enter a multicast address such as 224.0.1.75:5010.";
const accounts = "Enter account numbers separated by commas, such as 1,2.";
const tone = "Enter parts such as 425/480 separated by commas, without spaces.";
const ipv4 = "Enter an IPv4 address such as 192.168.1.20.";
const ipv6 = "Enter an IPv6 address such as 2001:db8::20.";
const lan = "This address is not in the same network as ";

// Page, what is stored before, what is entered, the fields that appear then, errors (see assertErrors), what a save stores.
const rows = [
  ["features-audio", {}, { VolumeButtonSoundOn: false, RingerDevice: "2" }, [], [["ReDialtoneNumber", "Enter digits only.", "9a", "9"]],
    { VolumeButtonSoundOn: "0", RingerDevice: "2", ReDialtoneNumber: "9", CallWaitingToneSwitch: "1" }],
  ["features-transfer", {}, { TransferModeViaDsskey: "2" }, [], [], { TransferModeViaDsskey: "2" }],
  ["features-phonelock", { LockEnable: "0" }, { LockEnable: true, PhoneLock: "2" }, ["PhoneLock", "UnlockPIN", "LockTimeout"], [
    ["EmergencyNumberList", numbers, ["112,,911", "112, 911"], "112,*#06#"], ["UnlockPIN", "Enter 1 to 15 digits.", "12a4"],
    ["UnlockPIN", required, "", "********", "0815"], ["LockTimeout", "Enter a whole number from 0 to 3600.", "3601", "3600"],
  ], { LockEnable: "1", PhoneLock: "2", EmergencyNumberList: "112,*#06#", LockTimeout: "3600" }],
  ["features-intercom", { IntercomAllowance: "0" }, { IntercomAllowance: true },
    ["IntercomMuteSwitch", "IntercomToneSwitch", "IntercomBargeSwitch"], []],
  ["features-remotecontrl", {}, {}, [], [
    ["AURILimitIP", trusted, ["10.0.*", "any,10.0.0.1", "10.0.0.256", "10.0.0.1, 10.0.0.2", "10.0.0.1,"],
      "10.0.*.*,192.168.1.7", "ANY", "2001:db8::7"],
    ["PushXMLServerIP", servers, ["10.0.0.*", "host.example"], "10.0.0.1 , 10.0.0.2"]]],
  ["features-general", { GPickupCode: "*77" }, { EnablePSWDial: true, KeyAsSendSwitch: "2", AccountAutoAnswerSwitch: true },
    ["PSWDialPrefix", "PSWDialLength"],
    [["PSWDialPrefix", required, "", "17909"], ["PSWDialLength", required, "", "4"], ["CallNumFilter", "", " ,-()\"'"]],
    { PSWDialPrefix: "17909", KeyAsSendSwitch: "2", "AccountAutoAnswerSwitch@6": "1", GPickupCode: "*77", CallNumFilter: " ,-()\"'" }],
  ["features-actionurl", {}, {}, [], [["AUIncomingCall", event,
    ["ftp://host/x", "host/x", "http://", "http:///x", "http://host/a b", "http://host:99999/", "javascript:alert(1)"],
    "https://$ip:8443/$call_id", "HTTP://host", "", "http://192.168.1.5/?ip=$ip&user=$active_user"]],
  { AUIncomingCall: "http://192.168.1.5/?ip=$ip&user=$active_user" }],
  ["contacts-multicastIP", {}, { ListenAddress7Label: "Hall" }, [], [["ListenAddress7IPAddress", multicast,
    ["192.168.1.1:5010", "224.0.1.75:0", "240.0.0.1", "224.0.1"], "239.255.255.255:65535", "224.0.1.75"]],
  { ListenAddress7IPAddress: "224.0.1.75", ListenAddress7Label: "Hall" }],
  ["contacts-remote", {}, { SearchNameFromRemoteSwitch: true, RemotePhoneBook1Name: "Sales" }, ["SRemoteNameFlashTime"], [
    ["RemotePhoneBook1URL", url, ["http://", "a b"], "https://a.example/b.xml?c=1&amp;d"],
    ["SRemoteNameFlashTime", "Enter a whole number from 120 to 2592000.", "60", "120"]], { SRemoteNameFlashTime: "120" }],
  ["contacts-LDAP", { LDAPpswd: "kept-secret" }, { LDAPSwitch: true }, [], [["LDAPhost", required, "", "ldap.example.com"],
    ["LDAPNameFilter", "Enter a filter such as (|(cn=%)(sn=%)).", ["cn=%", "(cn=%", "(cn=%))", "(a)(b)"], "", "(&(cn=%)(!(sn=%)))"]],
  { LDAPSwitch: "1", LDAPhost: "ldap.example.com", LDAPNameFilter: "(&(cn=%)(!(sn=%)))", LDAPpswd: "kept-secret" }],
  ["settings-areacode", {}, {}, [], [
    ["AreaCode", "Enter digits, *, # and + only.", "05 71", "0571"], ["AreaCodeMinLen", "", "8"], ["AreaCodeMaxLen", "Enter at least 8.", "7"],
    ["AreaCodeMaxLen", "Enter a whole number from 1 to 15.", "16", "8"], ["AreaCodeAccount", accounts, "0,1", "1,2"]]],
  ["settings-tones", { ToneCountry: "Austria", ToneDial: "350/0" }, { ToneCountry: "Custom" },
    "Dial Ring Busy Congestion Callwaiting Dialrecall Record Info Stutter Message Autoanswer".split(" ").map((name) => `Tone${name}`),
    [["ToneDial", tone, ["425", "425/480, 0/480", "1+2+3+4+5/9"], "!350+440/2000,0/480"], ["ToneBusy", "", ""]]],
  ["settings-tones", { ToneCountry: "Custom" }, { ToneDial: "1/1", ToneCountry: "Austria" }, [], [], { ToneDial: "350/0" }],
  ["settings-voice", { JitterAdaptive: "0", JitterNominal: "120" }, { JitterType: "1" }, ["JitterMin", "JitterMax"], [
    ["JitterMin", "", "100"], ["JitterMax", "", "240"], ["JitterNominal", "Enter at least 100.", "90"],
    ["JitterNominal", "Enter at most 240.", "250", "150"],
    ["JitterMax", "Enter at least 100.", "90"], ["JitterMax", "Enter a whole number from 0 to 400.", "401", "400"]]],
  ["settings-voice", { JitterAdaptive: "1" }, { JitterMin: "70", JitterNominal: "80", JitterType: "0" }, [], [],
    { JitterAdaptive: "0", JitterNominal: "80", JitterMin: "60" }],
  ["settings-autop", {}, {}, [], [
    ["AutoProvisionServerURL", url, ["ftp://", "https://a b/", "http://10.0.1.256/", "tftp://a.b:70000/"], "https://a.b:8443/c?d=e"],
    ["AutoProvisionOptionType", "Enter a whole number from 128 to 254.", "66", "160"],
    ["AutoProvisionAESKey16MAC", "Enter exactly 16 characters.", "short", "fedcba9876543210"]]],
  ["account-register&acc=1", {}, { AccountEnable: true }, [], [["server1", "Enter a host name or an IP address.", "not a host", "sip2.example.com"],
    ["port2", "Enter a whole number from 0 to 65535.", "70000", "5061"]], { "AccountEnable@1": "1", "AccountSIPServerHost@1": "sip2.example.com" }],
  ["account-basic&acc=1", {}, { AccountAutoAnswerSwitch: true, AccountRing: "Resource:Ring2.wav" }, [],
    [["AccountAnonymousCallOnCode", code, "* 31", "*31"]],
    { "AccountAutoAnswerSwitch@1": "1", "AccountAnonymousCallOnCode@1": "*31", "AccountRing@1": "Resource:Ring2.wav" }],
  ["account-adv&acc=1", { "AccountDTMFType@1": "1" }, { AccountDTMFPayload: "99", AccountDTMFType: "2", AccountDTMFInfoType: "1" },
    ["AccountDTMFInfoType"], [["AccountDefaultT1", "Enter a number from 0.1 to 10.", "0.05", "0.7"], ["AccountMinRTPPort", "", "12000"],
    ["AccountMaxRTPPort", "Enter a number above 12000.", "12000", "12100"],
  ], { "AccountDefaultT1@1": "0.7", "AccountMaxRTPPort@1": "12100", "AccountDTMFInfoType@1": "1", "AccountDTMFPayload@1": "101" }],
  ["network", {}, { ipv4type: "1" }, ["NetworkPppoeUser", "NetworkPppoePin"], []],
  ["network", {}, { ipv4type: "2" }, ["Ip", "Mask", "GateWay", "PriDns", "SecDns"].map((name) => `NetworkWanStatic${name}`), [
    ["NetworkWanStaticIp", required, ""], ["NetworkWanStaticIp", ipv4, ["192.168.1.256", "192.168.01.2"], "192.168.1.77"],
    ["NetworkWanStaticMask", "Enter a subnet mask such as 255.255.255.0.", "255.0.255.0", "255.255.255.0"],
    ["NetworkWanStaticGateWay", `${lan}192.168.1.77.`, "192.168.2.1", "192.168.1.1"], ["NetworkWanStaticPriDns", ipv4, "one", "", "9.9.9.9"]]],
  ["network", { NetworkIPAddressMode: "1" }, { ipv6type: "1" },
    ["WanIP", "Prefix", "WanGateway", "WanPrimaryDNS", "WanSecondaryDNS"].map((name) => `NetworkIPv6${name}`),
    [["NetworkIPv6WanIP", ipv6, ["1:2:3:4:5:6:7", "1::2::3", "fe80::12345", "::1::", ":::"],
      "2001:db8::20", "::ffff:192.0.2.1", "1:2:3:4:5:6:7:8"]]],
  ["network-pcport", {}, { type: "0" },
    ["RouterIP", "SubnetMask", "EnableDHCP", "DHCPStartIP", "DHCPEndIP"].map((name) => `NetworkLan${name}`), [
    ["NetworkLanDHCPStartIP", "", "10.0.0.50"],
    ["NetworkLanDHCPEndIP", "The last address must not come before the first.", "10.0.0.40"],
    ["NetworkLanDHCPEndIP", `${lan}10.0.0.1.`, "10.0.1.60", "10.0.0.60"]]],
];

test("fields check what is typed, a choice brings others, and what shows is saved", async () => {
  const page = await phone.openAs("admin");
  for (const [name, stored, entered, appear, errors, saved] of rows) {
    await phone.configure(stored);
    await phone.go(page, `q=load&p=${name}`);
    const before = await visibleFields(page);
    await enter(page, entered);
    assert.deepEqual((await visibleFields(page)).filter((field) => !before.includes(field)), appear, name);
    await assertErrors(page, errors);
    if (saved) await phone.assertSaves(page, saved);
  }
});
