// The page "settings-voice": echo cancellation and the jitter buffer.
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr const char* kShownKeys[] = {"VPMECHO",   "VPMVAD",    "VPMCNG",       "JitterAdaptive",
                                      "JitterMin", "JitterMax", "JitterNominal"};
constexpr const char* kStoredKeys[] = {"VPMECHO", "VPMVAD", "VPMCNG", "JitterMin", "JitterMax", "JitterNominal"};
constexpr auto kMenu = ownTabFirst(kSettingsTabs, "settings-voice");
constexpr const char* kItems[] = {"PhoneEchoCancellation", "PhoneJitterBuffer"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kItems));
}  // namespace

class SettingsVoiceServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SettingsVoiceServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsVoiceServlet> kActions[] = {
      {"load", &SettingsVoiceServlet::loadConfig},
      {"write", &SettingsVoiceServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int SettingsVoiceServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  list = GetTR069Supported(list);
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-voice.htm", showItemsByLevel(list, request));
  return 1;
}

int SettingsVoiceServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  const char* jitterType = request->getParameter("JitterType");
  if (!jitterType) {
    log_log(kWebLog, kLogWarning, "SettingsVoiceServlet::writeConfig() para error\n");
    return 1;
  }
  writeConfigOperate(GLOBAL_FILE, "JitterAdaptive", jitterType, 0);
  broadcastConfigChanged(ConfigArea::kVoice);
  response->sendRedirect("/servlet?p=settings-voice&q=load");
  return 1;
}

TMPL_varlist* SettingsVoiceServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsVoiceServlet, HttpServlet, SettingsVoiceServlet);
