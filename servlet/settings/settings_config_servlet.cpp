#include "servlet/settings/settings_config_servlet.h"

#include <sys/stat.h>

#include <algorithm>
#include <list>
#include <string>
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/date_text.h"
#include "framework/file_utils.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/shell_command.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/phone_root.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr const char* kShownKeys[] = {"SyslogServerName", "ServerLogLevel", "FactoryConfigCustomEnabled", "SysLogLevel",
                                      "ExportCFGClearPWD"};
constexpr const char* kStoredKeys[] = {"SyslogServerName", "ServerLogLevel", "SysLogLevel"};
constexpr const char* kMenu[] = {"settings-config", "settings-preference", "settings-datetime", "settings-upgrade",
                                 "settings-autop",  "settings-dialplan",   "settings-voice",    "settings-ring",
                                 "settings-tones",  "settings-softkey",    "settings-tr069"};
constexpr const char* kItems[] = {"PhoneOptConfigfile", "PhoneOptFactoryConfigfile", "PhoneSyslog",
                                  "PhoneSystemlogLevel"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(areTabsOf(kMenu, kSettingsTabs) && allUnique(kShownKeys) && allUnique(kStoredKeys) && allUnique(kMenu) &&
              allUnique(kItems));

// What nobody does during a call.
constexpr std::string_view kGuarded[] = {"export", "import", "exportsyslog", "write", "importFactory", "delFactory"};

bool isGuarded(HttpRequest* request) {
  const char* action = request->getParameter("q");
  return action && std::ranges::find(kGuarded, std::string_view(action)) != std::end(kGuarded);
}

bool statusOf(const char* path, struct stat& status) {
  return lstat(phonePath(path).c_str(), &status) == 0;
}

// What the phone has settings of: names of files and folders.
TMPL_loop* factoryLoop() {
  std::list<std::string> names;
  ReadFiles::FindFiles(names, "/phone/factory/", "", false, true);
  TMPL_loop* loop = nullptr;
  for (const std::string& name : names) {
    loop = TMPL_add_varlist(loop, TMPL_add_var(nullptr, "name", templateText(name).c_str(), nullptr));
  }
  return loop;
}

// When the custom factory settings were stored, as the phone shows dates; empty when there are none.
std::string customFactoryDate() {
  struct stat status {};
  std::string first, second, third, separator, clock;
  if (!statusOf(kCustomFactory, status) ||
      !LocalTime2StrTime(status.st_mtime, first, second, third, separator, clock,
                         readConfigNumber("LocalTimeDateFormatType"), readConfigNumber("LocalTimeTimeFormatType"))) {
    return {};
  }
  return first + separator + second + separator + third + " " + clock;
}
}  // namespace

int SettingsConfigServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsConfigServlet> kActions[] = {
      {"load", &SettingsConfigServlet::loadConfig},       {"export", &SettingsConfigServlet::exportConfig},
      {"import", &SettingsConfigServlet::importConfig},   {"exportsyslog", &SettingsConfigServlet::exportSyslog},
      {"write", &SettingsConfigServlet::writeConfig},     {"importFactory", &SettingsConfigServlet::importFactory},
      {"delFactory", &SettingsConfigServlet::delFactory},
  };
  response->setContentType("text/html");
  if (isGuarded(request) && IsInTalking(response)) return 1;
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsConfigServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kShownKeys, nullptr, 0);
  struct stat status {};
  if (statusOf("/phone/factory/", status)) list = TMPL_add_var(list, "ExistFactory", "true", nullptr);
  list = TMPL_add_var(list, "customFactoryDate", customFactoryDate().c_str(), nullptr);
  list = TMPL_add_loop(list, "factoryLoop", factoryLoop());
  list = GetTR069Supported(list);
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-config.htm", showItemsByLevel(list, request));
  return 1;
}

int SettingsConfigServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  writeConfigOperate(GLOBAL_FILE, kStoredKeys, request, 0);
  if (wantsReboot(request)) {
    SetNoticePage(response, true, "settings-config", kRebootingNotice);
    sysReboot(-1);
    return 1;
  }
  response->sendRedirect("/servlet?p=settings-config&q=load");
  return 1;
}

int SettingsConfigServlet::delFactory(HttpRequest*, HttpResponse* response) {
  struct stat status {};
  const bool exists = statusOf(kCustomFactory, status);
  if (exists) CommandShell(ShellCommand("rm").word("-fr").path(kCustomFactory));
  SetNoticePage(response, false, "settings-config",
                exists ? "Success:Delete user factory config OK!" : "Error:User factory config doesn't exist!");
  return 1;
}

TMPL_varlist* SettingsConfigServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsConfigServlet, HttpServlet, SettingsConfigServlet);
