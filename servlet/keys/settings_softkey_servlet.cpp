// The page "settings-softkey": which soft keys each call state shows, and in which order.
#include <cstring>
#include <string>
#include <string_view>

#include "framework/action_dispatch.h"
#include "framework/config_operate.h"
#include "framework/notice.h"
#include "framework/page_factory.h"
#include "framework/page_tables.h"
#include "framework/phone_messages.h"
#include "framework/query_text.h"
#include "framework/servlet_base.h"
#include "framework/text_list.h"
#include "framework/text_utils.h"
#include "framework/visibility.h"
#include "platform/log.h"
#include "servlet/keys/settings_softkey_layouts.h"
#include "servlet/settings/settings_tabs.h"

namespace {
constexpr const char* kKeys[] = {"BSFTActive", "CustomSoftkeySwitch"};
constexpr auto kMenu = ownTabFirst(kSettingsTabs, "settings-softkey");
constexpr const char* kItems[] = {"PhoneCustomSoftKey", "PhoneSoftKeyType"};
constexpr Visibility kVisibility{.menu = kMenu, .items = kItems, .bufferSize = 512};
static_assert(allUnique(kKeys) && allUnique(kItems));

constexpr std::size_t kAddressSize = 64;
// Of a session: the state that it loaded last and, behind a line end, the types that were hidden from it.
constexpr char kHiddenAttribute[] = "hiddenSoftKeys";

std::string stateAddress(HttpRequest* request) {
  const char* text = request->getParameter("callStates");
  std::string address = text ? text : softkey::kDefaultState;
  cutText(address, kAddressSize);
  return address;
}

softkey::Names typesOf(const char* text) {
  OrbList<std::string> pieces;
  if (text) String2List(pieces, text, ',');
  return {pieces.begin(), pieces.end()};
}

void rememberHidden(HttpRequest* request, const std::string& address, const softkey::Names& hidden) {
  std::string text = softkey::fullAddress(address) + "\n";
  for (const std::string& type : hidden) text += type + ",";
  if (HttpSession* session = request->getSession(1)) session->setAttribute(kHiddenAttribute, strdup(text.c_str()));
}

// What the form cannot have posted: the types that were hidden when its session loaded the state. When it has loaded
// another one since, say in a second window, those that are hidden now: no key may get lost, or into another state.
softkey::Names hiddenFrom(HttpRequest* request, const std::string& address, pugi::xml_node state) {
  HttpSession* session = request->getSession(1);
  const char* known = session ? session->getAttribute(kHiddenAttribute) : nullptr;
  const std::string front = softkey::fullAddress(address) + "\n";
  const bool isOfState = known && std::string_view(known).starts_with(front);
  return isOfState ? typesOf(known + front.size()) : softkey::hiddenTypes(state);
}

// Back to the state. The colon of an address is one in a query, too.
void redirectToState(HttpResponse* response, const std::string& address) {
  const std::size_t colon = address.find(':');
  std::string target = "/servlet?p=settings-softkey&q=load&callStates=" + encodeQueryValue(address.substr(0, colon));
  if (colon != std::string::npos) target.append(":").append(encodeQueryValue(address.substr(colon + 1)));
  response->sendRedirect(target.c_str());
}
}  // namespace

class SettingsSoftkeyServlet : public HttpServlet {
 public:
  int onRequest(HttpRequest* request, HttpResponse* response) override;

 private:
  int loadConfig(HttpRequest* request, HttpResponse* response);
  int writeConfig(HttpRequest* request, HttpResponse* response);
  int resetDefault(HttpRequest* request, HttpResponse* response);
  void writeLayout(HttpRequest* request, const std::string& address);
  TMPL_varlist* showItemsByLevel(TMPL_varlist* list, HttpRequest* request);
};

int SettingsSoftkeyServlet::onRequest(HttpRequest* request, HttpResponse* response) {
  static constexpr Action<SettingsSoftkeyServlet> kActions[] = {
      {"load", &SettingsSoftkeyServlet::loadConfig},
      {"write", &SettingsSoftkeyServlet::writeConfig},
      {"reset", &SettingsSoftkeyServlet::resetDefault},
  };
  return dispatch(*this, kActions, UnknownAction::kNotFound, request, response);
}

int SettingsSoftkeyServlet::loadConfig(HttpRequest* request, HttpResponse* response) {
  const std::string address = stateAddress(request);
  TMPL_loop *enabledLoop = nullptr, *disabledLoop = nullptr, *statesLoop = nullptr;
  softkey::Names enabled, disabled, hidden;
  pugi::xml_document document;
  pugi::xml_node state;
  if (softkey::findState(address, document, state)) {
    softkey::getDataByNode(state.child("Disable"), disabled, hidden);
    softkey::getDataByNode(state.child("Enable"), enabled, hidden);
    softkey::XMLData2TMPLData(enabledLoop, enabled);
    softkey::XMLData2TMPLData(disabledLoop, disabled);
    statesLoop = softkey::getCallStatesLoop(address);
    rememberHidden(request, address, hidden);
  }
  TMPL_varlist* list = readConfigOperate(GLOBAL_FILE, kKeys, nullptr, 0);
  if (!statesLoop) log_log(kWebLog, kLogWarning, "statesLoop is NULL!!\n");
  list = TMPL_add_loop(list, "statesLoop", statesLoop);
  list = TMPL_add_loop(list, "enabledLoop", enabledLoop);
  list = TMPL_add_loop(list, "disabledLoop", disabledLoop);
  list = GetTR069Supported(showItemsByLevel(list, request));
  response->renderTemplate("/phone/www/WEB-INFO/template/settings-softkey.htm", list);
  return 1;
}

int SettingsSoftkeyServlet::writeConfig(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const std::string address = stateAddress(request);
  writeLayout(request, address);
  if (writeConfigOperate(GLOBAL_FILE, "CustomSoftkeySwitch", request, 0) > 0) {
    broadcastConfigChanged(ConfigArea::kSoftKeys);
  }
  redirectToState(response, address);
  return 1;
}

void SettingsSoftkeyServlet::writeLayout(HttpRequest* request, const std::string& address) {
  pugi::xml_document document;
  pugi::xml_node state;
  if (!softkey::findState(address, document, state) || !state) return;
  const char* enabled = request->getParameter("selectSoftKeys");
  const char* disabled = request->getParameter("unSelectSoftKeys");
  if (!enabled && !disabled) return;  // a form without the lists, for who may not see them, takes no keys away
  softkey::arrange(state, typesOf(enabled), typesOf(disabled), hiddenFrom(request, address, state));
  softkey::save(address, document);
}

int SettingsSoftkeyServlet::resetDefault(HttpRequest* request, HttpResponse* response) {
  if (IsInTalking(response)) return 1;
  const std::string address = stateAddress(request);
  pugi::xml_document document;
  pugi::xml_node state;
  if (softkey::findState(address, document, state) && state) {
    softkey::restore(state);
    softkey::save(address, document);
  }
  redirectToState(response, address);
  return 1;
}

TMPL_varlist* SettingsSoftkeyServlet::showItemsByLevel(TMPL_varlist* list, HttpRequest* request) {
  return addVisibility(list, request, kVisibility);
}

PHONE_FACTORY(createSettingsSoftkeyServlet, HttpServlet, SettingsSoftkeyServlet);
