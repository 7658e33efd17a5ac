// The page "network-adv": virtual networks, ports and access to the network.
#include <list>
#include <string>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/network/network_adv_uploads.h"
#include "servlet/network/network_tabs.h"

namespace {

constexpr const char* kShownKeys[] = {"VlanWanSwitch",
                                      "VlanWanVid",
                                      "VlanWanPriority",
                                      "VlanPcSwitch",
                                      "VlanPcVid",
                                      "VlanPcPriority",
                                      "VpnSwitch",
                                      "EthernetWANPortLink",
                                      "EthernetPCPortLink",
                                      "LLDPSwitch",
                                      "LLDPPacketInterval",
                                      "NetworkSIGNALTOS",
                                      "NetworkRTPTOS",
                                      "NetworkMaxRTPPort",
                                      "NetworkMinRTPPort",
                                      "NetworksnmpSwitch",
                                      "NetworksnmpPort",
                                      "NetworksnmpTrustedAddress",
                                      "NetworkhttpPort",
                                      "NetworkhttpsPort",
                                      "Network802_1XMode",
                                      "Network802_1XIdentity",
                                      "NetworkRegSurgePrevention",
                                      "NetworkLanSpanToPCPort",
                                      "VlanDhcpSwitch",
                                      "VlanDhcpOption",
                                      "NetworkIPv6AutoIPConf",
                                      "NetworkWanType",
                                      "HttpServerSwitch",
                                      "HttpsServerSwitch"};
constexpr const char* kStoredKeys[] = {"VlanWanSwitch",
                                       "VlanWanVid",
                                       "VlanWanPriority",
                                       "VlanPcSwitch",
                                       "VlanPcVid",
                                       "VlanPcPriority",
                                       "EthernetWANPortLink",
                                       "EthernetPCPortLink",
                                       "LLDPSwitch",
                                       "LLDPPacketInterval",
                                       "NetworkSIGNALTOS",
                                       "NetworkRTPTOS",
                                       "NetworkMaxRTPPort",
                                       "NetworkMinRTPPort",
                                       "NetworksnmpSwitch",
                                       "NetworksnmpPort",
                                       "NetworksnmpTrustedAddress",
                                       "NetworkhttpPort",
                                       "NetworkhttpsPort",
                                       "Network802_1XIdentity",
                                       "VpnSwitch",
                                       "Network802_1XMode",
                                       "NetworkRegSurgePrevention",
                                       "NetworkLanSpanToPCPort",
                                       "VlanDhcpSwitch",
                                       "VlanDhcpOption",
                                       "NetworkIPv6AutoIPConf",
                                       "HttpServerSwitch",
                                       "HttpsServerSwitch"};
constexpr char kPasswordKey[] = "Network802_1XMD5Passwd";
constexpr auto kMenu = ownTabFirst(kNetworkTabs, "network-advanced");
constexpr const char* kItems[] = {"AdvLLDPItems", "AdvVLANItems",    "AdvVoiceQoS",     "AdvLocalRTPPort",
                                  "AdvWebServer", "Adv8021x",        "AdvSNMPItems",    "AdvOpenVPN",
                                  "AdvPortLink",  "AdvSpanToPcport", "AdvRegSurgePrev", "AdvICMPv6Status"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kItems));

bool hasVpnConfiguration() {
  std::list<std::string> names;
  ReadFiles::FindFiles(names, "/config/openvpn/", ".cnf", false, true);
  return !names.empty();
}

bool exists(const char* file) {
  return GetFileSize(file) >= 0;
}

// The names of the certificates that are there, and of the VPN's configuration.
TMPL_varlist* addFileNames(TMPL_varlist* list) {
  if (exists("/config/dot1x/ca.pem")) list = readConfigOperate(GLOBAL_FILE, "Network802_1CA_FileName", list, 0);
  if (exists("/config/dot1x/client.pem")) list = readConfigOperate(GLOBAL_FILE, "Network802_1Device_FileName", list, 0);
  if (exists("/config/openvpn/vpn.cnf")) list = TMPL_add_var(list, "VPNFileShowName", "vpn.cnf", nullptr);
  return list;
}

void showUploadResult(HttpResponse* response, bool stored) {
  TMPL_varlist* list = stored ? TMPL_add_var(nullptr, "result", "success", nullptr) : nullptr;
  response->renderTemplate("/phone/www/WEB-INFO/template/upload-result.htm", list);
}

}  // namespace

class NetworkAdvServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int upload(HttpRequest* request, HttpResponse* response);
  int uploadCaFile(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int NetworkAdvServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<NetworkAdvServlet> kActions[] = {
      {"load", &NetworkAdvServlet::loadConfig},
      {"write", &NetworkAdvServlet::writeConfig},
      {"upload", &NetworkAdvServlet::upload},
      {"uploadCaFile", &NetworkAdvServlet::uploadCaFile},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int NetworkAdvServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = TMPL_add_var(nullptr, "VPNEnable", hasVpnConfiguration() ? "true" : "false", nullptr);
  list = addFileNames(readConfigOperate(GLOBAL_FILE, kShownKeys, list, 0));
  response->renderTemplate("/phone/www/WEB-INFO/template/network-adv.htm", showItemsByLevel(list, request));
  return 1;
}

int NetworkAdvServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  writeSecret(GLOBAL_FILE, kPasswordKey, request->getParameter(kPasswordKey), 0);
  if (!wantsReboot(request)) return loadConfig(request, response);
  broadcastConfigChanged(ConfigArea::kNetwork);
  SetNoticePage(response, true, "network-adv", kRebootingNotice);
  return 1;
}

int NetworkAdvServlet::upload(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  showUploadResult(response, takeVpnArchive(request));
  return 1;
}

int NetworkAdvServlet::uploadCaFile(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  showUploadResult(response, takeDot1xFile(request));
  return 1;
}

TMPL_varlist* NetworkAdvServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createNetworkAdvServlet, HttpServlet, NetworkAdvServlet);
