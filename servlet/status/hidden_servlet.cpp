// The page "hidden": switches for those who set up many phones.
#include <algorithm>
#include <array>
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/access/push_xml.h"

namespace {
constexpr const char* kShownKeys[] = {"EthernetWANPortLink",
                                      "EthernetPCPortLink",
                                      "VolumeButtonSoundOn",
                                      "VolumeSendKeySoundOn",
                                      "HeadsetSend",
                                      "OnhookBlindTranSwitch",
                                      "SemiAttendedTranSwitch",
                                      "TranAfterConfExitSwitch",
                                      "SipReservePound",
                                      "SipRFC2543Hold",
                                      "SipUseOutBoundInDialog",
                                      "EnableReplaceAll",
                                      "FactoryConfigCustomEnabled",
                                      "DndForbidden",
                                      "ForwardForbidden",
                                      "Deal180After183",
                                      "LogonWizard",
                                      "BSFTActive",
                                      "RedirectEnable"};
// A save leaves the one key out that takes effect with a restart alone.
constexpr auto kStoredKeys = [] {
  auto keys = std::to_array(kShownKeys);
  std::ranges::replace_if(
      keys, [](std::string_view key) { return key == "BSFTActive"; }, nullptr);
  return keys;
}();
constexpr const char* kItems[] = {"HiddenSettingNetwork", "HiddenPhoneSetting", "HiddenCustomFactoryConfig",
                                  "HiddenForwardActive",  "HiddenDNDActive",    "HiddenPushxml"};
constexpr Visibility kVisibility{.items = kItems, .bufferSize = 1024};
static_assert(allUnique(kShownKeys) && allUnique(kItems));
}  // namespace

class HiddenServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int pushXML(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int HiddenServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<HiddenServlet> kActions[] = {
      {"load", &HiddenServlet::loadConfig},
      {"write", &HiddenServlet::writeConfig},
      {"pushXML", &HiddenServlet::pushXML},
  };
  if (request->getParameter("q")) return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
  response->setContentType("text/html");  // this page alone opens without an action
  return loadConfig(request, response);
}

int HiddenServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/hidden.htm", showItemsByLevel(list, request));
  return 1;
}

int HiddenServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kStoredKeys.data(), static_cast<int>(kStoredKeys.size()), request, 0);
  if (wantsReboot(request)) {
    writeConfigOperate(GLOBAL_FILE, "BSFTActive", request, 0);
    SetNoticePage(response, true, "hidden", kRebootingNotice);
    sysReboot(-1);
    return 1;
  }
  broadcastConfigChanged(ConfigArea::kSip);
  response->sendRedirect("/servlet?p=hidden&q=load");
  return 1;
}

int HiddenServlet::pushXML(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  response->print(ProcessPushXml(request, true) ? "success" : "failed");
  return 1;
}

TMPL_varlist* HiddenServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createHiddenServlet, HttpServlet, HiddenServlet);
