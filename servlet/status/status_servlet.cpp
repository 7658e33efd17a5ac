// The page "status": what the phone is and how it is doing.
#include <cstddef>
#include <string>

#include "framework/accounts.h"
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/device.h"
#include "platform/network.h"
#include "servlet/status/status_expansion_modules.h"

namespace {

constexpr const char* kItems[] = {"StatusVersion", "StatusNetwork",       "StatusAccountStatus", "StatusIPv4",
                                  "StatusIPv6",    "StatusNetworkCommon", "StatusExttable"};
constexpr Visibility kVisibility{.items = kItems, .bufferSize = 512};
static_assert(allUnique(kItems));

constexpr std::size_t kVersionSize = 32;
constexpr std::size_t kModeSize = 8;
constexpr std::size_t kNumberSize = 64;
constexpr std::size_t kAddressSize = 256;

struct AddressRow {
  const char* name;
  void (*query)(char* text, std::size_t size);
};
constexpr AddressRow kIPv4Rows[] = {{"wanIPAddress", netGetLocalIPv4},
                                    {"subnetMask", netGetWanNetmaskIPv4},
                                    {"gateway", netGetWanGatewayIPv4},
                                    {"primaryDNS", netGetWanPrimaryDNSIPv4},
                                    {"secondaryDNS", netGetWanSecondaryDNSIPv4}};
constexpr AddressRow kIPv6Rows[] = {{"NetworkIPv6WanPrimaryDNS", netGetWanPrimaryDNSIPv6},
                                    {"NetworkIPv6WanSecondaryDNS", netGetWanSecondaryDNSIPv6}};

std::string address(void (*query)(char* text, std::size_t size)) {
  char text[kAddressSize] = "";
  query(text, sizeof text);
  return text;
}

std::string addressAndPrefix(void (*query)(char* text, std::size_t size)) {
  std::string text = address(query) + "/" + address(netGetWanPrefixIPv6);
  cutText(text, kAddressSize);
  return text;
}

// Adds the text that stands for a key's value, "0" for the first; any other value adds nothing.
template <std::size_t N>
TMPL_varlist* addChoice(TMPL_varlist* list, const char* name, const std::string& value, const char* const (&texts)[N]) {
  const int choice = parseInt(value).value_or(-1);
  if (choice < 0 || choice >= static_cast<int>(N)) return list;
  return TMPL_add_var(list, name, texts[choice], nullptr);
}

TMPL_varlist* addIPv4(TMPL_varlist* list) {
  list = addChoice(list, "wanPortType", readConfigText("NetworkWanType", kModeSize), {"DHCP", "PPPoE", "Static IP"});
  const bool running = readConfigText("NetworkLanEnableDHCP", kModeSize) == "1";
  list = TMPL_add_var(list, "DHCPstatus", running ? "Running" : "Stoped", nullptr);
  for (const AddressRow& row : kIPv4Rows) list = TMPL_add_var(list, row.name, address(row.query).c_str(), nullptr);
  return list;
}

TMPL_varlist* addIPv6(TMPL_varlist* list) {
  list = addChoice(list, "NetworkIPv6WANType", readConfigText("NetworkIPv6WANType", kModeSize), {"DHCP", "Static IP"});
  list = TMPL_add_var(list, "NetworkIPv6WanIP", addressAndPrefix(netGetLocalIPv6).c_str(), "NetworkIPv6WanGateway",
                      addressAndPrefix(netGetWanGatewayIPv6).c_str(), nullptr);
  for (const AddressRow& row : kIPv6Rows) list = TMPL_add_var(list, row.name, address(row.query).c_str(), nullptr);
  return list;
}

TMPL_varlist* addVersions(TMPL_varlist* list) {
  std::string hardware = str_dev_get_hardware_version();
  cutText(hardware, kVersionSize);
  return TMPL_add_var(list, "firmware", readConfigText("PhoneFirmware", kVersionSize).c_str(), "hardware",
                      hardware.c_str(), nullptr);
}

TMPL_varlist* addNetwork(TMPL_varlist* list) {
  const std::string mode = readConfigText("NetworkIPAddressMode", kModeSize);
  list = addChoice(list, "NetworkIPAddressMode", mode, {"IPv4", "IPv6", "IPv4 & IPv6"});
  if (mode == "0" || mode == "2") list = addIPv4(list);
  if (mode == "1" || mode == "2") list = addIPv6(list);
  char mac[kNumberSize] = "";
  const bool known = netGetMACText(mac, sizeof mac);
  const bool bridge = readConfigText("NetworkLanType", kModeSize) == "1";
  return TMPL_add_var(list, "MACAddress", known ? mac : "", "linkStatus",
                      netIsCableConnected() ? "Connected" : "UnConnected", "deviceType", bridge ? "Bridge" : "Router",
                      "lanIPAddress", address(netGetLanIP).c_str(), nullptr);
}

TMPL_varlist* accountRow(int account) {
  std::string enabled, number, host, port, status;
  readConfigOperate(ACCOUNT_FILE, "AccountEnable", enabled, kModeSize, account);
  readConfigOperate(ACCOUNT_FILE, "AccountUserName", number, kNumberSize, account);
  GetSipServerHost(host, port, account);
  MapAccountStatusToString(&status, queryRegistrationState(account));
  return TMPL_add_var(nullptr, "row", std::to_string(account + 1).c_str(), "enabled", enabled.c_str(), "number",
                      number.c_str(), "host", host.c_str(), "status", status.c_str(), nullptr);
}

TMPL_loop* accountRows() {
  TMPL_loop* loop = nullptr;
  for (int account = 0; account < GetAccountMax(); ++account) loop = TMPL_add_varlist(loop, accountRow(account));
  return loop;
}

}  // namespace

class StatusServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int StatusServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<StatusServlet> kActions[] = {{"load", &StatusServlet::loadConfig}};
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int StatusServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = addNetwork(addVersions(nullptr));
  list = TMPL_add_loop(list, "AccountLoop", accountRows());
  list = TMPL_add_loop(list, "extLoop", GetEXPInfo(list));
  response->renderTemplate("/phone/www/WEB-INFO/template/status.htm", showItemsByLevel(list, request));
  return 1;
}

TMPL_varlist* StatusServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createStatusServlet, HttpServlet, StatusServlet);
