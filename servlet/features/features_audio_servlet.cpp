// The page "features-audio": tones and the ringing device.
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "servlet/features/features_tabs.h"

namespace {
constexpr const char* kKeys[] = {"CallWaitingToneSwitch", "VolumeButtonSoundOn", "VolumeSendKeySoundOn",
                                 "ReDialtoneNumber", "RingerDevice"};
constexpr auto kMenu = ownTabFirst(kFeaturesTabs, "features-audio");
constexpr const char* kItems[] = {
    "FeaturesCallWaitingTone",   "FeaturesButtonSound",       "FeaturesSendSound",          "FeaturesRingerDev",
    "FeaturesHeadsetSendVolume", "FeaturesHandsetSendVolume", "FeaturesHandfreeSendVolume", "FeaturesRedialTone"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kKeys) && allUnique(kItems));
}  // namespace

class FeaturesAudioServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesAudioServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesAudioServlet> kActions[] = {
      {"load", &FeaturesAudioServlet::loadConfig},
      {"write", &FeaturesAudioServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesAudioServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-audio.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesAudioServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, kKeys, request, 0);
  if (wantsReboot(request)) {
    sysReboot(-1);
    SetNoticePage(response, true, "features-audio", kRebootingNotice);
    return 1;
  }
  broadcastConfigChanged(ConfigArea::kAudio);
  response->sendRedirect("/servlet?p=features-audio&q=load");
  return 1;
}

TMPL_varlist* FeaturesAudioServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesAudioServlet, HttpServlet, FeaturesAudioServlet);
