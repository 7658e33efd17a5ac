#include "servlet/settings/settings_voice_servlet.h"

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/page_factory.h"
#include "framework/page_utils.h"
#include "framework/phone_messages.h"
#include "framework/visibility.h"
#include "platform/log.h"

namespace {
constexpr const char* kShownKeys[] = {"VPMECHO",   "VPMVAD",    "VPMCNG",       "JitterAdaptive",
                                      "JitterMin", "JitterMax", "JitterNominal"};
constexpr const char* kStoredKeys[] = {"VPMECHO", "VPMVAD", "VPMCNG", "JitterMin", "JitterMax", "JitterNominal"};
constexpr const char* kMenu[] = {"settings-voice", "settings-preference", "settings-datetime", "settings-upgrade",
                                 "settings-autop", "settings-config",     "settings-dialplan", "settings-ring",
                                 "settings-tones", "settings-softkey",    "settings-tr069"};
constexpr const char* kItems[] = {"PhoneEchoCancellation", "PhoneJitterBuffer"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kMenu) && allUnique(kItems));
}  // namespace

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
