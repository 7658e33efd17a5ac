// The key page: its actions.
#include "servlet/keys/dsskey_servlet.h"

#include <span>
#include <string>

#include "dsskey/dsskey_types.h"
#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "platform/named_lock.h"
#include "servlet/keys/dsskey_form.h"

namespace {

constexpr const char* kSettingKeys[] = {"EnablePageTips", "DsskeyLength"};
constexpr const char* kMenu[] = {"dsskey-programkey", "dsskey-memorykey", "dsskey-linekey", "dsskey-extkey"};
constexpr const char* kFamilyItems[] = {"DsskeyMemoryKey", "DSSKeyLineKey", "DSSKeyProgrammableKey", "DSSKeyExtKey"};
constexpr const char* kTemplates[] = {
    "/phone/www/WEB-INFO/template/dsskey-memorykey.htm", "/phone/www/WEB-INFO/template/dsskey-linekey.htm",
    "/phone/www/WEB-INFO/template/dsskey-programkey.htm", "/phone/www/WEB-INFO/template/dsskey-ext.htm"};
static_assert(allUnique(kSettingKeys) && allUnique(kMenu) && allUnique(kFamilyItems) && allUnique(kTemplates));

constexpr std::size_t kLevelsSize = 512;
constexpr int kNoFamily = -1;

// The key files are this process's own, until the end of its scope.
class KeyFileLock {
 public:
  KeyFileLock() {
    mutex_.OpenMutex("DsskeyFile");
    mutex_.Lock(-1);
  }
  ~KeyFileLock() {
    mutex_.Unlock();
    mutex_.CloseMutex();
  }
  KeyFileLock(const KeyFileLock&) = delete;
  KeyFileLock& operator=(const KeyFileLock&) = delete;

 private:
  ETL_BaseHelper::chMutex mutex_;
};

}  // namespace

int DssKeyServlet::init() {
  model_ = GetModelInitObj();
  return 0;
}

int DssKeyServlet::destory() {
  model_ = nullptr;
  FreeModelInitObj();
  return 0;
}

int DssKeyServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<DssKeyServlet> kActions[] = {
      {"load", &DssKeyServlet::loadConfig},
      {"write", &DssKeyServlet::writeConfig},
      {"typeChanged", &DssKeyServlet::typeChanged},
      {"reset", &DssKeyServlet::ResetDefaultData},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int DssKeyServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const auto [family, page] = pageToLoad(request);
  if (family == DSSK_MEMORY) {
    response->sendError(404);
    return 1;
  }
  TMPL_varlist* list = family == DSSK_LINE ? readConfigOperate(GLOBAL_FILE, kSettingKeys, nullptr, 0) : nullptr;
  SendMsgQueryBlfList(family, page);
  OrbList<DssKey_Type> types;
  model_->GetDKtypeList(&types, family);
  Key_Display display;
  model_->GetKeyIndexList(&display, family, page);
  OrbList<DssKey> keys;
  {
    const KeyFileLock lock;
    model_->GetDsskeyList(&keys, family, &display, page);
  }
  list = TMPL_add_var(list, "linepage", std::to_string(page).c_str(), nullptr);
  list = TMPL_add_loop(list, "TypeLoop", DKtypeList2Loop(types, family));
  list = TMPL_add_loop(list, "TRLoop", DsskConfigData2Loop(keys, family));
  if (family == DSSK_EXT) list = TMPL_add_loop(list, "extLoop", DevDataInfo2Loop(display));
  if (dsskey::isFamily(family)) {
    list = readConfigOperate(GLOBAL_FILE, "AutoBlfListEnable", showItemsByLevel(list, request, family), 0);
    response->renderTemplate(kTemplates[family], list);
  }
  removeFile(kBlfListPath);
  return 1;
}

void DssKeyServlet::SendMsgQueryBlfList(DSSK_MODEL_TYPE family, int page) {
  if (readConfigPlain("BSFTActive", kConfigValueSize) != "1") return;
  const auto ask = [](BlfKeys keys, int module) {
    sendMessage(kPhoneApplication, kWriteBlfList, static_cast<int>(keys), module);
  };
  if (family == DSSK_LINE) ask(BlfKeys::kLine, 0);
  if (family == DSSK_MEMORY) ask(BlfKeys::kMemory, 0);
  if (family == DSSK_EXT) ask(BlfKeys::kModule, page);
}

void DssKeyServlet::storeSettings(HttpRequest* request) {
  const bool isOtherTips = writeConfigOperate(GLOBAL_FILE, "EnablePageTips", request, 0) > 0;
  const bool isOtherLength = writeConfigOperate(GLOBAL_FILE, "DsskeyLength", request, 0) > 0;
  if (isOtherTips) broadcastConfigChanged(ConfigArea::kKeyPageTips);
  if (isOtherLength) broadcastConfigChanged(ConfigArea::kKeyLabelLength);
}

int DssKeyServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  KeyPage shown;
  if (!pageToWrite(request, shown)) return 1;
  const auto [family, page] = shown;
  Key_Display display;
  model_->GetKeyIndexList(&display, family, page);
  if (family == DSSK_LINE && display.status != kNothingToShow) storeSettings(request);
  OrbList<DssKey> keys;
  {
    const KeyFileLock lock;
    if (!PageData2ConfigData(request, keys, display) || !model_->SetDsskeyList(family, &keys, page, true)) {
      log_log(kWebLog, kLogWarning, "Dsskey model write config data error!\n");
      return 1;
    }
  }
  std::string target = "/servlet?p=dsskey&model=" + std::to_string(family) + "&q=load";
  if (family == DSSK_EXT) target += "&extno=" + std::to_string(page);
  if (family == DSSK_LINE) target += "&linepage=" + std::to_string(page);
  response->sendRedirect(target.c_str());
  return 1;
}

int DssKeyServlet::ResetDefaultData(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const char* model = request->getParameter("model");
  const int family = model ? dsskey::numberIn(model, kNoFamily) : kNoFamily;
  if (!model_->SetFactoryDsskeyList(static_cast<DSSK_MODEL_TYPE>(family))) {
    SetNoticePage(response, false, "dsskey", "Error: Write dsskey config error!");
    return 1;
  }
  response->sendRedirect("/servlet?p=dsskey&model=2&q=load");
  return 1;
}

TMPL_varlist* DssKeyServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request, DSSK_MODEL_TYPE family) {
  const std::span<const char* const> item(&kFamilyItems[family], 1);
  return addVisibility(list, request, {.menu = kMenu, .items = item, .bufferSize = kLevelsSize});
}

PHONE_FACTORY(createDssKeyServlet, HttpServlet, DssKeyServlet);
