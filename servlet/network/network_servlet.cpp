// The page "network": the phone's own connection.
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/network/network_tabs.h"

namespace {

constexpr const char* kShownKeys[] = {"NetworkWanType",
                                      "NetworkWanStaticIp",
                                      "NetworkWanStaticMask",
                                      "NetworkWanStaticGateWay",
                                      "NetworkWanStaticPriDns",
                                      "NetworkWanStaticSecDns",
                                      "NetworkIPAddressMode",
                                      "NetworkIPv6WANType",
                                      "NetworkIPv6WanIP",
                                      "NetworkIPv6Prefix",
                                      "NetworkIPv6WanGateway",
                                      "NetworkIPv6WanPrimaryDNS",
                                      "NetworkIPv6WanSecondaryDNS"};
constexpr const char* kStoredKeys[] = {
    "NetworkWanStaticIp",     "NetworkWanStaticMask",  "NetworkWanStaticGateWay",  "NetworkWanStaticPriDns",
    "NetworkWanStaticSecDns", "NetworkPppoeUser",      "NetworkIPAddressMode",     "NetworkIPv6WanIP",
    "NetworkIPv6Prefix",      "NetworkIPv6WanGateway", "NetworkIPv6WanPrimaryDNS", "NetworkIPv6WanSecondaryDNS"};
constexpr const char* kVlanSwitches[] = {"VlanWanSwitch", "VlanPcSwitch", "VlanDhcpSwitch"};
constexpr const auto& kMenu = kNetworkTabs;
constexpr const char* kItems[] = {"BasicIpaddressMode", "BasicIpv4config", "BasicIpv6config"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kItems));

constexpr std::string_view kPppoe = "1";

// A PPPoE connection has no VLAN of its own; its PIN is a secret.
void storePppoe(HttpRequest* request) {
  for (const char* key : kVlanSwitches) writeConfigOperate(GLOBAL_FILE, key, "0", 0);
  writeSecret(GLOBAL_FILE, "NetworkPppoePin", request->getParameter("NetworkPppoePin"), 0);
}

}  // namespace

class NetworkServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int NetworkServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<NetworkServlet> kActions[] = {
      {"load", &NetworkServlet::loadConfig},
      {"write", &NetworkServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int NetworkServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  list = readConfigOperate(GLOBAL_FILE, "NetworkPppoeUser", list, '"', 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/network.htm", showItemsByLevel(list, request));
  return 1;
}

int NetworkServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  const char* ipv4Type = request->getParameter("ipv4type");
  writeConfigOperate(GLOBAL_FILE, "NetworkWanType", ipv4Type, 0);
  writeConfigOperate(GLOBAL_FILE, "NetworkIPv6WANType", request->getParameter("ipv6type"), 0);
  if (ipv4Type && ipv4Type == kPppoe) storePppoe(request);
  if (!wantsReboot(request)) return loadConfig(request, response);
  broadcastConfigChanged(ConfigArea::kNetwork);
  SetNoticePage(response, true, "network", kRebootingNotice);
  return 1;
}

TMPL_varlist* NetworkServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createNetworkServlet, HttpServlet, NetworkServlet);
