// The page "settings-blackout": numbers that may not be dialled, saved all at once.
#include <string>

#include "framework/action_dispatch.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/phone_messages.h"
#include "framework/visibility.h"
#include "framework/xml_file.h"
#include "platform/log.h"
#include "servlet/settings/settings_dial_rules.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr char kFile[] = "/config/data/DialBlock.xml";
constexpr std::size_t kEntries = 10;
// The entry's number is the end of a field's name.
constexpr DialRuleText kTexts[] = {{"rule", "BlackOut_", "BlackOut"}, {"lines", "Account_", "Account"}};
constexpr const auto& kMenu = kDialPlanTabs;
constexpr const char* kItems[] = {"PhoneBlockoutControl"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};

TMPL_loop* rowsOf(const std::vector<pugi::xml_node>& rules) {
  TMPL_loop* rows = nullptr;
  for (std::size_t i = 0; i < dialRowCount(rules.size(), kEntries); ++i) {
    TMPL_varlist* row = TMPL_add_var(nullptr, "row", std::to_string(i + 1).c_str(), nullptr);
    rows = TMPL_add_varlist(rows, addDialRule(row, i < rules.size() ? rules[i] : pugi::xml_node(), kTexts));
  }
  return rows;
}

void appendEntry(pugi::xml_node root, std::size_t number, HttpRequest* request) {
  pugi::xml_node entry = root.append_child("data");
  for (const DialRuleText& text : kTexts) {
    const char* const value = request->getParameter((text.field + std::to_string(number)).c_str());
    entry.append_attribute(text.attribute) = value ? value : "";
  }
}
}  // namespace

class SettingsBlackoutServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SettingsBlackoutServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsBlackoutServlet> kActions[] = {
      {"load", &SettingsBlackoutServlet::loadConfig},
      {"write", &SettingsBlackoutServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsBlackoutServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  pugi::xml_document document;
  if (!loadDialRules(kFile, document)) {
    log_log(kWebLog, kLogWarning, "SettingsBlackoutServlet::loadConfig() error to get root element\n");
    return 1;
  }
  TMPL_varlist* list = TMPL_add_loop(nullptr, "TRLoop", rowsOf(dialRulesIn(document)));
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-blackout.htm", showItemsByLevel(list, request));
  return 1;
}

int SettingsBlackoutServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  pugi::xml_document document;
  const pugi::xml_node root = document.append_child("dialblock");
  if (!root) {
    log_log(kWebLog, kLogWarning, "SettingsBlackoutServlet::writeConfig() error to create rootNode\n");
    return 1;
  }
  for (std::size_t number = 1; number <= kEntries; ++number) appendEntry(root, number, request);
  if (!saveXml(kFile, document)) {
    SetNoticePage(response, false, "settings-blackout", "Error:Write DialBlock.xml error!");
    return 1;
  }
  postConfigChanged(ConfigArea::kBlockOut);
  return loadConfig(request, response);
}

TMPL_varlist* SettingsBlackoutServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(GetTR069Supported(list), request, kVisibility);
}

PHONE_FACTORY(createSettingsBlackoutServlet, HttpServlet, SettingsBlackoutServlet);
