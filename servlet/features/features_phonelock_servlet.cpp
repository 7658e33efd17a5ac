// The page "features-phonelock": locking the keys.
#include <string>
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/file_password.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/registry.h"
#include "servlet/features/features_tabs.h"

namespace {
constexpr const char* kKeys[] = {"LockEnable", "PhoneLock", "LockTimeout", "EmergencyNumberList"};
constexpr const char* kLockKeys[] = {"LockTimeout", "LockEnable", "PhoneLock"};
constexpr auto kMenu = ownTabFirst(kFeaturesTabs, "features-phonelock");
constexpr const char* kItems[] = {"PhoneKeyboardLock", "PhoneUnlockPIN", "PhoneLockTimeout", "PhoneEmergencySetting",
                                  "PhoneLockEnable"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kKeys) && allUnique(kLockKeys) && allUnique(kItems));

constexpr std::size_t kHashSize = 128;
constexpr std::size_t kPinSize = 80;  // what comes behind does not reach the hash that is kept

// The PIN is kept as a hash, whose salt stays.
void storePin(const char* pin) {
  if (!pin || std::string_view(pin) == kSecretPlaceholder) return;
  const auto ini = registryOpen("/config/user/user.ini", "Phone_Lock", RegistryFile::kMayBeMissing);
  if (!ini) return;
  std::string stored = ini->registryGetString("Unlock_PIN", "");
  cutText(stored, kHashSize);
  std::string hash = filePassword::newHash(std::string(pin).substr(0, kPinSize).c_str(), stored);
  if (hash.empty()) return;
  cutText(hash, kHashSize);
  ini->registrySetString("Unlock_PIN", hash.c_str());
  ini->registryFlush();
}
}  // namespace

class FeaturesPhonelockServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesPhonelockServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesPhonelockServlet> kActions[] = {
      {"load", &FeaturesPhonelockServlet::loadConfig},
      {"write", &FeaturesPhonelockServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesPhonelockServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-phonelock.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesPhonelockServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  writeConfigOperate(GLOBAL_FILE, "EmergencyNumberList", request, 0);
  storePin(request->getParameter("UnlockPIN"));
  if (writeConfigOperate(GLOBAL_FILE, kLockKeys, request, 0) > 0) postConfigChanged(ConfigArea::kPhoneLock);
  response->sendRedirect("/servlet?p=features-phonelock&q=load");
  return 1;
}

TMPL_varlist* FeaturesPhonelockServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesPhonelockServlet, HttpServlet, FeaturesPhonelockServlet);
