#include "servlet/settings/settings_preference_servlet.h"

#include <list>
#include <string>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/media_lists.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "servlet/settings/settings_tabs.h"

namespace {

constexpr const char* kShownKeys[] = {"Ringtype",        "BacklightLevel", "BacklightTime", "PredialAutodial",
                                      "LanguageWebLang", "EnableWatchDog", "InterDigitTime"};
constexpr const char* kStoredKeys[] = {"PredialAutodial", "LanguageWebLang", "EnableWatchDog", "InterDigitTime"};
constexpr auto kMenu = ownTabFirst(kSettingsTabs, "settings-preference");
constexpr const char* kItems[] = {"SettingsWebLanguage",     "SettingsLiveDialpad",     "SettingsInterDigitTime",
                                  "SettingsUnusedBackLight", "SettingsBacklightTime",   "SettingsContrastCtrl",
                                  "SettingsWatchdog",        "SettingsRingTypeSetting", "SettingsActiveLevel",
                                  "SettingsWallpaper"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kItems));

constexpr char kLanguageFolder[] = "/phone/www/htdocs/language";
constexpr std::size_t kRingSize = 512;
constexpr std::size_t kWallpaperSize = 256;
constexpr std::size_t kLanguageSize = 64;
constexpr std::size_t kLevelSize = 8;
constexpr std::size_t kWatchdogSize = 4;
constexpr int kLevels = 10;

TMPL_varlist* choice(const std::string& value, const std::string& current) {
  return TMPL_add_var(nullptr, "selValue", value.c_str(), "selName", value.c_str(), "selected",
                      value == current ? "selected" : "", nullptr);
}

TMPL_loop* levelRows(const char* key) {
  const std::string current = readConfigPlain(key, kLevelSize);
  TMPL_loop* rows = nullptr;
  for (int level = 1; level <= kLevels; ++level) {
    rows = TMPL_add_varlist(rows, choice(std::to_string(level), current));
  }
  return rows;
}

TMPL_loop* getLanguage(const std::string& current) {
  std::list<std::string> languages;
  ReadFiles::FindFiles(languages, kLanguageFolder, ".js", false, false);
  TMPL_loop* rows = nullptr;
  for (const std::string& language : languages) {
    if (!language.empty()) rows = TMPL_add_varlist(rows, choice(language, current));
  }
  return rows;
}

bool changes(const char* key, HttpRequest* request) {
  return writeConfigOperate(GLOBAL_FILE, key, request, 0) > 0;
}

int levelIn(HttpRequest* request, const char* field) {
  return parseInt(request->getParameter(field)).value_or(0);
}

void storeScreen(HttpRequest* request) {
  if (changes("BacklightLevel", request)) {
    postMessage(kScreenApplication, kBacklightLevelChanged, levelIn(request, "BacklightLevel"));
  }
  if (changes("BacklightTime", request)) postMessage(kScreenApplication, kBacklightTimeChanged);
  if (changes("ContrastLevel", request)) {
    postMessage(kScreenApplication, kContrastChanged, levelIn(request, "ContrastLevel"));
  }
  changes("InactiveLevel", request);
  if (changes("ActiveLevel", request)) postConfigChanged(ConfigArea::kActiveLevel);
  if (changes("CurrentWallpaper", request)) {
    postConfigChanged(ConfigArea::kWallpaper, 1);
    postConfigChanged(ConfigArea::kWallpaper, 0);
  }
}

void storeRing(HttpRequest* request) {
  const char* ring = request->getParameter("Ringtype");
  if (!GetRealRingName(ring, nullptr).empty()) writeConfigOperate(GLOBAL_FILE, "Ringtype", ring, 0);
}

}  // namespace

int SettingsPreferenceServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsPreferenceServlet> kActions[] = {
      {"write", &SettingsPreferenceServlet::writeConfig},
      {"upload", &SettingsPreferenceServlet::upload},
      {"deleteRing", &SettingsPreferenceServlet::DeleteRing},
      {"uploadWallpaper", &SettingsPreferenceServlet::UploadWallpaper},
      {"deleteWallpaper", &SettingsPreferenceServlet::DeleteWallpaper},
      {"load", &SettingsPreferenceServlet::loadConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsPreferenceServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  list = TMPL_add_var(list, "ColorfulScreen", "true", nullptr);
  list = readConfigOperate(GLOBAL_FILE, "InactiveLevel", list, 0);
  const std::string wallpaper = readConfigPlain("CurrentWallpaper", kWallpaperSize);
  const std::string ring = readConfigPlain("Ringtype", kRingSize);
  list = TMPL_add_loop(list, "activeLevelLoop", levelRows("ActiveLevel"));
  list = TMPL_add_loop(list, "wallpaperLoop", GetWallpaperLoop(wallpaper.c_str()));
  list = TMPL_add_loop(list, "ringTypeloop", GetRingToneLoop(ring.c_str(), RING_PREFERENCE, true));
  list = TMPL_add_loop(list, "contrastLoop", levelRows("ContrastLevel"));
  list = TMPL_add_loop(list, "languageLoop", getLanguage(readConfigPlain("LanguageWebLang", kLanguageSize)));
  list = GetTR069Supported(showItemsByLevel(list, request));
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-preference.htm", list);
  return 1;
}

int SettingsPreferenceServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const std::string watchdogBefore = readConfigPlain("EnableWatchDog", kWatchdogSize);
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  storeScreen(request);
  writeSecret(GLOBAL_FILE, "UnlockPIN", request->getParameter("UnlockPIN"), 0);
  storeRing(request);
  const char* watchdog = request->getParameter("EnableWatchDog");
  if (watchdog && watchdog != watchdogBefore) broadcastConfigChanged(ConfigArea::kWatchdog);
  const char* language = request->getParameter("LanguageGuiLang");
  request->setLanguage(language ? language : "");
  response->sendRedirect("/servlet?p=settings-preference&q=load");
  return 1;
}

TMPL_varlist* SettingsPreferenceServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsPreferenceServlet, HttpServlet, SettingsPreferenceServlet);
