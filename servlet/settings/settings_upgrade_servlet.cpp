#include "servlet/settings/settings_upgrade_servlet.h"

#include <string>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/visibility.h"
#include "platform/boot_environment.h"
#include "platform/device.h"
#include "platform/registry.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr auto kMenu = ownTabFirst(kSettingsTabs, "settings-upgrade");
constexpr const char* kItems[] = {"PhoneVersionInfo", "PhoneResetToFactory", "PhoneRebootDevice",
                                  "PhoneUpgradeFirmware", "PhonePcapTrace"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kItems));

constexpr std::size_t kVersionSize = 32;
constexpr int kRebootDelay = 2;  // seconds

std::string captureState() {
  return std::to_string(sendMessage(kCaptureService, kCaptureState));
}
}  // namespace

int SettingsUpgradeServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsUpgradeServlet> kActions[] = {
      {"load", &SettingsUpgradeServlet::loadConfig},
      {"reset", &SettingsUpgradeServlet::reset},
      {"reboot", &SettingsUpgradeServlet::reboot},
      {"upgrade", &SettingsUpgradeServlet::upgrade},
      {"progress", &SettingsUpgradeServlet::progress},
      {"beforeupgrade", &SettingsUpgradeServlet::beforeUpgrade},
      {"ask", &SettingsUpgradeServlet::askTalking},
      {"askUpgrade", &SettingsUpgradeServlet::askUpgrade},
      {"startcapture", &SettingsUpgradeServlet::startCapture},
      {"stopcapture", &SettingsUpgradeServlet::stopCapture},
      {"exportcapture", &SettingsUpgradeServlet::exportCapture},
      {"rebootbeforeupgrade", &SettingsUpgradeServlet::rebootBeforeUpgrade},
      {"askRebootOK", &SettingsUpgradeServlet::askRebootOK},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsUpgradeServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const std::string firmware = readConfigText("PhoneFirmware", kVersionSize);
  TMPL_varlist* list =
      TMPL_add_var(nullptr, "firmware", firmware.c_str(), "hardware", str_dev_get_hardware_version(), nullptr);
  list = showItemsByLevel(list, request);
  list = TMPL_add_var(list, "pcapUpdate", captureState().c_str(), nullptr);
  list = GetTR069Supported(list);
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-upgrade.htm", list);
  return 1;
}

int SettingsUpgradeServlet::reset(HttpRequest*, HttpResponse* response) {
  writeConfigOperate(GLOBAL_FILE, "UpdateStatus", "RESETFACTORY", 0);
  msgBroadpostThreadMsg(kFactoryReset, 0, 0);
  SetNoticePage(response, true, "settings-upgrade", "Resetting , please wait ...");
  return 1;
}

int SettingsUpgradeServlet::reboot(HttpRequest*, HttpResponse* response) {
  writeConfigOperate(GLOBAL_FILE, "UpdateStatus", "reboot", 0);
  sysReboot(kRebootDelay);
  SetNoticePage(response, true, "settings-upgrade", kRebootingNotice);
  return 1;
}

// In safe mode the phone does nothing but wait for its firmware.
int SettingsUpgradeServlet::rebootBeforeUpgrade(HttpRequest*, HttpResponse*) {
  userenv_set("bWebUpgrade", "1");
  userenv_set("BOOTMODE", "safemode");
  etlRegFlushAllFile();
  sysReboot(kRebootDelay);
  return 1;
}

int SettingsUpgradeServlet::askTalking(HttpRequest*, HttpResponse* response) {
  response->print(isCallInProgress() ? "true" : "false");
  return 1;
}

int SettingsUpgradeServlet::askUpgrade(HttpRequest*, HttpResponse* response) {
  response->print(isPrepared_ ? "true" : "false");
  return 1;
}

int SettingsUpgradeServlet::askRebootOK(HttpRequest*, HttpResponse* response) {
  response->print("false");
  return 1;
}

int SettingsUpgradeServlet::progress(HttpRequest*, HttpResponse* response) {
  response->print("<p>done</p>");
  return 1;
}

TMPL_varlist* SettingsUpgradeServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsUpgradeServlet, HttpServlet, SettingsUpgradeServlet);
