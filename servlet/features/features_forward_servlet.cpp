// The page "features-forward": passing calls on, and do not disturb.
#include <string>
#include <vector>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/servlet_base.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/features/features_forward_settings.h"
#include "servlet/features/features_tabs.h"

namespace {

constexpr const char* kEmergencyKeys[] = {"DNDEmergencySwitch", "DNDEmergencyNumberList"};
constexpr const auto& kMenu = kFeaturesTabs;
constexpr const char* kItems[] = {"FeaturesHeadForward",
                                  "FeaturesAlwaysForward",
                                  "FeaturesForwardMode",
                                  "FeaturesForwardAccount",
                                  "FeaturesAlwaysForwardEnabled",
                                  "FeaturesAlwaysForwardTarget",
                                  "FeaturesAlwaysForwardOffCode",
                                  "FeaturesBusyForward",
                                  "FeaturesBusyForwardEnabled",
                                  "FeaturesBusyForwardTarget",
                                  "FeaturesBusyForwardOnCode",
                                  "FeaturesBusyForwardOffCode",
                                  "FeaturesNoAnswerForward",
                                  "FeaturesNoAnswerForwardEnabled",
                                  "FeaturesNoAnswerForwardRingtimes",
                                  "FeaturesNoAnswerForwardTarget",
                                  "FeaturesNoAnswerForwardOnCode",
                                  "FeaturesNoAnswerForwardOffCode",
                                  "FeaturesDNDOnCode",
                                  "FeaturesDNDOffCode",
                                  "FeaturesDNDMode",
                                  "FeaturesDNDAccount",
                                  "FeaturesDNDStatus"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 1024};
static_assert(allUnique(kEmergencyKeys) && allUnique(kItems));

constexpr int kMostRings = 20;
constexpr int kSecondsPerRing = 6;

struct Modes {
  std::string forward, dnd;
};

// The modes that the request wants to see, or else those that are set.
Modes modesToShow(HttpRequest* request) {
  const char* forward = request->getParameter("ForwardMode");
  const char* dnd = request->getParameter("DndMode");
  if (forward && *forward && dnd && *dnd) return {forward, dnd};
  return {readConfigText("ForwardMode", 4), readConfigText("DndMode", 4)};
}

TMPL_loop* GetDelayTimeLoop(const std::string& current) {
  TMPL_loop* rows = nullptr;
  for (int rings = 0; rings <= kMostRings; ++rings) {
    const std::string value = std::to_string(rings);
    rows = TMPL_add_varlist(rows, TMPL_add_var(nullptr, "selValue", value.c_str(), "selName",
                                               std::to_string(rings * kSecondsPerRing).c_str(), "selected",
                                               value == current ? "1" : "0", nullptr));
  }
  return rows;
}

TMPL_loop* accountRows(const std::vector<EnabledAccount>& accounts) {
  TMPL_loop* rows = nullptr;
  for (const auto& [index, userName] : accounts) {
    rows = TMPL_add_varlist(
        rows, TMPL_add_var(nullptr, "selValue", std::to_string(index).c_str(), "selName", userName.c_str(), nullptr));
  }
  return rows;
}

}  // namespace

class FeaturesForwardServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int FeaturesForwardServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<FeaturesForwardServlet> kActions[] = {
      {"load", &FeaturesForwardServlet::loadConfig},
      {"write", &FeaturesForwardServlet::writeConfig},
  };
  return dispatch(*this, kActions, UnknownAction::kIgnored, request, response);
}

int FeaturesForwardServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const Modes modes = modesToShow(request);
  const std::vector<EnabledAccount> accounts = enabledAccounts();
  const int forwardAccount = shownAccount(kForwardKind, request, accounts);
  TMPL_varlist* list = addForwardData(nullptr, kForwardKind, modes.forward, forwardAccount);
  list = addForwardData(list, kDndKind, modes.dnd, shownAccount(kDndKind, request, accounts));
  list = TMPL_add_loop(list, "delayTimeLoop", GetDelayTimeLoop(forwardDelay(modes.forward, forwardAccount)));
  list = TMPL_add_loop(list, "AccountLoop", accountRows(accounts));
  list = TMPL_add_var(list, "ForwardMode", modes.forward.c_str(), "DndMode", modes.dnd.c_str(), nullptr);
  list = readConfigOperate(GLOBAL_FILE, kEmergencyKeys, list, 0);
  response->renderTemplate("/phone/www/WEB-INFO/template/features-forward.htm", showItemsByLevel(list, request));
  return 1;
}

int FeaturesForwardServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  if (namesNoAccount(kForwardKind, request) || namesNoAccount(kDndKind, request)) {
    log_log(kWebLog, kLogWarning, "FeaturesForwardServlet::writeConfig() account is invalid\n");
    SetNoticePage(response, false, "features-forward", "Error:There is no such account!");
    return 1;
  }
  writeConfigOperate(GLOBAL_FILE, kEmergencyKeys, request, 0);
  const bool forwardMode = writeConfigOperate(GLOBAL_FILE, "ForwardMode", request, 0) > 0;
  const bool dndMode = writeConfigOperate(GLOBAL_FILE, "DndMode", request, 0) > 0;
  const ForwardSave forward = storeForwardData(kForwardKind, request);
  const ForwardSave dnd = storeForwardData(kDndKind, request);
  if (forwardMode || forward.changed) broadcastConfigChanged(ConfigArea::kForward);
  if (dndMode || dnd.changed) broadcastConfigChanged(ConfigArea::kDnd);
  std::string target = "/servlet?p=features-forward&q=load";
  if (forward.account) target += "&fwd=" + std::to_string(*forward.account);
  if (dnd.account) target += "&dnd=" + std::to_string(*dnd.account);
  response->sendRedirect(target.c_str());
  return 1;
}

TMPL_varlist* FeaturesForwardServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createFeaturesForwardServlet, HttpServlet, FeaturesForwardServlet);
