// The page "settings-dialplan": replace rules, which put another text in the place of a dialled prefix.
#include "framework/action_dispatch.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/visibility.h"
#include "platform/device.h"
#include "platform/log.h"
#include "servlet/settings/settings_dial_rules.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr DialRuleText kTexts[] = {{"Prefix", "editPrefix", "textPrefix"},
                                   {"Replace", "editReplace", "textReplace"},
                                   {"LineID", "editAccount", "textAccount"}};
constexpr DialRuleFile kFile{.path = "/config/data/DialPlan.xml",
                             .area = ConfigArea::kDialPlan,
                             .page = "settings-dialplan",
                             .address = "/servlet?p=settings-dialplan&q=load",
                             .writeError = "Error:Write DialPlan.xml error!"};
constexpr const auto& kMenu = kDialPlanTabs;
constexpr const char* kItems[] = {"PhoneReplaceRuleControl"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
}  // namespace

class SettingsDialplanServlet : public HttpServlet {
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

int SettingsDialplanServlet::init() {
  phoneType_ = GetPhoneType();
  return 0;
}

int SettingsDialplanServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsDialplanServlet> kActions[] = {
      {"add", &SettingsDialplanServlet::Add},
      {"edit", &SettingsDialplanServlet::Edit},
      {"del", &SettingsDialplanServlet::Del},
      {"load", &SettingsDialplanServlet::loadConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsDialplanServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  pugi::xml_document document;
  if (!loadDialRules(kFile.path, document)) {
    log_log(kWebLog, kLogWarning, "SettingsDialplanServlet::loadConfig() error to get root element\n");
    return 1;
  }
  TMPL_varlist* list = addDialRules(nullptr, dialRulesIn(document), texts());
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-dialplan.htm", showItemsByLevel(list, request));
  return 1;
}

int SettingsDialplanServlet::Add(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  pugi::xml_document document;
  if (!loadDialRules(kFile.path, document)) {
    log_log(kWebLog, kLogWarning, "SettingsDialplanServlet::Add() error to get root element\n");
    return 1;
  }
  appendDialRule(document, texts(), request);
  return storeDialRules(kFile, document, response);
}

int SettingsDialplanServlet::Edit(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  pugi::xml_document document;
  if (!loadDialRules(kFile.path, document)) {
    log_log(kWebLog, kLogWarning, "SettingsDialplanServlet::Edit() error to get root element\n");
    return 1;
  }
  changeDialRule(chosenDialRule(document, request), texts(), request);
  return storeDialRules(kFile, document, response);
}

int SettingsDialplanServlet::Del(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  OrbList<std::string> numbers;
  if (!takeDialRuleNumbers(request, numbers)) {
    response->sendRedirect(kFile.address);
    return 1;
  }
  pugi::xml_document document;
  if (!loadDialRules(kFile.path, document)) {
    log_log(kWebLog, kLogWarning, "SettingsDialplanServlet::Del() error to get root element\n");
    return 1;
  }
  removeDialRules(dialRulesIn(document), numbers);
  return storeDialRules(kFile, document, response);
}

TMPL_varlist* SettingsDialplanServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(GetTR069Supported(list), request, kVisibility);
}

PHONE_FACTORY(createSettingsDialplanServlet, HttpServlet, SettingsDialplanServlet);
