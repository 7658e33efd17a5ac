// The page "network-pcport": the port behind which a computer is connected.
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
constexpr const char* kShownKeys[] = {"NetworkLanType",       "NetworkLanRouterIP",    "NetworkLanSubnetMask",
                                      "NetworkLanEnableDHCP", "NetworkLanDHCPStartIP", "NetworkLanDHCPEndIP",
                                      "NetworkWanType",       "NetworkPCPortSwitch"};
constexpr const char* kStoredKeys[] = {"NetworkLanRouterIP", "NetworkLanSubnetMask", "NetworkLanEnableDHCP",
                                       "NetworkLanDHCPStartIP", "NetworkLanDHCPEndIP"};
constexpr auto kMenu = ownTabFirst(kNetworkTabs, "network-pcport");
constexpr Visibility kVisibility{.menu = kMenu, .bufferSize = 512};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys));
}  // namespace

class NetworkPCPortServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int NetworkPCPortServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<NetworkPCPortServlet> kActions[] = {
      {"load", &NetworkPCPortServlet::loadConfig},
      {"write", &NetworkPCPortServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int NetworkPCPortServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/network-pcport.htm", showItemsByLevel(list, request));
  return 1;
}

int NetworkPCPortServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  writeConfigOperate(GLOBAL_FILE, "NetworkLanType", request->getParameter("type"), 0);
  writeConfigOperate(GLOBAL_FILE, "NetworkPCPortSwitch", request, 0);
  if (!wantsReboot(request)) return loadConfig(request, response);
  broadcastConfigChanged(ConfigArea::kNetwork);
  SetNoticePage(response, true, "network-pcport", kRebootingNotice);
  return 1;
}

TMPL_varlist* NetworkPCPortServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createNetworkPCPortServlet, HttpServlet, NetworkPCPortServlet);
