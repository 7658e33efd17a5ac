// The page "settings-dialnow": rules for numbers that are dialled as soon as they are complete.
#include "framework/action_dispatch.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/visibility.h"
#include "platform/device.h"
#include "platform/log.h"
#include "servlet/settings/settings_dial_rules.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr DialRuleText kTexts[] = {{"DialNowRule", "editRule", "textRule"}, {"LineID", "editAccount", "textAccount"}};
constexpr DialRuleFile kFile{.path = "/config/data/DialNow.xml",
                             .area = ConfigArea::kDialNow,
                             .page = "settings-dialnow",
                             .address = "/servlet?p=settings-dialnow&q=load",
                             .writeError = "Error:Write DialNow.xml error!"};
constexpr const auto& kMenu = kDialPlanTabs;
constexpr const char* kItems[] = {"PhoneDialnowControl"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
}  // namespace

class SettingsDialnowServlet : public HttpServlet {
 public:
  int init() override;
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int Add(HttpRequest* request, HttpResponse* response);
  int Edit(HttpRequest* request, HttpResponse* response);
  int Del(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
  std::span<const DialRuleText> texts() const { return dialRuleTexts(kTexts, phoneType_); }

  int phoneType_ = 0;
};

int SettingsDialnowServlet::init() {
  phoneType_ = GetPhoneType();
  return 0;
}

int SettingsDialnowServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsDialnowServlet> kActions[] = {
      {"add", &SettingsDialnowServlet::Add},
      {"edit", &SettingsDialnowServlet::Edit},
      {"del", &SettingsDialnowServlet::Del},
      {"load", &SettingsDialnowServlet::loadConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsDialnowServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  pugi::xml_document document;
  if (!loadDialRules(kFile.path, document)) {
    log_log(kWebLog, kLogWarning, "SettingsDialnowServlet::loadConfig() End error to get root element\n");
    return 1;
  }
  TMPL_varlist* list = addDialRules(nullptr, dialRulesIn(document), texts());
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-dialnow.htm", showItemsByLevel(list, request));
  return 1;
}

int SettingsDialnowServlet::Add(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  pugi::xml_document document;
  if (!loadDialRules(kFile.path, document)) {
    log_log(kWebLog, kLogWarning, "SettingsDialnowServlet::Add() error to get root element\n");
    return 1;
  }
  if (dialRulesIn(document).size() >= kMaxDialRules) {
    log_log(kWebLog, kLogWarning, "SettingsDialnowServlet::Add() too many dialNow Rules\n");
    return 1;
  }
  appendDialRule(document, texts(), request);
  return storeDialRules(kFile, document, response);
}

int SettingsDialnowServlet::Edit(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  pugi::xml_document document;
  if (!loadDialRules(kFile.path, document)) {
    log_log(kWebLog, kLogWarning, "SettingsDialnowServlet::Edit() error to get root element\n");
    return 1;
  }
  changeDialRule(chosenDialRule(document, request), texts(), request);
  return storeDialRules(kFile, document, response);
}

int SettingsDialnowServlet::Del(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  OrbList<std::string> numbers;
  if (!takeDialRuleNumbers(request, numbers)) {
    response->sendRedirect(kFile.address);
    return 1;
  }
  pugi::xml_document document;
  if (!loadDialRules(kFile.path, document)) {
    log_log(kWebLog, kLogWarning, "SettingsDialnowServlet::Del() error to get root element\n");
    return 1;
  }
  removeDialRules(dialRulesIn(document), numbers);
  return storeDialRules(kFile, document, response);
}

TMPL_varlist* SettingsDialnowServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(GetTR069Supported(list), request, kVisibility);
}

PHONE_FACTORY(createSettingsDialnowServlet, HttpServlet, SettingsDialnowServlet);
